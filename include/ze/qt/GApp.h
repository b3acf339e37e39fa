// The program's application object: locale, command line, log, the one event filter, touch
// gestures, the set of main windows, and the application's settings. There is exactly one.
#pragma once

#include "ze/qt/guitools/GOrientationDetector.h"
#include "ze/store/GArgv.h"
#include "ze/store/GNode.h"
#include "ze/tools/Listener.h"

#include <QApplication>

#include <set>
#include <vector>

namespace ze::qt {

class EventFilter;
class GApp;
class GMainWindow;

extern GApp* gApp;           ///< null until the constructor has begun
extern EventFilter* filter;  ///< the filter of all events; null until the constructor is done
extern unsigned int versionAppMajor;
extern unsigned int versionAppMinor;
extern unsigned int versionAppPatch;

class GApp : public QApplication {
public:
    static store::GNode nApp;  ///< the application's persisted settings
    static store::GArgv argv;  ///< the command line
    static bool flagLocaleC;   ///< whether the constructor forces the numeric locale

    /// The arguments of main. With `args` null they are parsed; otherwise `args` is the command
    /// line.
    GApp(int& argc, char** argValues, store::GArgv* args);
    ~GApp() override;
    Q_DISABLE_COPY_MOVE(GApp)

    Listener<int> pan_listener;        ///< touch: whole pixels
    Listener<float> zoom_listener;     ///< touch: change of the distance, 0.5 is half as far again
    Listener<float> rotate_listener;   ///< touch: degrees
    Listener<QPointF> delta_listener;  ///< touch: pixels
    Listener<NO_PAYLOAD> settings_changed_listener;  ///< after a change of theme or logging
    Listener<GMainWindow*> window_removed_listener;
    GOrientationDetector orientation_detector;  ///< fires when the screen has turned

    /// The program's version; called before the constructor, it shows in the banner.
    static void set_app_version(unsigned int major, unsigned int minor,
                                unsigned int patch) noexcept;
    [[nodiscard]] static bool has_app_version() noexcept;
    [[nodiscard]] static QString get_app_version();
    [[nodiscard]] static QString get_app_name();

    static void set_Locale_C(bool on) noexcept { flagLocaleC = on; }
    [[nodiscard]] static bool is_Locale_C() noexcept { return flagLocaleC; }

    /// A flag of its own: it is kept and changes nothing.
    static void set_GL_Share_context(bool on) noexcept;
    [[nodiscard]] static bool is_GL_Share_context() noexcept;
    /// Lets all OpenGL widgets share their resources; to be called before the constructor.
    static void set_share_gl_context(bool on);
    static void basic_gl_init() {}

    [[nodiscard]] static store::GNode& get_node() noexcept { return nApp; }
    /// Decides where the settings lie, checks their version and reads the application's node.
    /// `clearIfOlder`: settings older than `versionMinimum` are cleared. Needs no application
    /// object.
    static void prepare_settings(const QString& key, unsigned int versionMinimum, bool clearIfOlder,
                                 const QString& appName);
    /// Stores the application's node and, if asked for, the settings of the visible windows.
    static void sync_app_settings(bool withWindows);
    /// Nothing is stored any more when the program has ended, also if a window puts that off.
    static void reset_settings_and_quit();

    /// Logs name, versions, system and Qt.
    static void show_basic_env();

    /// The window stays in the set until it closes. Adding it twice changes nothing.
    void add_window(GMainWindow* win);
    void remove_window(GMainWindow* win);
    [[nodiscard]] const std::set<GMainWindow*>& get_added_windows() const noexcept {
        return windows;
    }
    /// The main windows among the top-level widgets, whether they were added or not.
    [[nodiscard]] static std::vector<GMainWindow*> get_windows(bool onlyVisible);

    /// The application's theme; the one in effect is not applied again.
    void set_theme(unsigned int theme);

    static void reset_touch_automat();
    [[nodiscard]] EventFilter* get_event_filter() const noexcept { return filter; }

private:
    static void take_arguments(int argc, char** argValues, const store::GArgv* args);
    void watch_suspension();
    void republish_touch();
    void on_about_to_quit() const;

    std::set<GMainWindow*> windows;
    unsigned int themeWanted = 0;
    unsigned int themeApplied = 0;
    bool flagReset = false;
};

}  // namespace ze::qt
