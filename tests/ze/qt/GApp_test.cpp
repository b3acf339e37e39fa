// Each case makes an application object of its own.
#include "ze/qt/GApp.h"

#include "ze/qt/ProbeWindow.h"
#include "ze/qt/event/EventFilter.h"
#include "ze/qt/guitools/dim.h"
#include "ze/qt/resources.h"
#include "ze/qt/themes.h"
#include "ze/tools/version.h"

#include "support/LogCapture.h"
#include "support/offscreen.h"

#include <QFile>
#include <QLibraryInfo>
#include <QMetaType>
#include <QScreen>
#include <QTemporaryDir>
#include <QTouchEvent>

#include <clocale>
#include <cstdlib>
#include <optional>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;
using Lines = std::vector<std::string>;

/// The arguments of a main, and the GApp made from them.
class WithApp : public testing::Test {
protected:
    WithApp() {
        test::use_offscreen_platform();
        log.ignore("Listener::~Listener@");
        GApp::argv = ze::store::GArgv();
    }
    ~WithApp() override {
        app.reset();
        GApp::set_app_version(0, 0, 0);
        GApp::set_Locale_C(true);
        ze::log::remove_log_appender(&ze::log::consoleLogger);
    }

    GApp& start(std::vector<std::string> extra = {}, ze::store::GArgv* args = nullptr) {
        texts = {"program"};
        texts.insert(texts.end(), extra.begin(), extra.end());
        pointers.clear();
        for (std::string& text : texts) {
            pointers.push_back(text.data());
        }
        pointers.push_back(nullptr);
        argc = static_cast<int>(texts.size());
        return app.emplace(argc, pointers.data(), args);
    }

    test::LogCapture log{ze::log::DEBUG};
    std::vector<std::string> texts;
    std::vector<char*> pointers;
    int argc = 0;
    std::optional<GApp> app;
};

// --- construction --------------------------------------------------------------------------------

Lines banner_without_time_stamp(const test::LogCapture& log) {
    Lines lines = log.lines_with_level();
    const std::string first = std::string("INF ZEK/TOVA:") + ze::framework_version() + ", ";
    if (!lines.empty() && lines[0].starts_with(first) && lines[0].size() > first.size()) {
        lines[0] = first + "...";
    }
    return lines;
}

TEST_F(WithApp, the_banner_without_a_version_has_two_numbers_less) {
    start();
    const std::string framework = std::string("INF ZEK/TOVA:") + ze::framework_version() + ", ...";
    const std::string name = GApp::get_app_name().toStdString();
    const auto config = std::to_string(GSettings::instance().get_version());
    EXPECT_EQ(banner_without_time_stamp(log),
              (Lines{framework, "INF " + name + ", config:" + config,
                     std::string("INF Linux / Qt:") + QT_VERSION_STR}));
}

TEST_F(WithApp, the_banner_shows_a_version_that_was_set_before) {
    EXPECT_FALSE(GApp::has_app_version());
    GApp::set_app_version(0, 5, 2);
    EXPECT_TRUE(GApp::has_app_version());
    start();
    const auto config = std::to_string(GSettings::instance().get_version());
    EXPECT_EQ(log.lines()[1],
              GApp::get_app_name().toStdString() + ", version:0.5.2, config:" + config);
    EXPECT_EQ(GApp::get_app_version(), QStringLiteral("0.5.2"));
}

TEST_F(WithApp, the_global_pointers_follow_its_life) {
    EXPECT_EQ(gApp, nullptr);
    EXPECT_EQ(filter, nullptr);
    GApp& started = start();
    EXPECT_EQ(gApp, &started);
    EXPECT_NE(filter, nullptr);
    EXPECT_EQ(started.get_event_filter(), filter);
    EXPECT_EQ(filter->parent(), &started);
    app.reset();
    EXPECT_EQ(gApp, nullptr);
    EXPECT_EQ(filter, nullptr);
}

TEST_F(WithApp, the_command_line_is_parsed) {
    start({"--user", "group1:Ebbe", "--login"});
    EXPECT_EQ(GApp::argv.get<QString>(QStringLiteral("user"), {}), QStringLiteral("group1:Ebbe"));
    EXPECT_TRUE(GApp::argv.is_flag(QStringLiteral("login"), false));
}

TEST_F(WithApp, arguments_of_the_caller_take_the_place_of_the_command_line) {
    ze::store::GArgv own;
    own.set(QStringLiteral("user"), QStringLiteral("group1:Rika"));
    start({"--user", "group1:Ebbe"}, &own);
    EXPECT_EQ(GApp::argv.get<QString>(QStringLiteral("user"), {}), QStringLiteral("group1:Rika"));
}

TEST_F(WithApp, its_own_arguments_stay_as_they_are) {
    GApp::argv.set(QStringLiteral("user"), QStringLiteral("group1:Mela"));
    start({"--user", "group1:Ebbe"}, &GApp::argv);
    EXPECT_EQ(GApp::argv.get<QString>(QStringLiteral("user"), {}), QStringLiteral("group1:Mela"));
}

TEST_F(WithApp, the_log_level_comes_from_the_command_line) {
    start({"--__log_level", "trace"});
    EXPECT_EQ(ze::log::get_log_level(), static_cast<unsigned>(ze::log::TRACE));
    EXPECT_TRUE(ze::log::is_gui_app());
}

TEST_F(WithApp, the_numeric_locale_is_forced_unless_told_otherwise) {
    const char* other = "C.UTF-8";
    ASSERT_NE(std::setlocale(LC_ALL, other), nullptr);
    qputenv("LC_ALL", other);
    start();
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
    app.reset();
    std::setlocale(LC_ALL, other);
    GApp::set_Locale_C(false);
    EXPECT_FALSE(GApp::is_Locale_C());
    start();
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), other);
    std::setlocale(LC_ALL, "C");
    qunsetenv("LC_ALL");
}

TEST_F(WithApp, stored_structures_can_be_named_by_their_second_name) {
    start();
    EXPECT_TRUE(QMetaType::fromName("zek::store::GType").isValid());
}

// --- settings ------------------------------------------------------------------------------------

TEST_F(WithApp, preparing_reads_the_node_and_quitting_stores_it) {
    const QString key = QStringLiteral("key");
    GApp::prepare_settings(QStringLiteral("vork2d.example"), 0, false, QStringLiteral("app"));
    EXPECT_EQ(QCoreApplication::organizationName(), QStringLiteral("vork2d.example"));
    EXPECT_EQ(QCoreApplication::applicationName(), QStringLiteral("app"));
    start();
    GApp::get_node().set(key, 7);
    QMetaObject::invokeMethod(&*app, &QCoreApplication::quit, Qt::QueuedConnection);
    EXPECT_EQ(QCoreApplication::exec(), 0);
    GApp::nApp = ze::store::GNode();
    GApp::prepare_settings(QStringLiteral("vork2d.example"), 0, false, QStringLiteral("app"));
    EXPECT_EQ(GApp::nApp.get<int>(key, 0), 7);
}

TEST_F(WithApp, quitting_stores_the_windows_that_are_still_open) {
    start();
    test::ProbeWindow window;
    window.setup();
    window.show();
    const auto leave = [] {
        GSettings::instance().clear();
        QCoreApplication::exit(0);  // closes no window
    };
    QMetaObject::invokeMethod(&*app, leave, Qt::QueuedConnection);
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(GSettings::instance().contains(QStringLiteral("Window/Probe_0")));
}

TEST_F(WithApp, the_debug_flag_wipes_the_settings) {
    GSettings::instance().set(QStringLiteral("k"), 1, nullptr);
    GSettings::flagDebug = true;
    GApp::prepare_settings(QStringLiteral("vork2d.example"), 0, false, QStringLiteral("app"));
    GSettings::flagDebug = false;
    EXPECT_FALSE(GSettings::instance().contains(QStringLiteral("k")));
}

TEST_F(WithApp, syncing_with_windows_stores_the_visible_ones) {
    start();
    test::ProbeWindow shown;
    test::ProbeWindow hidden;
    shown.setup();
    hidden.setup();
    shown.show();
    shown.settingsNode.set(QStringLiteral("k"), 1);
    hidden.settingsNode.set(QStringLiteral("k"), 1);
    GSettings& settings = GSettings::instance();
    settings.clear();
    GApp::sync_app_settings(false);
    EXPECT_FALSE(settings.contains(QStringLiteral("Window/Probe_0")));
    GApp::sync_app_settings(true);
    EXPECT_TRUE(settings.contains(QStringLiteral("Window/Probe_0")));
    EXPECT_FALSE(settings.contains(QStringLiteral("Window/Probe_1")));
}

TEST_F(WithApp, a_reset_clears_the_settings_and_quits) {
    start();
    GSettings::instance().set(QStringLiteral("k"), 1, nullptr);
    QMetaObject::invokeMethod(
        &*app, [] { GApp::reset_settings_and_quit(); }, Qt::QueuedConnection);
    log.clear();
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_FALSE(GSettings::instance().contains(QStringLiteral("k")));
    EXPECT_EQ(log.lines(), (Lines{"GApp::reset_settings_and_quit", "GSettings::clear_config",
                                  "GSettings::~clear_config"}));
}

TEST_F(WithApp, after_a_reset_nothing_is_stored_though_a_window_closed_since) {
    const auto prepare = [](unsigned minimum) {
        GApp::prepare_settings(QStringLiteral("vork2d.example"), minimum, true,
                               QStringLiteral("app"));
    };
    prepare(0);
    start();
    GSettings& settings = GSettings::instance();
    settings.clear();
    test::ProbeWindow window;
    window.setup();
    window.show();
    window.settingsNode.set(QStringLiteral("pw"), QStringLiteral("secret"));
    GApp::sync_app_settings(true);
    settings.sync();
    QFile kept(settings.fileName() + QStringLiteral(".unreadable"));
    ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
    QMetaObject::invokeMethod(
        &*app, [] { GApp::reset_settings_and_quit(); }, Qt::QueuedConnection);
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(settings.allKeys(), QStringList());
    EXPECT_FALSE(kept.exists());
    prepare(110);  // the next start, which may keep a copy of what it takes for damaged
    for (const char* copy : {"", ".unreadable"}) {
        QFile file(settings.fileName() + QLatin1String(copy));
        EXPECT_FALSE(file.open(QIODevice::ReadOnly) && file.readAll().contains("secret")) << copy;
    }
}

// --- windows -------------------------------------------------------------------------------------

TEST_F(WithApp, a_window_leaves_the_set_when_it_closes) {
    start();
    int removed = 0;
    app->window_removed_listener += [&removed](GMainWindow* const&) {
        ++removed;
    };
    test::ProbeWindow window;
    window.setup();
    window.show();
    app->add_window(&window);
    app->add_window(&window);
    EXPECT_EQ(app->get_added_windows(), std::set<GMainWindow*>{&window});
    log.clear();
    window.close();
    const std::string name = window.to_string().toStdString();
    EXPECT_EQ(app->get_added_windows(), std::set<GMainWindow*>());
    EXPECT_EQ(removed, 1);
    const Lines lines = log.lines_with_level();
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(Lines(lines.end() - 2, lines.end()),
              (Lines{"DEB GApp::add_window, win is going to be destroyed:" + name,
                     "DEB GApp::remove_window, remove win:" + name}));
}

TEST_F(WithApp, a_window_that_was_added_again_is_removed_once_more) {
    start();
    int removed = 0;
    app->window_removed_listener += [&removed](GMainWindow* const&) {
        ++removed;
    };
    test::ProbeWindow window;
    window.setup();
    for (int times = 1; times <= 2; ++times) {
        window.show();
        app->add_window(&window);
        window.close();
        EXPECT_EQ(removed, times);
    }
}

TEST_F(WithApp, a_window_that_dies_unclosed_leaves_the_set) {
    start();
    {
        test::ProbeWindow window;
        app->add_window(&window);
    }
    EXPECT_EQ(app->get_added_windows(), std::set<GMainWindow*>());
}

TEST_F(WithApp, main_windows_are_found_among_the_top_level_widgets) {
    start();
    test::ProbeWindow shown;
    const test::ProbeWindow hidden;
    const QWidget other;
    shown.show();
    EXPECT_EQ(GApp::get_windows(true), std::vector<GMainWindow*>{&shown});
    EXPECT_EQ(GApp::get_windows(false).size(), 2U);
}

// --- screens -------------------------------------------------------------------------------------

/// An application on the screens of a list in JSON.
class WithScreens : public WithApp {
protected:
    ~WithScreens() override { dim::optSize.reset(); }

    void start_on(const QByteArray& screens, const std::vector<std::string>& arguments = {}) {
        QFile config(folder.filePath(QStringLiteral("screens.json")));
        ASSERT_TRUE(config.open(QIODevice::WriteOnly));
        config.write("{\"screens\":[" + screens + "]}");
        config.close();
        const QByteArray before = qgetenv("QT_QPA_PLATFORM");
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.fileName().toUtf8());
        start(arguments);
        qputenv("QT_QPA_PLATFORM", before);
        dim::optSize.reset();
    }

    QTemporaryDir folder;
};

constexpr const char* NARROW =
    R"({"name":"narrow","x":0,"y":0,"width":200,"height":900,"logicalDpi":96,)"
    R"("logicalBaseDpi":96,"dpr":1})";

TEST_F(WithScreens, a_narrow_one_counts_as_a_square) {
    start_on(NARROW);
    EXPECT_EQ(dim::get_info(), "HORIZONTAL, 300x300 => SMALL");
}

TEST_F(WithScreens, a_narrow_one_gets_a_window_that_can_be_reached) {
    start_on(NARROW, {"--__bounds", "400,0,800,600"});
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    ASSERT_EQ(screen.size(), QSize(200, 900));
    test::ProbeWindow window;
    window.setup();
    window.show();
    EXPECT_TRUE(screen.contains(window.geometry().topLeft())) << window.x() << ',' << window.y();
}

TEST_F(WithScreens, without_any_the_size_is_a_square_and_a_window_can_be_made) {
    start_on(NARROW);
    const QByteArray geometry = QWidget().saveGeometry();
    app.reset();
    start_on("");
    ASSERT_EQ(QGuiApplication::primaryScreen(), nullptr);
    EXPECT_EQ(dim::get_info(), "HORIZONTAL, 300x300 => SMALL");
    test::ProbeWindow window;
    window.setup();
    window.settingsNode.set(QStringLiteral("geometry"), geometry);
    window.set_theme(1, 0);
    window.save_state();
    window.restore_state();
    EXPECT_TRUE(window.is_theme_dark());
    GSettings::instance().clear();
    window.close();  // was never open: Qt itself ends a program that shows one there
    EXPECT_TRUE(GSettings::instance().contains(QStringLiteral("Window/Probe_0")));
}

TEST_F(WithApp, a_missing_svg_plug_in_leaves_one_line) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // a process that has loaded no plug-in yet
    const auto start_without_plugins = [this] {
        const QString plugins = QLibraryInfo::path(QLibraryInfo::PluginsPath);
        qputenv("QT_QPA_PLATFORM_PLUGIN_PATH", plugins.toUtf8() + "/platforms");
        QCoreApplication::setLibraryPaths({});
        start();
        log.clear();
        (void)QTest::qWaitFor([this] { return !log.lines().empty(); });
        const Lines expected = {
            "WRN check_svg_support, Qt's SVG plug-in is missing: icons stay blank"};
        std::exit(log.lines_with_level() == expected ? 0 : 1);
    };
    EXPECT_EXIT(start_without_plugins(), testing::ExitedWithCode(0), "");
}

// --- theme and touch -----------------------------------------------------------------------------

TEST_F(WithApp, a_theme_in_effect_is_not_applied_again) {
    start();
    log.clear();
    app->set_theme(1);
    app->set_theme(1);
    app->set_theme(0);
    EXPECT_EQ(log.lines(), (Lines{"zek::qt::theme::apply_the_theme:1, dark",
                                  "zek::qt::theme::apply_the_theme:0, normal"}));
}

TEST_F(WithApp, touch_gestures_are_fired_again) {
    start();
    std::vector<std::string> fired;
    app->pan_listener += [&fired](const int& pan) {
        fired.push_back("pan " + std::to_string(pan));
    };
    app->delta_listener += [&fired](const QPointF&) {
        fired.push_back("delta");
    };
    app->zoom_listener += [&fired](const float&) {
        fired.push_back("zoom");
    };
    app->rotate_listener += [&fired](const float&) {
        fired.push_back("rotate");
    };
    event::GTouchAutomat& automat = filter->get_touch_automat();
    automat.pan_listener.fire_event(3);
    automat.delta_listener.fire_event(QPointF(1, 2));
    automat.zoom_listener.fire_event(0.5F);
    automat.rotate_listener.fire_event(10.0F);
    EXPECT_EQ(fired, (Lines{"pan 3", "delta", "zoom", "rotate"}));
}

TEST_F(WithApp, the_touch_automat_can_be_reset) {
    GApp::reset_touch_automat();
    start();
    ze::log::set_log_level(ze::log::TRACE);
    log.clear();
    GApp::reset_touch_automat();
    EXPECT_EQ(log.lines(), Lines{"GTouchAutomat::reset_state"});
}

TEST_F(WithApp, the_share_context_flag_is_kept) {
    EXPECT_FALSE(GApp::is_GL_Share_context());
    GApp::set_GL_Share_context(true);
    EXPECT_TRUE(GApp::is_GL_Share_context());
    GApp::set_GL_Share_context(false);
    GApp::set_share_gl_context(true);
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_ShareOpenGLContexts));
    GApp::set_share_gl_context(false);
}

// --- icons ---------------------------------------------------------------------------------------

TEST_F(WithApp, icons_end_with_the_application_and_are_made_anew_by_the_next) {
    const QString path = QStringLiteral(":/wb/shared-res/icons/copy.svg");
    qint64 former = 0;
    for (int i = 0; i < 3; ++i) {
        start();
        EXPECT_NE(get_icon(path).cacheKey(), former);
        EXPECT_FALSE(get_icon(path).pixmap(16).isNull());
        former = get_icon(path).cacheKey();
        app.reset();
    }
}

}  // namespace
