// How the paddles move. The mouse only makes a message, and the paddle moves when that message
// comes back through on_play_message, on both clients alike. A key is carried as it is, and each
// client makes the same step itself.
#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/net/IConnectionState.h"
#include "ze/net/PlayMessage.h"
#include "ze/qt/event/key.h"

#include "PlayField.h"

#include <QJsonObject>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>

namespace vork2d::v5 {

using ze::math::ORIENT2D::is_left;
using ze::net::GPlay;
using ze::net::LOCAL;
using ze::net::PlayMessage;

namespace {

const QKeySequence KEY_UP{Qt::Key_Up};
const QKeySequence KEY_DOWN{Qt::Key_Down};
const QKeySequence KEY_CTRL_UP{Qt::CTRL | Qt::Key_Up};
const QKeySequence KEY_CTRL_DOWN{Qt::CTRL | Qt::Key_Down};

}  // namespace

void PlayField::on_mouse_press(const QMouseEvent* ev) {
    on_mouse(ev);
}

void PlayField::on_mouse_drag(const QMouseEvent* ev) {
    on_mouse(ev);
}

void PlayField::on_mouse(const QMouseEvent* ev) {
    const glm::vec2 pos = pos_from_mouse_event(ev);
    if (is_state_CONNECTED1()) {
        on_move_paddle(pos, false);
    } else {
        on_move_paddle_offline(pos);
    }
}

void PlayField::on_move_paddle(const glm::vec2& pos, bool flagOther) {
    fire_set_pos(is_left_side() != flagOther ? paddleLeft : paddleRight, pos.y);
}

void PlayField::on_move_paddle_offline(const glm::vec2& pos) {
    fire_set_pos(0 >= ball.dir.x ? paddleLeft : paddleRight, pos.y);
}

void PlayField::fire_set_pos(const Paddle& paddle, float y) {
    const glm::vec2 posNew{paddle.pos.x, inside_field(paddle, y)};
    GPlay play = GPlay::from_args(QStringLiteral("?"), QStringLiteral("#"), QStringLiteral("vork"));
    {
        QJsonObject object;
        PlayMessage msg(object, play.payload);
        msg.set_cmd(QStringLiteral("setPos"));
        msg.set_vector2(QStringLiteral("pos"), posNew);
        msg.set_string(QStringLiteral("object"), QStringLiteral("paddle"));
        msg.set_string(QStringLiteral("side"),
                       &paddle == &paddleLeft ? QStringLiteral("LEFT") : QStringLiteral("RIGHT"));
    }
    listenerPaddle.fire_event(play);
}

void PlayField::on_set_pos(const PlayMessage& msg) {
    if (!msg.is_cmd_setPos()) {
        return;
    }
    const glm::vec2 pos = msg.get_vector2(QStringLiteral("pos"), {0, 0});
    const bool left = msg.is_string(QStringLiteral("side"), QStringLiteral("LEFT"));
    // Not kept inside the field: its sender has done that.
    (left ? paddleLeft : paddleRight).pos.y = pos.y;
    update();
}

Paddle& PlayField::paddle_of(ze::net::CONTROL_OWNER owner) noexcept {
    return (owner == LOCAL) == is_left_side() ? paddleLeft : paddleRight;
}

Paddle& PlayField::other_paddle(const Paddle& paddle) noexcept {
    return &paddle == &paddleLeft ? paddleRight : paddleLeft;
}

void PlayField::step_paddle(Paddle& paddle, float step) {
    paddle.pos.y = inside_field(paddle, paddle.pos.y + step);
    update();
}

void PlayField::on_key_sequence(const QKeySequence& seq, bool pressed,
                                ze::net::CONTROL_OWNER owner) {
    ze::pp_format(ze::log::DEBUG, 0, "PlayField::on_key_sequence, <<<$>>>, $, $",
                  seq.toString(QKeySequence::PortableText), pressed ? "PRESSED" : "RELEASED",
                  owner == LOCAL ? "LOCAL" : "REMOTE");
    Paddle& paddle = paddle_of(owner);
    if (!connection.is_connected()) {
        // The second player of one keyboard.
        if (seq == KEY_CTRL_UP) {
            ze::pp("ctrl+up, LOCAL ONLY !");
            step_paddle(other_paddle(paddle), rules::PADDLE_STEP);
        } else if (seq == KEY_CTRL_DOWN) {
            ze::pp("ctrl+down, LOCAL ONLY !");
            step_paddle(other_paddle(paddle), -rules::PADDLE_STEP);
        }
    }
    if (seq == KEY_UP) {
        step_paddle(paddle, rules::PADDLE_STEP);
    } else if (seq == KEY_DOWN) {
        step_paddle(paddle, -rules::PADDLE_STEP);
    }
}

void PlayField::on_key_press(const QKeyEvent* ev) {
    if (ev == nullptr) {
        ze::nullPointerHandling("programs/vork2d/v5/PlayField_input", __LINE__,
                                QStringLiteral("ev == NULL"));
    }
    ze::pp_format(ze::log::DEBUG, 0, "PlayField::on_key_press, ev:$",
                  ze::qt::event::key::to_string(ev));
    const bool right = is_left_side() == ze::qt::event::key::is_mod_ctrl(ev);
    Paddle& paddle = right ? paddleRight : paddleLeft;
    if (ev->key() == Qt::Key_Up) {
        step_paddle(paddle, rules::PADDLE_STEP);
    } else if (ev->key() == Qt::Key_Down) {
        step_paddle(paddle, -rules::PADDLE_STEP);
    }
}

void PlayField::move_paddle(ze::net::CONTROL_OWNER owner, ze::math::ORIENT2D::Type orient,
                            bool up) {
    const bool right = (owner == LOCAL) != is_left(orient);
    step_paddle(right ? paddleRight : paddleLeft, up ? rules::PADDLE_STEP : -rules::PADDLE_STEP);
}

}  // namespace vork2d::v5
