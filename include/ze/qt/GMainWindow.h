// The base of every main window: stored settings under an identity that survives restarts, a theme,
// a central panel, an optional log panel, hotkeys, and layout events. A derived window supplies
// ini(), which builds its panels.
// The order of a window's life: construct, setup(), show(), event loop, closeEvent, destroy.
// The source is split by subject: GMainWindow.cpp and its siblings with an underline.
#pragma once

#include "ze/qt/BaseWindow.h"
#include "ze/qt/GLAYOUT.h"
#include "ze/qt/LayoutEvent.h"
#include "ze/qt/StringSetter.h"
#include "ze/qt/WindowClazz.h"
#include "ze/store/GNode.h"
#include "ze/tools/Listener.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <vector>

class QGestureEvent;

namespace ze::qt {

class GAction;
class GDock;
class GMainPanel;
class GMenu;
class GMenuBar;
class GPanel;
class GPanelLogView;
class GStatusBar;

enum class GUISCALE : unsigned { SMALLER = 0, BIGGER = 1 };

class GMainWindow : public BaseWindow, public StringSetter<BaseWindow> {
public:
    /// The theme of a window that follows the application.
    static constexpr unsigned int THEME_OF_APPLICATION = 3;

    /// Members only; setup() makes the widgets.
    explicit GMainWindow(QWidget* parent = nullptr, Qt::WindowFlags flags = {});
    ~GMainWindow() override;
    Q_DISABLE_COPY_MOVE(GMainWindow)

    // --- what a derived window may override ----------------------------------------------------

    /// Gives the window its identity and runs ini_standards(). A derived window with an identity of
    /// its own overrides this.
    virtual void setup();
    /// The identity's complete name, the object name before there is one.
    [[nodiscard]] virtual QString get_object_name() const;
    /// Stores geometry, state and font size, and writes the settings.
    virtual void save_state();
    virtual void restore_state();
    /// Opens the dialog "Log Options".
    virtual void on_log_options();
    virtual QString get_type_name();
    /// A row of buttons for the log panel, the first one with the icon and tip given.
    virtual void log_panel_control_icons(GPanel* parent, const QString& icon, const QString& tip);
    virtual void setup_base_hotkeys();
    virtual void on_new_window();
    virtual void on_toggle_fullscreen();
    virtual void on_close();
    virtual void on_open();
    /// Turns the log panel on or off.
    virtual void on_logger();
    virtual void on_help();
    virtual void on_select_all();
    [[nodiscard]] virtual QString to_string() const;
    /// Takes the log panels out of the log.
    virtual void cleanup();
    /// Builds the window's panels, with gen_main_panel() and gen_log_panel().
    virtual void ini() = 0;
    /// Start-up in its fixed order; post_ini() follows when the event loop turns.
    virtual void ini_standards();
    virtual void post_ini();
    virtual void on_menu_options();
    virtual void on_reset_config_and_quit();
    virtual void on_gesture_event(QGestureEvent* event);
    /// Hands the event to the main panel.
    virtual void do_layout_all(LayoutEvent& event);
    /// Called when the event loop turns after a change of the palette, with the window's theme.
    virtual void on_change_theme(unsigned int theme);
    virtual void adapt_icons_to_theme();
    virtual void adapt_log_view();
    virtual void adapt_themes();

    // --- listeners and hooks -------------------------------------------------------------------

    Listener<bool> activation_listener;  ///< the window became active or inactive
    Listener<NO_PAYLOAD> minimized_listener;
    Listener<NO_PAYLOAD> maximized_listener;
    Listener<NO_PAYLOAD> fullscreen_listener;
    Listener<NO_PAYLOAD> normal_state_listener;
    Listener<NO_PAYLOAD> first_resize_listener;  ///< once, after the first resize
    Listener<NO_PAYLOAD> close_listener;         ///< the very end of closeEvent
    Listener<bool> log_toggle_listener;          ///< the log panel was turned on or off
    Listener<unsigned int> theme_listener;       ///< the palette changed; the window's theme
    std::function<void()> close_hook;            ///< first in closeEvent; may be empty
    std::function<void()> post_ini_hook;         ///< called by post_ini(); may be empty

    // --- life ----------------------------------------------------------------------------------

    /// Gives the window an identity of class T, a WindowClazz, and reads the settings stored under
    /// it.
    template <typename T>
    void setup_node();

    /// Shows the window. A rectangle "x,y,width,height" under "__bounds" on the command line beats
    /// the stored geometry; one that leaves the title bar on no screen is moved onto one.
    void show();
    /// Writes the settings; with the flag the log panel's configuration goes in first.
    void sync_win_settings(bool withLog);
    void set_delete_on_close(bool on) { setAttribute(Qt::WA_DeleteOnClose, on); }
    [[nodiscard]] bool is_delete_on_close() const { return testAttribute(Qt::WA_DeleteOnClose); }

    // --- panels and widgets --------------------------------------------------------------------

    /// Makes the central panel. A second call leaves an error in the log and replaces it.
    GMainPanel* gen_main_panel(GLAYOUT kind);
    [[nodiscard]] GPanel* get_main_panel() const;
    /// Makes the log panel in a GPanel or a GSplitter; null for any other parent, with an error in
    /// the log. A second call returns the first panel.
    GPanelLogView* gen_log_panel(QWidget* parent);
    [[nodiscard]] GPanelLogView* get_panel_log_view() const;
    /// log_panel_control_icons() with texts instead of icons.
    void log_panel_control(GPanel* parent, const QString& text);
    [[nodiscard]] bool is_logger_visible() const;
    [[nodiscard]] bool is_logPanel_enabled() const;

    /// The first descendant of type T with that name; an empty name matches any.
    template <typename T>
    [[nodiscard]] T* find_widget(const QString& name) const;
    [[nodiscard]] std::vector<QWidget*> get_children(bool onlyVisible) const;
    [[nodiscard]] std::vector<QWidget*> get_all_widgets() const { return get_children(false); }

    /// An action of this window on a key; a key that another action of the window has is taken from
    /// it. Keys that cannot be parsed give an action without a key, with an error in the log.
    GAction* gen_action(const QString& keys);
    GAction* gen_action(const QKeySequence& keys);
    GMenuBar* gen_menu_bar();
    GStatusBar* gen_status_bar();
    /// A dock at the right side, whatever areas it may be moved to.
    GDock* gen_dock(const QString& name, const QString& title, Qt::DockWidgetAreas areas);

    [[nodiscard]] static GMainWindow* from_widget(const QWidget* widget);

    // --- theme and font ------------------------------------------------------------------------

    /// The window's theme; one that follows the application has the application's.
    [[nodiscard]] unsigned int get_theme() const noexcept;
    [[nodiscard]] QString get_theme_string() const;
    [[nodiscard]] bool is_theme_normal() const noexcept;
    [[nodiscard]] bool is_theme_dark() const noexcept;
    [[nodiscard]] bool is_theme_green() const noexcept;
    [[nodiscard]] static bool is_theme_normal(const QWidget* widget);
    [[nodiscard]] static bool is_theme_dark(const QWidget* widget);
    [[nodiscard]] static bool is_theme_green(const QWidget* widget);

    /// 0 normal, 1 dark, 2 green, 3 as the application; stored with the settings. Any other number
    /// leaves an error in the log and the palette as it is. The second argument is not read.
    void set_theme(unsigned int theme, unsigned int unused);
    /// What holds until the settings say something else; changes no widget.
    void set_theme_default(unsigned int theme) noexcept { themeCurrent = theme; }
    /// Normal, dark, green, normal.
    void on_rotate_themes();
    [[nodiscard]] bool has_its_own_palette() const { return testAttribute(Qt::WA_SetPalette); }
    /// Lets the window follow the application's palette again.
    void unset_palette();

    /// 8 to 20, points or pixels as the font counts; a size beyond is clamped with a warning.
    void set_font_size(int size);
    /// One point bigger or smaller; a font that counts in pixels stays.
    void gui_scale(GUISCALE direction);

protected:
    store::GNode settingsNode;  ///< this window's settings

    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct LogRowFaces;

    void take_identity(std::unique_ptr<BaseWindowClazz> made);
    void post(std::function<void()> call);
    static void post_settings_changed();
    void keep_reachable();
    void send_layout_event(int reason, int fontSize);
    void restore_theme();
    void restore_geometry();
    void restore_font();
    void notify_theme();
    void notify_window_state();
    void store_log_config();
    void gen_log_row(GPanel* parent, const LogRowFaces& faces);
    void gen_log_buttons(GPanel* row, const LogRowFaces& faces);
    void gen_menu_theme(GMenu* menu);
    void on_menu_log(bool on);
    void on_option_font_size(unsigned int size);
    void on_option_auto_scroll(bool on);
    void bind_key(GAction* action, void (GMainWindow::*operation)());
    void release_key(const QKeySequence& key);
    static void report_many_hits(const QString& name, std::size_t hits);

    store::GNode nodeSpare;          // no key lives here
    QPointer<GPanelLogView> panLog;  // goes with the central panel that holds it
    bool first_resize_done = false;
    unsigned int themeCurrent = 0;
    std::unique_ptr<BaseWindowClazz> identity;
    bool first_show_done = false;
};

template <typename T>
void GMainWindow::setup_node() {
    auto made = std::make_unique<T>();
    made->assign_id();
    take_identity(std::move(made));
}

template <typename T>
T* GMainWindow::find_widget(const QString& name) const {
    T* first = nullptr;
    std::size_t hits = 0;
    for (QWidget* widget : get_all_widgets()) {
        auto* candidate = dynamic_cast<T*>(widget);
        if (candidate == nullptr || !(name.isEmpty() || widget->objectName() == name)) {
            continue;
        }
        first = hits == 0 ? candidate : first;
        ++hits;
    }
    if (!name.isEmpty() && hits > 1) {
        report_many_hits(name, hits);
    }
    return first;
}

}  // namespace ze::qt
