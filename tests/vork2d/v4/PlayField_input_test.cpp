#include "FieldV4.h"

#include <QKeySequence>
#include <QMouseEvent>

#include <optional>

namespace {

using ze::net::LOCAL;
using ze::net::REMOTE;
namespace ORIENT2D = ze::math::ORIENT2D;

class FieldV4Input : public test::FieldV4 {
protected:
    FieldV4Input() {
        field.listenerPaddle += [this](const ze::net::GPlay& play) {
            sent = play.payload.toObject();
        };
    }

    std::optional<QJsonObject> sent;
};

QJsonObject set_pos(const char* side, const char* pos) {
    return {{QStringLiteral("cmd"), QStringLiteral("setPos")},
            {QStringLiteral("object"), QStringLiteral("paddle")},
            {QStringLiteral("pos"), QLatin1String(pos)},
            {QStringLiteral("side"), QLatin1String(side)}};
}

TEST_F(FieldV4Input, a_move_only_makes_a_message) {
    field.on_move_paddle({0, 50});
    EXPECT_EQ(sent, set_pos("LEFT", "-380,50"));
    EXPECT_EQ(field.paddleLeft.pos.y, 0.0f);
}

TEST_F(FieldV4Input, connected_the_mouse_holds_the_own_paddle_inside_the_field) {
    field.set_state_CONNECTED1(true);
    field.side = ORIENT2D::RIGHT;
    field.resize(800, 400);
    const QMouseEvent event(QEvent::MouseButtonPress, QPointF(0, 0), QPointF(0, 0), Qt::LeftButton,
                            Qt::LeftButton, Qt::NoModifier);
    field.on_mouse_press(&event);
    EXPECT_EQ(sent, set_pos("RIGHT", "380,160"));
}

TEST_F(FieldV4Input, offline_the_mouse_holds_the_paddle_that_the_ball_flies_to) {
    field.ball.dir = {1, 0};
    field.on_move_paddle_offline({0, -1000});
    EXPECT_EQ(sent, set_pos("RIGHT", "380,-160"));
    field.ball.dir = {-1, 0};
    field.on_move_paddle_offline({0, 10});
    EXPECT_EQ(sent, set_pos("LEFT", "-380,10"));
}

TEST_F(FieldV4Input, a_set_pos_moves_its_paddle_in_y_alone) {
    field.on_play_message(test::play_message(set_pos("RIGHT", "7,33")), REMOTE);
    EXPECT_EQ(field.paddleRight.pos, glm::vec2(380, 33));
    field.on_play_message(test::play_message(set_pos("LEFT", "7,-33")), LOCAL);
    EXPECT_EQ(field.paddleLeft.pos, glm::vec2(-380, -33));
}

TEST_F(FieldV4Input, a_key_steps_the_paddle_of_the_one_who_pressed_it) {
    struct Row {
        ze::net::CONTROL_OWNER owner;
        ORIENT2D::Type side;
        QKeySequence keys;
        bool connected;
        float left, right;
    };
    const QKeySequence up(Qt::Key_Up);
    const QKeySequence down(Qt::Key_Down);
    const QKeySequence ctrlUp(Qt::CTRL | Qt::Key_Up);
    const QKeySequence ctrlDown(Qt::CTRL | Qt::Key_Down);
    for (const Row& row : {Row{LOCAL, ORIENT2D::LEFT, up, false, 25, 0},
                           Row{LOCAL, ORIENT2D::RIGHT, down, false, 0, -25},
                           Row{REMOTE, ORIENT2D::LEFT, up, true, 0, 25},
                           Row{REMOTE, ORIENT2D::RIGHT, down, true, -25, 0},
                           Row{LOCAL, ORIENT2D::LEFT, ctrlUp, false, 0, 25},
                           Row{LOCAL, ORIENT2D::RIGHT, ctrlDown, false, -25, 0},
                           Row{LOCAL, ORIENT2D::LEFT, ctrlUp, true, 0, 0},
                           Row{LOCAL, ORIENT2D::LEFT, QKeySequence(Qt::Key_A), false, 0, 0}}) {
        field.paddleLeft.pos.y = 0;
        field.paddleRight.pos.y = 0;
        field.side = row.side;
        connection.flagConnected = row.connected;
        field.on_key_sequence(row.keys, true, row.owner);
        EXPECT_EQ(field.paddleLeft.pos.y, row.left) << row.keys.toString().toStdString();
        EXPECT_EQ(field.paddleRight.pos.y, row.right) << row.keys.toString().toStdString();
    }
}

TEST_F(FieldV4Input, a_paddle_at_the_top_stays_there) {
    field.paddleLeft.pos.y = 150;
    field.on_key_sequence(QKeySequence(Qt::Key_Up), true, LOCAL);
    field.on_key_sequence(QKeySequence(Qt::Key_Up), true, LOCAL);
    EXPECT_EQ(field.paddleLeft.pos.y, 160.0f);
}

}  // namespace
