// The pop-up menu behind the "Options" icon, built afresh at each call: its check marks show the
// state at that time.

#include "ze/log/pp.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GPanel.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/components/GAction.h"
#include "ze/qt/components/GMenu.h"
#include "ze/tools/os.h"

#include "PlayField.h"
#include "Window.h"

namespace vork2d::v5 {

using ze::qt::GAction;
using ze::qt::GMenu;

namespace {

constexpr unsigned MENU_WIDTH = 150;
constexpr unsigned ACTION_DELAY_MS = 200;
constexpr int SANDBOX_OFFSET =
    -150;  // pixels upward, where the pointer stands at the screen's lower edge
constexpr unsigned THEME_FONT_SIZE = 14;

constexpr int TRAVEL_TIMES_MS[] = {100,  200,  300,  400,  500,  700,  1000, 1200,
                                   1400, 1600, 1800, 2000, 3000, 4000, 5000, 10000};
constexpr int FONT_SIZES[] = {10, 11, 12, 13, 14, 16, 18, 20};
constexpr int REFRESH_RATES_MS[] = {10, 16, 20, 25, 30, 33, 40, 50, 80, 100, 150, 200, 250, 300};

GAction* gen_entry(GMenu* menu, const QString& text, const std::function<void()>& handler) {
    GAction* const action = menu->gen_action(text, false, false, true, ACTION_DELAY_MS);
    action->triggered_signal += handler;
    return action;
}

GAction* gen_checked_entry(GMenu* menu, const QString& text, bool checked,
                           const std::function<void(bool)>& handler) {
    GAction* const action = menu->gen_action(text, true, checked, true, ACTION_DELAY_MS);
    action->triggered_listener += handler;
    return action;
}

/// One checkable entry per value, its text the number; nothing is checked when no value is the
/// current one.
template <typename Values>
void gen_value_entries(GMenu* menu, const Values& values, int current,
                       const std::function<void(int)>& handler) {
    for (const int value : values) {
        gen_checked_entry(menu, QString::number(value), value == current,
                          [handler, value](bool) { handler(value); });
    }
}

}  // namespace

void Window::on_menu_options() {
    GMenu* const menu = GMenu::gen_menu(this, MENU_WIDTH);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    gen_menu_side(menu);
    gen_menu_switches(menu);
    gen_menu_travel_time(menu);
    menu->gen_separator();
    gen_menu_theme(menu);
    menu->gen_separator();
    gen_menu_font_size(menu);
    menu->gen_separator();
    gen_menu_system(menu);
    menu->gen_separator();
    gen_menu_refresh_rate(menu);
    menu->show_at_mouse_pos(ze::os::is_sandboxed() ? SANDBOX_OFFSET : 0);
}

void Window::gen_menu_side(GMenu* menu) {
    if (playField->is_state_offline()) {
        menu->gen_label(QStringLiteral("OFFLINE MODE"));
    }
    if (playField->is_state_CONNECTED1()) {
        gen_entry(menu,
                  playField->is_left_side() ? QStringLiteral("Switch side LEFT => RIGHT")
                                            : QStringLiteral("Switch side RIGHT => LEFT"),
                  [this] { on_switch_side(); });
        menu->gen_separator();
    }
}

void Window::gen_menu_switches(GMenu* menu) {
    gen_checked_entry(menu, QStringLiteral("Sound"), playField->flagSound, [this](bool on) {
        settingsNode.set_flag(QStringLiteral("sound"), on);
        playField->flagSound = on;
    });
    const bool chatPanel = settingsNode.is_flag(QStringLiteral("chatPanel"), false);
    gen_checked_entry(menu, QStringLiteral("Chat Panel"), chatPanel, [this](bool on) {
        settingsNode.set_flag(QStringLiteral("chatPanel"), on);
        panChat->set_visible(on);
        scroll_chat();
    });
    const auto* const logView = get_panel_log_view();
    ze::pp_format(ze::log::DEBUG, 0, "Window::on_menu_options, flagGui:$, cfg: ($)",
                  logView->is_enabled(), logView->config);
}

void Window::gen_menu_travel_time(GMenu* menu) {
    GMenu* const sub = menu->gen_sub_menu(QStringLiteral("Travel Time (speed)"), MENU_WIDTH);
    gen_value_entries(sub, TRAVEL_TIMES_MS, static_cast<int>(playField->tm_travel()),
                      [this](int ms) { set_travel_time(ms); });
}

void Window::gen_menu_theme(GMenu* menu) {
    GMenu* const sub = menu->gen_sub_menu(QStringLiteral("Theme"), MENU_WIDTH);
    gen_checked_entry(sub, QStringLiteral("Normal"), is_theme_normal(),
                      [this](bool) { set_theme(0, THEME_FONT_SIZE); });
    gen_checked_entry(sub, QStringLiteral("Dark"), is_theme_dark(),
                      [this](bool) { set_theme(1, THEME_FONT_SIZE); });
    gen_checked_entry(sub, QStringLiteral("Green"), is_theme_green(),
                      [this](bool) { set_theme(2, THEME_FONT_SIZE); });
}

void Window::gen_menu_font_size(GMenu* menu) {
    GMenu* const sub = menu->gen_sub_menu(QStringLiteral("Font-Size"), MENU_WIDTH);
    gen_value_entries(sub, FONT_SIZES, playField->fontSize, [this](int size) {
        playField->fontSize = size;
        settingsNode.set(QStringLiteral("fontSize"), static_cast<unsigned>(size));
        playField->update();
    });
}

void Window::gen_menu_system(GMenu* menu) {
    GMenu* const sub = menu->gen_sub_menu(QStringLiteral("System"), MENU_WIDTH);
    const bool enabled = is_logPanel_enabled();
    gen_checked_entry(sub, QStringLiteral("Logging"), enabled,
                      [this](bool on) { on_menu_log(on); });
    gen_entry(sub, QStringLiteral("Log Options"), [this] {
        on_log_options();
    })->setEnabled(enabled);
}

void Window::on_menu_log(bool flag) {
    ze::pp("Window::on_menu_log, flag:$", flag);
    auto* const logView = get_panel_log_view();
    logView->set_enabled(flag);
    settingsNode.set_pod(QStringLiteral("log"), logView->config);
    log_toggle_listener.fire_event(flag);
}

void Window::gen_menu_refresh_rate(GMenu* menu) {
    GMenu* const sub = menu->gen_sub_menu(QStringLiteral("Refresh Rate"), MENU_WIDTH);
    gen_value_entries(sub, REFRESH_RATES_MS, playField->timer.interval(), [this](int ms) {
        ze::pp("Window::on_delay_refresh_set, val:$", ms);
        playField->timer.setInterval(ms);
    });
}

}  // namespace vork2d::v5
