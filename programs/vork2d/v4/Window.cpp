#include "Window.h"

#include "ze/log/pp.h"
#include "ze/net/GPlay.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GMainPanel.h"
#include "ze/qt/components/GAction.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/event/mouse.h"
#include "ze/qt/inline/GGui_inline.h"

#include "PLAY_STATE.h"
#include "PlayField.h"
#include "vork2d/early/controls.h"
#include "vork2d/servers.h"

#include <QKeyEvent>
#include <QSpinBox>

namespace vork2d::v4 {

using ze::net::GPlay;
using ze::qt::GPanel;
namespace ORIENT2D = ze::math::ORIENT2D;

Window::Window()
    : user(ze::qt::GApp::argv.get<QString>(QStringLiteral("user"), QStringLiteral("PGROUP:Ebbe"))),
      password(ze::qt::GApp::argv.get<QString>(QStringLiteral("pass"), QString())),
      host(ze::qt::GApp::argv.get<QString>(QStringLiteral("host"), servers::default_name())),
      urlDevelopment(servers::development_url().toString()),
      urlServer(servers::default_url().toString()) {}

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
    attach_field();
    attach_socket();
}

void Window::setup_play_field(GPanel* panMain) {
    playField = new PlayField(early::FIELD_WIDTH, early::FIELD_HEIGHT, webSocket);
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
    early::gen_button(row, QStringLiteral("swap"), [this] { on_switch_side(); });
    buttonStart = early::gen_button(row, QStringLiteral("start"), [this] { on_start_stop(); });
    buttonConnect = early::gen_button(row, QStringLiteral("offline"), [this] { on_connect(); });
    early::gen_button(row, QStringLiteral("no focus"), [this] { on_no_focus(); });
    early::gen_switch(row, QStringLiteral("sound"), playField->flagSound,
                      [this](bool on) { playField->flagSound = on; });
    spinSpeed = early::gen_spin_fields(
        row, playField->timer.interval(), static_cast<int>(playField->tm_travel()),
        [this](int ms) { on_refresh_delay_set(ms); },
        [this](int ms) { on_time_devider_speed_set(ms); });
    row->gen_spacer_horz();
    row->set_growable_horizontal();
}

void Window::attach_field() {
    playField->listenerOrient += [this](const ORIENT2D::Type& side) {
        on_field_orient(side);
    };
    playField->listenerBallExit += [this](const ORIENT2D::Type& side) {
        on_field_ball_exit(side);
    };
    playField->listenerOutOfField += [this](const ORIENT2D::Type& side) {
        on_out_of_field(side);
    };
    playField->listenerStart += [this](const ze::net::CONTROL_OWNER&) {
        buttonStart->setText(QStringLiteral("stop"));
    };
    playField->listenerStop += [this](const ze::net::CONTROL_OWNER&) {
        buttonStart->setText(QStringLiteral("start"));
    };
    playField->listenerPaddle += [this](const GPlay& setPos) {
        on_field_paddle(setPos);
    };
    playField->listenerTravel += [this](const int& ms) {
        on_field_travel(ms);
    };
    playField->listenerState += [this] {
        on_play_state_changed();
    };
}

void Window::setup_base_hotkeys() {
    GMainWindow::setup_base_hotkeys();
    gen_action(QStringLiteral("Space"))->triggered_signal += [this] {
        on_start_stop();
    };
    bind_arrow(QStringLiteral("Up"), Qt::Key_Up, Qt::NoModifier);
    bind_arrow(QStringLiteral("Down"), Qt::Key_Down, Qt::NoModifier);
    bind_arrow(QStringLiteral("Ctrl+Up"), Qt::Key_Up, Qt::ControlModifier);
    bind_arrow(QStringLiteral("Ctrl+Down"), Qt::Key_Down, Qt::ControlModifier);
}

void Window::bind_arrow(const QString& keys, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    gen_action(keys)->triggered_signal += [this, key, modifiers] {
        send_key_event(QKeyEvent(QEvent::KeyPress, key, modifiers));
    };
}

// --- field events

void Window::on_field_orient(ORIENT2D::Type side) {
    if (playField->is_state_RUN()) {
        ze::pp_error("SHOULD NEVER SWAP DURING RUN!");
    }
    me.orient = side;
    opponent.orient = ORIENT2D::get_opposite(side);
    ze::pp_format(ze::log::INFO, 0, "orient changed, me: {$}, opponent{$}", me, opponent);
    update_player_info();
}

void Window::on_field_ball_exit(ORIENT2D::Type side) {
    ze::pp_warn("Window::ini, * ball out of field:$", ORIENT2D::to_string(side));
    GPlay play = make_play();
    play.set_ball_out_of_field(side);
    play_local(play);
    send_if_connected(play);
}

void Window::on_field_paddle(const GPlay& setPos) {
    GPlay play = setPos;
    ze::pp_trace("paddle pos:$", play.to_string());
    play.from = user;
    play_local(play);
    send_if_connected(play);
}

// --- play

GPlay Window::make_play() const {
    return GPlay::from_args(user, QStringLiteral("#"), QStringLiteral("vork"));
}

void Window::play_local(const GPlay& play) {
    playField->on_play_message(play, ze::net::LOCAL);
}

void Window::send_if_connected(const ze::net::GAbstractMessage& message) {
    if (webSocket.is_connected()) {
        message.send(webSocket);
    }
}

void Window::on_start_stop() {
    ze::pp("Window::on_start_stop");
    if (playField->is_state_CONNECTED1() && !playField->is_state_CONNECTED2()) {
        return;
    }
    GPlay play = make_play();
    if (playField->is_state_RUN()) {
        play.set_stop();
        send_if_connected(play);  // a stop goes out before and after the local handling
    } else {
        play.set_start(playField->side, playField->tm_travel());
    }
    play_local(play);
    send_if_connected(play);
}

void Window::on_out_of_field(ORIENT2D::Type side) {
    ze::pp_warn("*CONFIRMED*. ball out of field:$", ORIENT2D::to_string(side));
    playField->set_state_RUN(false);
    buttonStart->setText(QStringLiteral("start"));
    if (side == playField->side) {
        ze::pp_info("point for opponent");
        opponent.countPoints += 1;
    } else {
        ze::pp_info("point for me");
        me.countPoints += 1;
        GPlay play = make_play();
        play.to = QStringLiteral("+");
        play.set_points(static_cast<int>(me.countPoints), static_cast<int>(opponent.countPoints));
        send_if_connected(play);
    }
    update_player_info();
}

void Window::on_play_state_changed() {
    ze::pp_info("STATE CHANGED, states {$}", PLAY_STATE::to_string(playField->state));
    buttonStart->setEnabled(playField->is_state_offline() || playField->is_state_2_players());
    buttonConnect->setText(playField->is_state_offline() ? QStringLiteral("offline")
                                                         : QStringLiteral("online"));
    if (playField->is_state_CONNECTED1() && !playField->is_state_CONNECTED2()) {
        me.countPoints = 0;
        opponent.countPoints = 0;
        opponent.name.clear();
        update_player_info();
    }
}

void Window::on_switch_side() {
    ze::pp("Window::on_switch_side");
    if (playField->is_state_RUN()) {
        return;
    }
    playField->side = ORIENT2D::get_opposite(playField->side);
    playField->listenerOrient.fire_event(playField->side);
    GPlay play = make_play();
    play.set_orient(playField->side);
    send_if_connected(play);
}

void Window::send_key_event(const QKeyEvent& event) {
    GPlay play = make_play();
    play.set_key_event(&event);
    play_local(play);
    send_if_connected(play);
}

void Window::on_no_focus() {
    if (QWidget* const focused = focusWidget()) {
        focused->clearFocus();
    }
}

void Window::on_refresh_delay_set(int ms) {
    playField->timer.setInterval(ms);
}

void Window::on_time_devider_speed_set(int ms) {
    GPlay play = make_play();
    play.set_travel(static_cast<unsigned long long>(ms));
    play_local(play);
    send_if_connected(play);
}

void Window::on_field_travel(int ms) {
    const QSignalBlocker blocker(spinSpeed);  // the number follows the message, and makes no other
    spinSpeed->setValue(ms);
}

void Window::update_player_info() {
    const bool left = ORIENT2D::is_left(me.orient);
    playField->textLeft = QString::number((left ? me : opponent).countPoints);
    playField->textRight = QString::number((left ? opponent : me).countPoints);
    playField->update();
}

}  // namespace vork2d::v4
