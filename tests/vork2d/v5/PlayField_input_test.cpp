// Mouse and keys: what moves which paddle, on which client.
#include "ze/net/PlayMessage.h"

#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PLAY_STATE.h"

#include <QJsonDocument>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>

#include <string>
#include <vector>

#include <unistd.h>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
namespace PLAY_STATE = vork2d::v5::PLAY_STATE;
using ze::net::CONTROL_OWNER;
using ze::net::LOCAL;
using ze::net::REMOTE;

const QKeySequence UP{Qt::Key_Up};
const QKeySequence DOWN{Qt::Key_Down};
const QKeySequence CTRL_UP{Qt::CTRL | Qt::Key_Up};
const QKeySequence CTRL_DOWN{Qt::CTRL | Qt::Key_Down};

class PlayFieldInput : public test::FieldTest {
protected:
    std::vector<std::string> sent;

    PlayFieldInput() {
        field.listenerPaddle += [this](const ze::net::GPlay& play) {
            sent.push_back(QJsonDocument(play.payload.toObject())
                               .toJson(QJsonDocument::Compact)
                               .toStdString());
            EXPECT_EQ(play.from, QStringLiteral("?"));
            EXPECT_EQ(play.to, QStringLiteral("#"));
            EXPECT_EQ(play.game, QStringLiteral("vork"));
        };
        field.resize(800, 400);
    }

    /// A press where the field has these units: the widget is as large as the field.
    void press_at(float x, float y, Qt::KeyboardModifiers mods = Qt::NoModifier) {
        const QPointF pos(x + 400, 200 - y);
        const QMouseEvent ev(QEvent::MouseButtonPress, pos, pos, Qt::LeftButton, Qt::LeftButton,
                             mods);
        field.on_mouse_press(&ev);
    }

    void drag_to(float x, float y) {
        const QPointF pos(x + 400, 200 - y);
        const QMouseEvent ev(QEvent::MouseMove, pos, pos, Qt::NoButton, Qt::LeftButton,
                             Qt::NoModifier);
        field.on_mouse_drag(&ev);
    }

    static std::string set_pos(const char* pos, const char* side) {
        return std::string(R"({"cmd":"setPos","object":"paddle","pos":")") + pos + R"(","side":")" +
               side + R"("})";
    }

    [[nodiscard]] glm::vec2 heights() const {
        return {field.paddleLeft.pos.y, field.paddleRight.pos.y};
    }
};

// Mouse

TEST_F(PlayFieldInput, a_press_makes_a_message_and_moves_nothing) {
    field.ball.dir = {-1, 0};
    press_at(100, 50);
    EXPECT_EQ(sent, std::vector<std::string>{set_pos("-380,50", "LEFT")});
    EXPECT_EQ(heights(), glm::vec2(0, 0));
}

TEST_F(PlayFieldInput, a_drag_does_as_a_press) {
    field.ball.dir = {-1, 0};
    drag_to(100, -30);
    EXPECT_EQ(sent, std::vector<std::string>{set_pos("-380,-30", "LEFT")});
}

struct MouseRow {
    std::string name;
    bool connected;
    ORIENT2D::Type side;
    glm::vec2 dir;
    Qt::KeyboardModifier mod;
    std::string expected;
};

TEST_F(PlayFieldInput, offline_the_ball_chooses_the_paddle_and_connected_the_side) {
    const MouseRow rows[] = {
        {"offline, to the right", false, ORIENT2D::LEFT, {1, 0}, Qt::NoModifier, "RIGHT"},
        {"offline, to the right, ctrl",
         false,
         ORIENT2D::LEFT,
         {1, 0},
         Qt::ControlModifier,
         "RIGHT"},
        {"offline, to the left", false, ORIENT2D::RIGHT, {-1, 0}, Qt::NoModifier, "LEFT"},
        {"offline, upright", false, ORIENT2D::RIGHT, {0, 1}, Qt::NoModifier, "LEFT"},
        {"connected on the left", true, ORIENT2D::LEFT, {1, 0}, Qt::NoModifier, "LEFT"},
        {"connected on the right", true, ORIENT2D::RIGHT, {-1, 0}, Qt::NoModifier, "RIGHT"},
        {"connected, ctrl", true, ORIENT2D::RIGHT, {-1, 0}, Qt::ControlModifier, "RIGHT"},
    };
    for (const MouseRow& row : rows) {
        field.state = row.connected ? PLAY_STATE::CONNECTED1 : 0U;
        field.side = row.side;
        field.ball.dir = row.dir;
        sent.clear();
        press_at(0, 10, row.mod);
        const char* const pos = row.expected == "LEFT" ? "-380,10" : "380,10";
        EXPECT_EQ(sent, std::vector<std::string>{set_pos(pos, row.expected.c_str())}) << row.name;
    }
}

TEST_F(PlayFieldInput, a_drag_beyond_the_field_rests_the_paddle_on_its_edge) {
    field.listenerPaddle += [this](const ze::net::GPlay& play) {
        field.on_play_message(play, LOCAL);
    };
    field.ball.dir = {-1, 0};
    drag_to(0, 250);
    EXPECT_EQ(field.paddleLeft.rect().top(), field.top());
    drag_to(0, -250);
    EXPECT_EQ(field.paddleLeft.rect().bottom(), field.bottom());
    EXPECT_EQ(sent, (std::vector<std::string>{set_pos("-380,160", "LEFT"),
                                              set_pos("-380,-160", "LEFT")}));
}

TEST_F(PlayFieldInput, on_move_paddle_means_the_other_paddle_on_request) {
    field.on_move_paddle({0, 5}, true);
    field.side = ORIENT2D::RIGHT;
    field.on_move_paddle({0, 6}, true);
    EXPECT_EQ(sent,
              (std::vector<std::string>{set_pos("380,5", "RIGHT"), set_pos("-380,6", "LEFT")}));
}

TEST_F(PlayFieldInput, a_field_lower_than_its_paddle_holds_it_at_the_lower_bound) {
    test::ConnectionStub other;
    vork2d::v5::PlayField low(800, 60, other);
    low.timer.stop();
    low.on_key_sequence(DOWN, true, LOCAL);
    EXPECT_EQ(low.paddleLeft.pos.y, 10.0f);
}

// setPos

void set_paddle(vork2d::v5::PlayField& field, const QJsonObject& payload) {
    field.on_play_message(test::play_message(payload), REMOTE);
}

TEST_F(PlayFieldInput, setPos_moves_the_paddle_of_its_side_in_y_alone) {
    set_paddle(field, {{QStringLiteral("cmd"), QStringLiteral("setPos")},
                       {QStringLiteral("pos"), QStringLiteral("12,34")},
                       {QStringLiteral("side"), QStringLiteral("LEFT")}});
    EXPECT_EQ(field.paddleLeft.pos, glm::vec2(-380, 34));
    EXPECT_EQ(field.paddleRight.pos, glm::vec2(380, 0));
}

TEST_F(PlayFieldInput, setPos_without_LEFT_moves_the_right_paddle) {
    set_paddle(field, {{QStringLiteral("cmd"), QStringLiteral("setPos")},
                       {QStringLiteral("pos"), QStringLiteral("12,34")}});
    EXPECT_EQ(heights(), glm::vec2(0, 34));
}

TEST_F(PlayFieldInput, setPos_is_taken_beyond_the_field_as_it_stands) {
    set_paddle(field, {{QStringLiteral("cmd"), QStringLiteral("setPos")},
                       {QStringLiteral("pos"), QStringLiteral("0,1000")},
                       {QStringLiteral("side"), QStringLiteral("LEFT")}});
    EXPECT_EQ(field.paddleLeft.pos.y, 1000.0f);
}

TEST_F(PlayFieldInput, setPos_without_a_place_puts_the_paddle_in_the_middle) {
    field.paddleLeft.pos.y = 77;
    log.expect_error("PlayMessage::get_std_string('pos') , no value");
    set_paddle(field, {{QStringLiteral("cmd"), QStringLiteral("setPos")},
                       {QStringLiteral("side"), QStringLiteral("LEFT")}});
    EXPECT_EQ(field.paddleLeft.pos.y, 0.0f);
}

TEST_F(PlayFieldInput, on_set_pos_takes_no_other_command) {
    QJsonObject object{{QStringLiteral("cmd"), QStringLiteral("setBall")},
                       {QStringLiteral("pos"), QStringLiteral("12,34")}};
    field.on_set_pos(ze::net::PlayMessage(object));
    EXPECT_EQ(heights(), glm::vec2(0, 0));
}

// Keys

struct KeyRow {
    CONTROL_OWNER owner;
    ORIENT2D::Type side;
    bool leftIsMoved;  // by Up and Down
};

constexpr KeyRow KEY_ROWS[] = {
    {LOCAL, ORIENT2D::LEFT, true},   {LOCAL, ORIENT2D::RIGHT, false},
    {LOCAL, ORIENT2D::UP, false},    {REMOTE, ORIENT2D::LEFT, false},
    {REMOTE, ORIENT2D::RIGHT, true}, {REMOTE, ORIENT2D::DOWN, true},
};

TEST_F(PlayFieldInput, up_and_down_move_the_paddle_of_who_pressed_the_key) {
    for (const KeyRow& row : KEY_ROWS) {
        field.paddleLeft.pos.y = field.paddleRight.pos.y = 0;
        field.side = row.side;
        field.on_key_sequence(UP, true, row.owner);
        EXPECT_EQ(heights(), row.leftIsMoved ? glm::vec2(25, 0) : glm::vec2(0, 25)) << row.side;
        field.on_key_sequence(DOWN, true, row.owner);
        field.on_key_sequence(DOWN, true, row.owner);
        EXPECT_EQ(heights(), row.leftIsMoved ? glm::vec2(-25, 0) : glm::vec2(0, -25)) << row.side;
    }
}

TEST_F(PlayFieldInput, ctrl_up_and_ctrl_down_move_the_other_paddle_without_a_connection) {
    for (const KeyRow& row : KEY_ROWS) {
        field.paddleLeft.pos.y = field.paddleRight.pos.y = 0;
        field.side = row.side;
        field.on_key_sequence(CTRL_UP, true, row.owner);
        EXPECT_EQ(heights(), row.leftIsMoved ? glm::vec2(0, 25) : glm::vec2(25, 0)) << row.side;
        field.on_key_sequence(CTRL_DOWN, true, row.owner);
        field.on_key_sequence(CTRL_DOWN, true, row.owner);
        EXPECT_EQ(heights(), row.leftIsMoved ? glm::vec2(0, -25) : glm::vec2(-25, 0)) << row.side;
    }
}

TEST_F(PlayFieldInput, ctrl_up_with_a_connection_moves_nothing) {
    connection.flagConnected = true;
    field.on_key_sequence(CTRL_UP, true, LOCAL);
    field.on_key_sequence(CTRL_DOWN, true, REMOTE);
    EXPECT_EQ(heights(), glm::vec2(0, 0));
}

TEST_F(PlayFieldInput, up_with_a_connection_moves_the_own_paddle) {
    connection.flagConnected = true;
    field.on_key_sequence(UP, true, LOCAL);
    EXPECT_EQ(heights(), glm::vec2(25, 0));
}

TEST_F(PlayFieldInput, any_other_key_moves_nothing) {
    field.on_key_sequence(QKeySequence(Qt::Key_Left), true, LOCAL);
    field.on_key_sequence(QKeySequence(Qt::SHIFT | Qt::Key_Up), true, LOCAL);
    field.on_key_sequence(QKeySequence(), true, LOCAL);
    EXPECT_EQ(heights(), glm::vec2(0, 0));
}

TEST_F(PlayFieldInput, a_paddle_stops_at_the_top_and_at_the_bottom) {
    field.paddleLeft.pos.y = 150;
    field.on_key_sequence(UP, true, LOCAL);
    EXPECT_EQ(field.paddleLeft.pos.y, 160.0f);
    field.on_key_sequence(UP, true, LOCAL);
    EXPECT_EQ(field.paddleLeft.pos.y, 160.0f);
    field.paddleLeft.pos.y = -150;
    field.on_key_sequence(DOWN, true, LOCAL);
    EXPECT_EQ(field.paddleLeft.pos.y, -160.0f);
}

TEST_F(PlayFieldInput, a_key_is_logged_with_who_pressed_it) {
    field.on_key_sequence(CTRL_UP, true, LOCAL);
    field.on_key_sequence(CTRL_DOWN, false, REMOTE);
    EXPECT_EQ(log.lines_with_level(),
              (std::vector<std::string>{
                  "DEB PlayField::on_key_sequence, <<<Ctrl+Up>>>, PRESSED, LOCAL",
                  "DEB ctrl+up, LOCAL ONLY !",
                  "DEB PlayField::on_key_sequence, <<<Ctrl+Down>>>, RELEASED, REMOTE",
                  "DEB ctrl+down, LOCAL ONLY !",
              }));
}

TEST_F(PlayFieldInput, paddles_move_without_a_rally_and_on_a_follower) {
    make_follower();
    field.set_state_RUN(false);
    field.on_key_sequence(UP, true, LOCAL);
    EXPECT_EQ(heights(), glm::vec2(25, 0));
}

// The two operations without a caller

struct PressRow {
    ORIENT2D::Type side;
    Qt::KeyboardModifier mod;
    glm::vec2 afterUp;
};

TEST_F(PlayFieldInput, on_key_press_takes_the_own_paddle_and_with_ctrl_the_other) {
    const PressRow rows[] = {
        {ORIENT2D::LEFT, Qt::NoModifier, {25, 0}},
        {ORIENT2D::LEFT, Qt::ControlModifier, {0, 25}},
        {ORIENT2D::RIGHT, Qt::NoModifier, {0, 25}},
        {ORIENT2D::RIGHT, Qt::ControlModifier, {25, 0}},
    };
    for (const PressRow& row : rows) {
        field.paddleLeft.pos.y = field.paddleRight.pos.y = 0;
        field.side = row.side;
        const QKeyEvent up(QEvent::KeyPress, Qt::Key_Up, row.mod);
        const QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, row.mod);
        const QKeyEvent other(QEvent::KeyPress, Qt::Key_A, row.mod);
        field.on_key_press(&up);
        field.on_key_press(&other);
        EXPECT_EQ(heights(), row.afterUp);
        field.on_key_press(&down);
        EXPECT_EQ(heights(), glm::vec2(0, 0));
    }
}

TEST_F(PlayFieldInput, on_key_press_logs_the_key) {
    const QKeyEvent up(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
    const QKeyEvent ctrlDown(QEvent::KeyPress, Qt::Key_Down, Qt::ControlModifier);
    field.on_key_press(&up);
    field.on_key_press(&ctrlDown);
    EXPECT_EQ(log.lines_with_level(),
              (std::vector<std::string>{"DEB PlayField::on_key_press, ev:Up",
                                        "DEB PlayField::on_key_press, ev:Ctrl+Down"}));
}

TEST_F(PlayFieldInput, a_key_press_without_an_event_ends_the_program) {
    // The text goes to the standard output; a death test looks at the standard error.
    const auto press_null = [this] {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        field.on_key_press(nullptr);
    };
    EXPECT_EXIT(press_null(), testing::ExitedWithCode(1),
                "^nullptr:ev == NULL\nprograms/vork2d/v5/PlayField_input\nLINE:");
}

struct MoveRow {
    CONTROL_OWNER owner;
    ORIENT2D::Type orient;
    bool right;
};

TEST_F(PlayFieldInput, move_paddle_goes_by_owner_and_side) {
    const MoveRow rows[] = {
        {LOCAL, ORIENT2D::LEFT, false},
        {LOCAL, ORIENT2D::RIGHT, true},
        {REMOTE, ORIENT2D::LEFT, true},
        {REMOTE, ORIENT2D::RIGHT, false},
    };
    for (const MoveRow& row : rows) {
        field.paddleLeft.pos.y = field.paddleRight.pos.y = 0;
        field.move_paddle(row.owner, row.orient, true);
        EXPECT_EQ(heights(), row.right ? glm::vec2(0, 25) : glm::vec2(25, 0));
        field.move_paddle(row.owner, row.orient, false);
        EXPECT_EQ(heights(), glm::vec2(0, 0));
    }
}

}  // namespace
