// A main window's life, its identity and stored settings, and what is looked up in it.
#include "ze/qt/GMainWindow.h"

#include "ze/log/pp.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/ProbeWindow.h"
#include "ze/qt/components/GDock.h"
#include "ze/qt/components/GMenuBar.h"
#include "ze/qt/components/GStatusBar.h"

#include "support/LogCapture.h"

#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>

#include <algorithm>
#include <optional>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;
using test::ProbeWindow;
using Lines = std::vector<std::string>;

class MainWindow : public testing::Test {
protected:
    MainWindow() {
        log.ignore("Listener::~Listener@");
        test::clear_settings();
    }

    ~MainWindow() override {
        GApp::argv = ze::store::GArgv();
        test::turn_event_loop();
    }

    /// Whether its title bar, the top of its frame, can be taken.
    static bool is_on_a_screen(const QWidget& window) {
        const QRect frame = window.frameGeometry();
        const QRect title(frame.topLeft(), QSize(frame.width(), 30));
        const QRect shown = window.screen()->availableGeometry().intersected(title);
        return shown.width() >= 60 && shown.height() == 30;
    }

    /// What keeps the layout from making a window smaller.
    static void with_least_size(GPanel* panel) { panel->setMinimumSize(200, 100); }

    test::LogCapture log;
};

/// Logs each step of its life.
class LifeWindow : public GMainWindow {
public:
    LifeWindow() {
        close_hook = [] {
            ze::pp("close_hook");
        };
        post_ini_hook = [] {
            ze::pp("post_ini_hook");
        };
        close_listener += [] {
            ze::pp("close_listener");
        };
        first_resize_listener += [] {
            ze::pp("first_resize_listener");
        };
        theme_listener += [](const unsigned& theme) {
            ze::pp("theme_listener:$", theme);
        };
    }
    void ini() override {
        ze::pp("ini");
        gen_log_panel(gen_main_panel(GLAYOUT::VERTICAL));
    }
    void restore_state() override {
        ze::pp("restore_state");
        GMainWindow::restore_state();
    }
    void adapt_icons_to_theme() override {
        ze::pp("adapt_icons_to_theme");
        GMainWindow::adapt_icons_to_theme();
    }
    void adapt_log_view() override {
        ze::pp("adapt_log_view");
        GMainWindow::adapt_log_view();
    }
    void adapt_themes() override {
        ze::pp("adapt_themes");
        GMainWindow::adapt_themes();
    }
    void setup_base_hotkeys() override {
        ze::pp("setup_base_hotkeys");
        GMainWindow::setup_base_hotkeys();
    }
    void cleanup() override {
        ze::pp("cleanup");
        GMainWindow::cleanup();
    }
    void do_layout_all(LayoutEvent& event) override {
        ze::pp("do_layout_all, reason:$", event.reason);
        GMainWindow::do_layout_all(event);
    }
    void on_change_theme(unsigned int theme) override { ze::pp("on_change_theme:$", theme); }
};

// --- life ----------------------------------------------------------------------------------------

TEST_F(MainWindow, its_life_has_a_fixed_order) {
    std::optional<LifeWindow> window;
    window.emplace();
    window->set_theme_default(1);
    window->setup();
    ze::pp("-- set up");
    window->show();
    ze::pp("-- shown");
    test::turn_event_loop();
    ze::pp("-- loop");
    window->close();
    ze::pp("-- closed");
    window.reset();
    EXPECT_EQ(log.lines(), (Lines{"ini",
                                  "restore_state",
                                  "adapt_icons_to_theme",
                                  "adapt_log_view",
                                  "adapt_themes",
                                  "setup_base_hotkeys",
                                  "-- set up",
                                  "do_layout_all, reason:0",
                                  "-- shown",
                                  "on_change_theme:1",
                                  "theme_listener:1",
                                  "post_ini_hook",
                                  "first_resize_listener",
                                  "-- loop",
                                  "GMainWindow::closeEvent",
                                  "close_hook",
                                  "cleanup",
                                  "GMainWindow::save_state",
                                  "GMainWindow::sync_win_settings",
                                  "GMainWindow::sync_win_settings",
                                  "close_listener",
                                  "-- closed",
                                  "GMainWindow::~GMainWindow"}));
}

TEST_F(MainWindow, it_has_a_random_name_until_it_is_set_up) {
    const ProbeWindow one;
    const ProbeWindow other;
    EXPECT_EQ(one.objectName().size(), 8);
    EXPECT_NE(one.objectName(), other.objectName());
    EXPECT_EQ(one.get_object_name(), one.objectName());
    EXPECT_TRUE(one.acceptDrops());
}

TEST_F(MainWindow, posted_calls_of_a_window_that_is_gone_are_dropped) {
    bool called = false;
    {
        ProbeWindow window;
        window.post_ini_hook = [&called] {
            called = true;
        };
        window.setup();
    }
    test::turn_event_loop();
    EXPECT_FALSE(called);
}

TEST_F(MainWindow, the_default_identity_is_that_of_the_base) {
    LifeWindow window;
    window.setup();
    EXPECT_EQ(window.get_object_name(), QStringLiteral("CMainWindow_0"));
    EXPECT_EQ(window.get_type_name(), QStringLiteral("GMainWindow"));
    EXPECT_EQ(window.to_string(), QStringLiteral("GMainWindow@") + window.objectName());
    window.setObjectName(QString());
    EXPECT_EQ(window.to_string(), QStringLiteral("GMainWindow"));
}

TEST_F(MainWindow, a_number_that_came_free_brings_its_settings_along) {
    const QString key = QStringLiteral("mark");
    auto first = std::make_unique<ProbeWindow>();
    first->setup();
    ProbeWindow second;
    second.setup();
    EXPECT_EQ(first->get_object_name(), QStringLiteral("Probe_0"));
    EXPECT_EQ(second.get_object_name(), QStringLiteral("Probe_1"));
    first->settingsNode.set(key, QStringLiteral("of the first"));
    first->close();
    EXPECT_EQ(first->get_object_name(), QStringLiteral("Probe_0"));
    first.reset();
    ProbeWindow third;
    third.setup();
    EXPECT_EQ(third.get_object_name(), QStringLiteral("Probe_0"));
    EXPECT_EQ(third.settingsNode.get<QString>(key, {}), QStringLiteral("of the first"));
}

TEST_F(MainWindow, closing_writes_the_settings_twice) {
    ProbeWindow window;
    window.setup();
    window.show();
    log.clear();
    window.close();
    const Lines lines = log.lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "GMainWindow::sync_win_settings"), 2);
    EXPECT_TRUE(GSettings::instance().contains(QStringLiteral("Window/Probe_0")));
}

TEST_F(MainWindow, a_closed_window_is_no_log_target) {
    ProbeWindow window;
    window.setup();
    window.get_panel_log_view()->set_enabled(true);
    window.show();
    window.close();
    window.get_panel_log_view()->clear();
    ze::pp("after the end");
    EXPECT_EQ(window.findChild<QPlainTextEdit*>()->toPlainText(), QString());
}

TEST_F(MainWindow, it_can_delete_itself_on_close) {
    ProbeWindow window;
    EXPECT_FALSE(window.is_delete_on_close());
    window.set_delete_on_close(true);
    EXPECT_TRUE(window.is_delete_on_close());
}

// --- stored state --------------------------------------------------------------------------------

TEST_F(MainWindow, size_and_font_come_back) {
    {
        ProbeWindow window;
        window.setup();
        window.show();
        window.setGeometry(50, 60, 345, 234);
        window.set_font_size(17);
        window.close();
    }
    ProbeWindow window;
    window.setup();
    EXPECT_EQ(window.size(), QSize(345, 234));
    EXPECT_EQ(window.font().pointSize(), 17);
}

TEST_F(MainWindow, a_dock_comes_back_where_it_was) {
    log.ignore("dockLocationChanged");
    GDock* dock = nullptr;
    const auto with_dock = [&dock](ProbeWindow& window) {
        window.build = [&dock, &window](GPanel*) {
            dock = window.gen_dock(QStringLiteral("tools"), QStringLiteral("Tools"),
                                   Qt::AllDockWidgetAreas);
        };
        window.setup();
    };
    {
        ProbeWindow window;
        with_dock(window);
        window.addDockWidget(Qt::LeftDockWidgetArea, dock);
        window.close();
    }
    ProbeWindow window;
    with_dock(window);
    EXPECT_EQ(window.dockWidgetArea(dock), Qt::LeftDockWidgetArea);
}

TEST_F(MainWindow, a_stored_font_size_counts_from_6_to_28) {
    const std::pair<int, bool> rows[] = {{5, false},  {6, true},   {28, true},
                                         {29, false}, {-1, false}, {2000000000, false}};
    for (const auto& [size, taken] : rows) {
        ProbeWindow window;
        const int before = window.font().pointSize();
        window.settingsNode.set(QStringLiteral("pointSize"), size);
        window.restore_state();
        EXPECT_EQ(window.font().pointSize(), taken ? size : before) << size;
    }
}

/// Tells whether the font of the log was there before the first widget.
class FontWindow : public GMainWindow {
public:
    void ini() override {
        found = QFontDatabase::families().contains(QStringLiteral("Source Code Pro"));
    }
    bool found = false;
};

TEST_F(MainWindow, the_font_of_the_log_is_added_before_any_widget_uses_another) {
    FontWindow window;
    window.setup();
    EXPECT_TRUE(window.found);
}

TEST_F(MainWindow, a_stored_geometry_off_every_screen_is_moved_onto_one) {
    QByteArray far;
    {
        QWidget other;
        other.setGeometry(20000, 20000, 300, 200);
        far = other.saveGeometry();
    }
    ProbeWindow window;
    window.settingsNode.set(QStringLiteral("geometry"), far);
    window.restore_state();
    window.show();
    EXPECT_TRUE(is_on_a_screen(window)) << window.x() << ',' << window.y();
}

TEST_F(MainWindow, a_stored_geometry_without_width_or_height_opens_on_a_screen) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint places[] = {screen.center(), screen.bottomRight(), screen.bottomRight() * 20};
    for (const QSize& stored : {QSize(0, 0), QSize(0, 200), QSize(300, 0)}) {
        for (const QPoint& place : places) {
            QWidget other;
            other.setGeometry(QRect(place, stored));
            ProbeWindow window;
            window.build = with_least_size;
            window.ini();
            window.settingsNode.set(QStringLiteral("geometry"), other.saveGeometry());
            window.restore_state();
            window.show();
            test::turn_event_loop();
            EXPECT_TRUE(is_on_a_screen(window)) << stored.width() << " by " << stored.height()
                                                << " at " << window.x() << ',' << window.y();
        }
    }
}

TEST_F(MainWindow, damaged_settings_leave_a_window_that_can_be_reached) {
    struct Row {
        const char* name;
        const char* key;
        QVariant value;
    };
    const Row rows[] = {
        {"no geometry", "geometry", QByteArray("nothing of the kind")},
        {"geometry of another type", "geometry", QStringLiteral("text")},
        {"no state", "state", QByteArray("\x00\x00\x00\xff\xff\xff", 6)},
        {"a theme that is none", "theme", 77U},
        {"a theme of another type", "theme", QStringLiteral("dark")},
        {"a font size of another type", "pointSize", QStringLiteral("12")},
        {"a log of another type", "log", 5},
    };
    for (const Row& row : rows) {
        test::clear_settings();
        ProbeWindow window;
        window.setup_node<WindowClazz<"Probe">>();
        window.settingsNode.set(QLatin1String(row.key), row.value);
        window.ini_standards();
        window.show();
        EXPECT_TRUE(is_on_a_screen(window)) << row.name;
        EXPECT_FALSE(window.is_logPanel_enabled()) << row.name;
    }
}

// --- bounds on the command line ------------------------------------------------------------------

TEST_F(MainWindow, bounds_beat_the_stored_geometry) {
    GApp::argv.set(QStringLiteral("__bounds"), QStringLiteral("10,20,300,200"));
    ProbeWindow other;
    other.setGeometry(100, 100, 400, 400);
    ProbeWindow window;
    window.settingsNode.set(QStringLiteral("geometry"), other.saveGeometry());
    window.restore_state();
    log.clear();
    window.show();
    EXPECT_EQ(window.geometry(), QRect(10, 20, 300, 200));
    EXPECT_EQ(log.lines_with_level(), Lines{"DEB __bounds, r:10,20,300,200"});
}

TEST_F(MainWindow, bounds_that_are_no_rectangle_change_nothing) {
    for (const char* bounds : {"", "wide", "1,2,3", "1,2,3,4,5", "1,2,x,4"}) {
        GApp::argv.set(QStringLiteral("__bounds"), QLatin1String(bounds));
        ProbeWindow window;
        window.setGeometry(30, 40, 250, 150);
        window.show();
        EXPECT_EQ(window.geometry(), QRect(30, 40, 250, 150)) << bounds;
    }
    GApp::argv.set_flag(QStringLiteral("__bounds"), true);
    ProbeWindow window;
    window.setGeometry(30, 40, 250, 150);
    window.show();
    EXPECT_EQ(window.geometry(), QRect(30, 40, 250, 150));
}

TEST_F(MainWindow, bounds_off_every_screen_keep_their_size_and_move_onto_one) {
    for (const char* place : {"-5000,-5000", "0,-160", "-250,50", "100,-30", "100,5000"}) {
        GApp::argv.set(QStringLiteral("__bounds"),
                       QLatin1String(place) + QStringLiteral(",300,200"));
        ProbeWindow window;
        window.show();
        EXPECT_TRUE(is_on_a_screen(window)) << place << ": " << window.x() << ',' << window.y();
        EXPECT_EQ(window.size(), QSize(300, 200)) << place;
    }
}

TEST_F(MainWindow, bounds_above_a_screen_move_down_and_no_further) {
    GApp::argv.set(QStringLiteral("__bounds"), QStringLiteral("100,-30,300,200"));
    ProbeWindow window;
    window.show();
    EXPECT_EQ(window.geometry().x(), 100);
    EXPECT_EQ(window.frameGeometry().y(),
              QGuiApplication::primaryScreen()->availableGeometry().y());
}

TEST_F(MainWindow, bounds_that_leave_a_part_of_the_title_bar_on_a_screen_stay) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint places[] = {screen.topLeft(), QPoint(-200, 50),
                             screen.bottomRight() - QPoint(70, 20)};
    for (const QPoint& place : places) {
        const QRect bounds(place, QSize(300, 200));
        GApp::argv.set(QStringLiteral("__bounds"),
                       QStringLiteral("%1,%2,300,200").arg(place.x()).arg(place.y()));
        ProbeWindow window;
        window.show();
        EXPECT_EQ(window.geometry(), bounds);
    }
}

// --- panels and widgets --------------------------------------------------------------------------

TEST_F(MainWindow, a_second_main_panel_is_an_error_and_takes_the_place_of_the_first) {
    log.expect_error("GMainWindow::gen_main_panel, already called!");
    ProbeWindow window;
    const GMainPanel* first = window.gen_main_panel(GLAYOUT::VERTICAL);
    EXPECT_EQ(window.get_main_panel(), first);
    EXPECT_TRUE(first->is_name(QStringLiteral("main")));
    const GMainPanel* second = window.gen_main_panel(GLAYOUT::HORIZONTAL);
    EXPECT_EQ(window.get_main_panel(), second);
    EXPECT_NE(second, first);
}

TEST_F(MainWindow, without_a_main_panel_there_is_a_warning) {
    ProbeWindow window;
    EXPECT_EQ(window.get_main_panel(), nullptr);
    EXPECT_EQ(log.lines_with_level(),
              Lines{"WRN GMainWindow::get_main_panel, centralWidget() == nullpr"});
}

TEST_F(MainWindow, widgets_are_found_by_kind_and_name) {
    ProbeWindow window;
    GPanel* main = window.gen_main_panel(GLAYOUT::VERTICAL);
    auto* first = main->gen<QLabel>(QStringLiteral("first"));
    auto* second = main->gen<QLabel>(QStringLiteral("second"));
    second->setObjectName(QStringLiteral("named"));
    GPanel* inner = main->gen_pan_horz();
    inner->setObjectName(QStringLiteral("named"));
    EXPECT_EQ(window.find_widget<QLabel>({}), first);
    EXPECT_EQ(window.find_widget<QLabel>(QStringLiteral("named")), second);
    EXPECT_EQ(window.find_widget<GPanel>(QStringLiteral("named")), inner);
    EXPECT_EQ(window.find_widget<GPanel>({}), main);
    EXPECT_EQ(window.find_widget<QLabel>(QStringLiteral("none")), nullptr);
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(MainWindow, several_widgets_of_one_name_are_logged) {
    ProbeWindow window;
    GPanel* main = window.gen_main_panel(GLAYOUT::VERTICAL);
    QLabel* first = main->gen<QLabel>(QStringLiteral("first"));
    first->setObjectName(QStringLiteral("twin"));
    main->gen<QLabel>(QStringLiteral("second"))->setObjectName(QStringLiteral("twin"));
    EXPECT_EQ(window.find_widget<QLabel>(QStringLiteral("twin")), first);
    EXPECT_EQ(log.lines_with_level(), Lines{"DEB GMainWindow::find_widget, return first found "
                                            "object 'twin' but we have 2 hits"});
}

TEST_F(MainWindow, only_visible_children_can_be_asked_for) {
    ProbeWindow window;
    GPanel* main = window.gen_main_panel(GLAYOUT::VERTICAL);
    QLabel* hidden = main->gen<QLabel>(QStringLiteral("hidden"));
    hidden->hide();
    window.show();
    const auto contains = [](const std::vector<QWidget*>& widgets, QWidget* widget) {
        return std::find(widgets.begin(), widgets.end(), widget) != widgets.end();
    };
    EXPECT_FALSE(contains(window.get_children(true), hidden));
    EXPECT_TRUE(contains(window.get_children(true), main));
    EXPECT_TRUE(contains(window.get_children(false), hidden));
    EXPECT_EQ(window.get_all_widgets(), window.get_children(false));
}

TEST_F(MainWindow, a_widget_knows_its_main_window) {
    ProbeWindow window;
    GPanel* main = window.gen_main_panel(GLAYOUT::VERTICAL);
    QWidget alone;
    EXPECT_EQ(GMainWindow::from_widget(main), &window);
    EXPECT_EQ(GMainWindow::from_widget(&window), &window);
    EXPECT_EQ(GMainWindow::from_widget(&alone), nullptr);
    EXPECT_EQ(GMainWindow::from_widget(nullptr), nullptr);
}

TEST_F(MainWindow, bars_and_docks_are_made) {
    ProbeWindow window;
    const GMenuBar* menuBar = window.gen_menu_bar();
    const GStatusBar* statusBar = window.gen_status_bar();
    EXPECT_EQ(window.menuBar(), menuBar);
    EXPECT_EQ(window.statusBar(), statusBar);
    GDock* dock = window.gen_dock(QStringLiteral("tools"), QStringLiteral("Tools"),
                                  Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    EXPECT_EQ(dock->objectName(), QStringLiteral("tools"));
    EXPECT_EQ(dock->windowTitle(), QStringLiteral("Tools"));
    EXPECT_EQ(dock->allowedAreas(), Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    EXPECT_EQ(window.dockWidgetArea(dock), Qt::RightDockWidgetArea);
    log.ignore("dockLocationChanged");
}

TEST_F(MainWindow, its_text_is_its_title) {
    ProbeWindow window;
    window.setText(QStringLiteral("one"));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("one"));
    window.set_string("two $", 2);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("two 2"));
}

}  // namespace
