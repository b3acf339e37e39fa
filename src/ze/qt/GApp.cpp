#include "ze/qt/GApp.h"

#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/event/EventFilter.h"
#include "ze/qt/resources.h"
#include "ze/qt/themes.h"
#include "ze/store/GType.h"
#include "ze/tools/GSettings.h"
#include "ze/tools/format.h"
#include "ze/tools/os.h"
#include "ze/tools/version.h"

#include <QTimer>
#include <QWindow>

#include <clocale>

namespace ze::qt {

GApp* gApp = nullptr;
EventFilter* filter = nullptr;
unsigned int versionAppMajor = 0;
unsigned int versionAppMinor = 0;
unsigned int versionAppPatch = 0;

store::GNode GApp::nApp;
store::GArgv GApp::argv;
bool GApp::flagLocaleC = true;

namespace {

constexpr const char* SOURCE = "src/ze/qt/GApp";

constexpr int MS_CHECK_SVG =
    1000;  // Qt looks through all its image plug-ins: not before the first paint

bool flagShareContext = false;

}  // namespace

GApp::GApp(int& argc, char** argValues, store::GArgv* args) : QApplication(argc, argValues) {
    if (flagLocaleC) {
        // Qt has just set the user's locale, whose decimal comma would get into style sheets.
        std::setlocale(LC_NUMERIC, "C");
    }
    store::register_second_type_name();
    gApp = this;
    take_arguments(argc, argValues, args);
    log::configure(argc, argValues, true);
    show_basic_env();
    connect(this, &QCoreApplication::aboutToQuit, this, [this] { on_about_to_quit(); });
    if (ze::os::is_sandboxed()) {
        watch_suspension();
    }
    filter = new EventFilter(this);
    installEventFilter(filter);
    republish_touch();
    QTimer::singleShot(MS_CHECK_SVG, this, [] { check_svg_support(); });
}

GApp::~GApp() {
    filter = nullptr;
    gApp = nullptr;
}

void GApp::take_arguments(int argc, char** argValues, const store::GArgv* args) {
    if (args == nullptr) {
        argv.set_arguments(argc, argValues);
        (void)argv.parse();  // a faulty command line has been logged; what was read of it counts
    } else if (args != &argv) {
        argv = *args;
    }
}

void GApp::watch_suspension() {
    // A sandboxed program may be ended in the background without another word.
    connect(this, &QGuiApplication::applicationStateChanged, this, [](Qt::ApplicationState state) {
        if (state == Qt::ApplicationHidden || state == Qt::ApplicationInactive) {
            sync_app_settings(true);
        }
    });
    connect(this, &QGuiApplication::focusWindowChanged, this, [](const QWindow* focused) {
        if (focused == nullptr) {
            sync_app_settings(true);
        }
    });
}

void GApp::republish_touch() {
    event::GTouchAutomat& automat = filter->get_touch_automat();
    automat.pan_listener += [this](const int& pixels) {
        pan_listener.fire_event(pixels);
    };
    automat.delta_listener += [this](const QPointF& delta) {
        delta_listener.fire_event(delta);
    };
    automat.zoom_listener += [this](const float& zoom) {
        zoom_listener.fire_event(zoom);
    };
    automat.rotate_listener += [this](const float& degrees) {
        rotate_listener.fire_event(degrees);
    };
}

void GApp::set_app_version(unsigned int major, unsigned int minor, unsigned int patch) noexcept {
    versionAppMajor = major;
    versionAppMinor = minor;
    versionAppPatch = patch;
}

bool GApp::has_app_version() noexcept {
    return versionAppMajor != 0 || versionAppMinor != 0 || versionAppPatch != 0;
}

QString GApp::get_app_version() {
    return str::qprintF("$.$.$", versionAppMajor, versionAppMinor, versionAppPatch);
}

QString GApp::get_app_name() {
    return ze::os::get_program_name_qs();
}

void GApp::set_GL_Share_context(bool on) noexcept {
    flagShareContext = on;
}

bool GApp::is_GL_Share_context() noexcept {
    return flagShareContext;
}

void GApp::set_share_gl_context(bool on) {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, on);
}

void GApp::show_basic_env() {
    pp_format(log::INFO, 0, "ZEK/TOVA:$, $", framework_version(), get_build_timestamp());
    const unsigned int versionConfig = GSettings::instance().get_version();
    if (has_app_version()) {
        pp_format(log::INFO, 0, "$, version:$, config:$", get_app_name(), get_app_version(),
                  versionConfig);
    } else {
        pp_format(log::INFO, 0, "$, config:$", get_app_name(), versionConfig);
    }
    pp_format(log::INFO, 0, "$ / Qt:$", ze::os::get_os_name(), QT_VERSION_STR);
}

void GApp::prepare_settings(const QString& key, unsigned int versionMinimum, bool clearIfOlder,
                            const QString& appName) {
    QCoreApplication::setOrganizationName(key);
    QCoreApplication::setApplicationName(appName);
    GSettings& settings = GSettings::instance();
    if (GSettings::flagDebug) {
        settings.clear_config();
    } else {
        settings.check_update_config(versionMinimum, clearIfOlder);
    }
    nApp = settings.get_app_node();
}

void GApp::sync_app_settings(bool withWindows) {
    GSettings::instance().set_app_node(nApp);
    if (!withWindows) {
        return;
    }
    for (GMainWindow* window : get_windows(true)) {
        window->sync_win_settings(false);
    }
}

void GApp::on_about_to_quit() const {
    sync_app_settings(true);
    if (flagReset) {
        // The windows have stored themselves when they closed, a password with them.
        GSettings::instance().clear();
        GSettings::instance().sync();
    }
}

void GApp::reset_settings_and_quit() {
    ze::pp("GApp::reset_settings_and_quit");
    GSettings::instance().clear_config();
    GSettings::instance().remove_unreadable_file();
    if (gApp != nullptr) {
        gApp->flagReset = true;
    }
    QCoreApplication::quit();
}

void GApp::add_window(GMainWindow* win) {
    if (win == nullptr) {
        nullPointerHandling(SOURCE, __LINE__, QStringLiteral("win == NULL"));
    }
    if (!windows.insert(win).second) {
        return;
    }
    win->close_listener += [this, win] {
        // A window that was added again after a close has one listener of each time.
        if (windows.contains(win)) {
            ze::pp("GApp::add_window, win is going to be destroyed:$", win->to_string());
            remove_window(win);
        }
    };
    connect(win, &QObject::destroyed, this, [this, win] { windows.erase(win); });
}

void GApp::remove_window(GMainWindow* win) {
    if (win == nullptr) {
        nullPointerHandling(SOURCE, __LINE__, QStringLiteral("win == NULL"));
    }
    ze::pp("GApp::remove_window, remove win:$", win->to_string());
    windows.erase(win);
    window_removed_listener.fire_event(win);
}

std::vector<GMainWindow*> GApp::get_windows(bool onlyVisible) {
    std::vector<GMainWindow*> found;
    const QWidgetList topLevel = QApplication::topLevelWidgets();
    for (QWidget* widget : topLevel) {
        auto* window = dynamic_cast<GMainWindow*>(widget);
        if (window != nullptr && (window->isVisible() || !onlyVisible)) {
            found.push_back(window);
        }
    }
    return found;
}

void GApp::set_theme(unsigned int theme) {
    themeWanted = theme;
    if (themeWanted != themeApplied) {
        themes::apply_the_theme(themeWanted);
        themeApplied = themeWanted;
    }
}

void GApp::reset_touch_automat() {
    if (filter != nullptr) {
        filter->get_touch_automat().reset_state();
    }
}

}  // namespace ze::qt
