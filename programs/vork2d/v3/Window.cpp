#include "Window.h"

#include "ze/qt/GMainPanel.h"
#include "ze/qt/event/mouse.h"
#include "ze/qt/inline/GGui_inline.h"

#include "PlayField.h"
#include "vork2d/early/controls.h"

namespace vork2d::v3 {

using ze::qt::GPanel;

Window::Window() = default;

Window::~Window() = default;

void Window::setup() {
    setup_node<ze::qt::WindowClazz<"WinChat2">>();
    ini_standards();
    setText(titleBase);
}

void Window::ini() {
    GPanel* const panMain = gen_main_panel(ze::qt::GLAYOUT::VERTICAL);
    setup_play_field(panMain);
    gen_log_panel(panMain);
    setup_pan_buttons(panMain);
}

void Window::setup_play_field(GPanel* panMain) {
    playField = new PlayField(early::FIELD_WIDTH, early::FIELD_HEIGHT);
    panMain->add_widget(ze::qt::set_growable(playField));
    playField->setMinimumHeight(early::FIELD_MIN_PIXELS);
    playField->mouse_press_listener += [this](QMouseEvent* event) {
        playField->on_mouse_press(event);
    };
    playField->mouse_move_listener += [this](QMouseEvent* event) {
        if (ze::qt::event::mouse::is_left(event)) {
            playField->on_mouse_drag(event);
        }
    };
}

void Window::setup_pan_buttons(GPanel* panMain) {
    GPanel* const row = panMain->gen_pan_horz(0);
    early::gen_switch(row, QStringLiteral("mouse"), playField->flagMouse,
                      [this](bool on) { playField->flagMouse = on; });
    early::gen_button(row, QStringLiteral("start"), [this] { playField->on_play(); });
    early::gen_button(row, QStringLiteral("test 2"), [this] { playField->on_play_symmetric(); });
    early::gen_button(row, QStringLiteral("stop"), [this] { playField->on_stop(); });
    early::gen_spin_fields(
        row, playField->timer.interval(), static_cast<int>(playField->tm_travel()),
        [this](int ms) { on_refresh_delay_set(ms); },
        [this](int ms) { on_time_devider_speed_set(ms); });
    row->gen_spacer_horz();
    row->set_growable_horizontal();
}

void Window::on_refresh_delay_set(int ms) {
    playField->timer.setInterval(ms);
}

void Window::on_time_devider_speed_set(int ms) {
    playField->set_tm_travel(static_cast<unsigned long long>(ms));
}

}  // namespace vork2d::v3
