// A main window's theme and font.
#include "ze/log/pp.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/components/BasicSlider.h"
#include "ze/qt/components/GListView.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/qt/themes.h"
#include "ze/tools/os.h"

#include <QFont>
#include <QPalette>

#include <algorithm>

namespace ze::qt {

namespace {

const QString KEY_THEME = QStringLiteral("theme");  // in the settings

constexpr int FONT_SIZE_MIN = 8;
constexpr int FONT_SIZE_MAX = 20;

/// Gives the font the size in the unit in which it counts; false if it has that size already.
bool resize_font(QFont& font, int size) {
    if (font.pixelSize() < 1) {
        if (font.pointSize() == size) {
            return false;
        }
        font.setPointSize(size);
        return true;
    }
    if (font.pointSize() > 0 || font.pixelSize() == size) {
        return false;
    }
    font.setPixelSize(size);
    return true;
}

}  // namespace

unsigned int GMainWindow::get_theme() const noexcept {
    return themeCurrent == THEME_OF_APPLICATION ? themes::get_theme_type() : themeCurrent;
}

QString GMainWindow::get_theme_string() const {
    return themes::theme_to_string(get_theme());
}

bool GMainWindow::is_theme_normal() const noexcept {
    return get_theme() == themes::NORMAL;
}

bool GMainWindow::is_theme_dark() const noexcept {
    return get_theme() == themes::DARK;
}

bool GMainWindow::is_theme_green() const noexcept {
    return get_theme() == themes::GREEN;
}

bool GMainWindow::is_theme_normal(const QWidget* widget) {
    const GMainWindow* window = from_widget(widget);
    return window != nullptr && window->is_theme_normal();
}

bool GMainWindow::is_theme_dark(const QWidget* widget) {
    const GMainWindow* window = from_widget(widget);
    return window != nullptr && window->is_theme_dark();
}

bool GMainWindow::is_theme_green(const QWidget* widget) {
    const GMainWindow* window = from_widget(widget);
    return window != nullptr && window->is_theme_green();
}

void GMainWindow::unset_palette() {
    setPalette(QPalette());  // Qt clears WA_SetPalette and hands the application's palette down
}

void GMainWindow::restore_theme() {
    themeCurrent = settingsNode.get<unsigned int>(KEY_THEME, themeCurrent);
    if (themeCurrent == THEME_OF_APPLICATION) {
        unset_palette();
    } else {
        setPalette(themes::get_palette(themeCurrent));
    }
}

void GMainWindow::set_theme(unsigned int theme, unsigned int) {
    if (theme <= themes::GREEN) {
        setPalette(themes::get_palette(theme));
        themeCurrent = theme;
    } else if (theme == THEME_OF_APPLICATION) {
        unset_palette();
        themeCurrent = theme;
    } else {
        ze::pp_error("GMainWindow::set_theme, theme:$ is unknow", theme);
    }
    settingsNode.set(KEY_THEME, themeCurrent);
    adapt_icons_to_theme();
    adapt_log_view();
    adapt_themes();
    GApp::sync_app_settings(true);
    post_settings_changed();
}

void GMainWindow::post_settings_changed() {
    // The window may be gone by then; its change concerns the application all the same.
    invoke_later([] {
        if (gApp != nullptr) {
            gApp->settings_changed_listener.fire_event({});
        }
    });
}

void GMainWindow::on_rotate_themes() {
    ze::pp("GMainWindow::on_rotate_themes");
    const unsigned int theme = get_theme();
    set_theme(theme < themes::GREEN ? theme + 1 : themes::NORMAL, 0);
}

void GMainWindow::on_change_theme(unsigned int) {}

void GMainWindow::adapt_icons_to_theme() {
    int icons = 0;
    for (QWidget* widget : get_all_widgets()) {
        icons += themes::adapt_icon(widget, get_theme_string()) ? 1 : 0;
    }
    ze::pp_trace("GMainWindow::~adapt_icons_to_theme, $ icons", icons);
}

void GMainWindow::adapt_log_view() {
    if (GPanelLogView* panel = get_panel_log_view()) {
        ze::pp_trace("GMainWindow::adapt_log_view *");
        panel->adapt_to_settings(get_theme());
    }
}

void GMainWindow::adapt_themes() {
    for (QWidget* widget : get_all_widgets()) {
        if (auto* slider = dynamic_cast<BasicSlider*>(widget)) {
            slider->adapt_style(get_theme());
        }
        auto* list = ze::os::is_mobile() ? dynamic_cast<GListView*>(widget) : nullptr;
        if (list != nullptr) {
            list->adapt_style(get_theme());
        }
    }
}

void GMainWindow::set_font_size(int size) {
    if (size < FONT_SIZE_MIN) {
        ze::pp_warn("GMainWindow::set_font_size, cannot be smaller");
    } else if (size > FONT_SIZE_MAX) {
        ze::pp_warn("GMainWindow::set_font_size, cannot be BIGGER");
    }
    const int clamped = std::clamp(size, FONT_SIZE_MIN, FONT_SIZE_MAX);
    QFont changed = font();
    if (resize_font(changed, clamped)) {
        setFont(changed);
        send_layout_event(LayoutEvent::FONT_CHANGE, clamped);
    }
}

void GMainWindow::gui_scale(GUISCALE direction) {
    const bool bigger = direction == GUISCALE::BIGGER;
    ze::pp("GMainWindow::gui_scale:$", bigger ? "BIGGER" : "SMALLER");
    const int size = font().pointSize();
    if (size > 0) {
        set_font_size(bigger ? size + 1 : size - 1);
    }
}

}  // namespace ze::qt
