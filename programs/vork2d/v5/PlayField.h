// The game field: a canvas that holds the ball, the two paddles and the state bits, drives the
// frame timer, starts and stops a rally, and draws. It sends nothing: what has to go out is fired,
// and what comes in enters through on_play_message. The score is the window's.
//
// Coordinates are field units: origin in the middle, x to the right, y upward. Main thread only.
#pragma once

#include "ze/math/ORIENT2D.h"
#include "ze/net/CONTROL_OWNER.h"
#include "ze/net/GPlay.h"
#include "ze/qt/GCanvas.h"
#include "ze/qt/components/GTimer.h"
#include "ze/tools/Listener.h"

#include "Ball.h"
#include "Paddle.h"
#include "rules.h"
#include "vork2d/rally/Court.h"
#include "vork2d/rally/frame_step.h"

#include <QColor>
#include <QString>

class QKeyEvent;
class QKeySequence;
class QMouseEvent;

namespace ze::net {
class IConnectionState;
class PlayMessage;
}  // namespace ze::net

namespace vork2d::v5 {

class PlayField : public ze::qt::GCanvas {
public:
    /// A field of w by h field units. The connection is not owned and outlives the field.
    PlayField(float w, float h, ze::net::IConnectionState& connection);
    ~PlayField() override;

    // Rally (PlayField.cpp)

    /// Sets the time of travel, milliseconds, and with it the speed of the ball at once; 0 counts
    /// as 1.
    void set_tm_travel(unsigned long long ms);

    /// The time of travel in milliseconds, limited to 1..10000 although the field may run with
    /// another one.
    [[nodiscard]] unsigned tm_travel() const noexcept;

    /// Starts a rally, also while one runs: the ball leaves the face of the starter's paddle and is
    /// aimed through the top wall at the middle of the other one. Any side but LEFT serves from the
    /// right. msTravel is as in set_tm_travel.
    void on_play(ze::math::ORIENT2D::Type sideStart, unsigned long long msTravel);

    /// Ends the rally by a player's wish; the ball stays where it is.
    void on_stop();

    /// Sets or clears the PLAY bit and reports the change.
    void set_state_RUN(bool flag);

    /// Fires listenerState when the bits differ from those last reported. To be called after each
    /// change of state.
    void report_state();

    [[nodiscard]] bool is_state_PLAY() const noexcept;
    [[nodiscard]] bool is_state_CONNECTED1() const noexcept;
    [[nodiscard]] bool is_state_CONNECTED2() const noexcept;
    [[nodiscard]] bool is_state_offline() const noexcept;
    [[nodiscard]] bool is_state_2_players() const noexcept;

    [[nodiscard]] float left() const noexcept { return -0.5f * field_width(); }
    [[nodiscard]] float right() const noexcept { return 0.5f * field_width(); }
    [[nodiscard]] float top() const noexcept { return 0.5f * field_height(); }
    [[nodiscard]] float bottom() const noexcept { return -0.5f * field_height(); }

    /// Whether the whole ball is past the field's edge.
    [[nodiscard]] bool is_ball_beyond_left() const noexcept {
        return rally::is_beyond_left(ball, field_width());
    }
    [[nodiscard]] bool is_ball_beyond_right() const noexcept {
        return rally::is_beyond_right(ball, field_width());
    }
    [[nodiscard]] bool is_out_of_field() const noexcept {
        return is_ball_beyond_left() || is_ball_beyond_right();
    }

    [[nodiscard]] bool is_left_side() const noexcept;

    /// Whether this client computes the rally.
    [[nodiscard]] bool is_master() const noexcept { return flagMaster; }

    /// Fits the widget to the width of a small device's screen; nothing on any other device.
    void check_set_size();

    /// Plays a wav of the resource tree; silent when the sound is off or the game is too fast for
    /// it.
    void play_sound(const QString& path);

    // Frame (PlayField_frame.cpp)

    /// One tick of the frame timer, msNow being the clock's milliseconds.
    void on_timer(unsigned long long msNow);

    /// Advances the ball by dt seconds. The master bounces it and ends the rally when it has left
    /// the field; any other client moves it straight on. A dt of 0 or less is reported and skipped.
    void next_frame(float dt);

    // Input (PlayField_input.cpp)

    void on_mouse_press(const QMouseEvent* ev);
    void on_mouse_drag(const QMouseEvent* ev);

    /// Fires the message that puts the own paddle, with flagOther the other one, at the height of
    /// pos, kept inside the field.
    void on_move_paddle(const glm::vec2& pos, bool flagOther);

    /// The same for the paddle that the ball flies to: one player holds both.
    void on_move_paddle_offline(const glm::vec2& pos);

    /// Moves a paddle by one step for Up and Down; with no connection also the other one for
    /// Ctrl+Up and Ctrl+Down. The owner is the one who pressed the key.
    void on_key_sequence(const QKeySequence& seq, bool pressed, ze::net::CONTROL_OWNER owner);

    /// Takes the y of a "setPos" as it stands; any other command is ignored.
    void on_set_pos(const ze::net::PlayMessage& msg);

    void on_key_press(const QKeyEvent* ev);
    void move_paddle(ze::net::CONTROL_OWNER owner, ze::math::ORIENT2D::Type orient, bool up);

    // Messages (PlayField_messages.cpp)

    /// The one door through which every change of the shared game passes: the own commands with
    /// LOCAL, those of the other client with REMOTE. A payload that is no object is reported and
    /// refused, an unknown command is dropped.
    void on_play_message(const ze::net::GPlay& play, ze::net::CONTROL_OWNER owner);

    // Drawing (PlayField_draw.cpp)

    /// Draws the field; rect is the whole view in field units.
    void draw(ze::qt::GPC& gpc, const ze::math::Rect& rect) override;

    /// Counts a drawn frame at msNow and fires listenerFps once a second while a rally runs.
    void count_frame(unsigned long long msNow);

    ze::Listener<unsigned int> listenerFps;  ///< frames of the last second; 0 while idle
    ze::Listener<ze::math::ORIENT2D::Type> listenerOrient;  ///< own side changed
    ze::Listener<ze::math::ORIENT2D::Type>
        listenerBallExit;  ///< the master saw the ball leave here
    ze::Listener<ze::math::ORIENT2D::Type> listenerOutOfField;  ///< an "out_of_field" was handled
    ze::Listener<ze::net::CONTROL_OWNER> listenerStart;         ///< who started a rally
    ze::Listener<ze::net::CONTROL_OWNER> listenerStop;          ///< who stopped it
    ze::Listener<ze::net::GPlay> listenerPaddle;                ///< a "setPos" is ready to go out
    ze::Listener<bool> listenerMaster;                          ///< is_master() was written
    ze::Listener<ze::NO_PAYLOAD> listenerBallHit;  ///< a connected master had a hit this frame
    ze::Listener<int> listenerTravel;              ///< a "travel" was handled, milliseconds
    QColor colorBackground = Qt::black;
    ze::Listener<ze::NO_PAYLOAD> listenerState;  ///< state differs from stateLast
    unsigned stateLast = 0;                      ///< bits last reported
    unsigned state = 0;                          ///< PLAY_STATE bits
    QString textLeft = QStringLiteral("0");      ///< label at the top left
    QString textRight = QStringLiteral("0");     ///< label at the top right
    int fontSize = 16;                           ///< of the three labels, points
    QString textInfo;                            ///< short-lived label at the bottom left
    bool flagSound = true;
    Ball ball;
    Paddle paddleLeft;
    Paddle paddleRight;
    float tmTravel = rules::TM_TRAVEL;  ///< seconds
    ze::qt::GTimer timer;               ///< ticks as long as the field lives

private:
    unsigned long long tmLastFrame = 0;  ///< milliseconds; 0 means none
    unsigned long long tmFpsStart = 0;   ///< of the current second of the count, milliseconds
    unsigned countFrames = 0;            ///< in the current second

public:
    ze::math::ORIENT2D::Type side = ze::math::ORIENT2D::LEFT;  ///< of this client

protected:
    void showEvent(QShowEvent* ev) override;

private:
    class StepLog;

    [[nodiscard]] float field_width() const noexcept { return get_view_size().width; }
    [[nodiscard]] float field_height() const noexcept { return get_view_size().height; }

    /// What the ball meets, as the rules know it.
    [[nodiscard]] rally::Court court() const noexcept {
        return {{field_width(), field_height()}, paddleLeft.bare(), paddleRight.bare()};
    }
    void set_velocity();
    void serve(ze::math::ORIENT2D::Type sideStart);

    void on_exit(glm::vec2 ptLastPart);
    void show_exit(const rally::Exit& exit, glm::vec2 ptLastPart) const;

    [[nodiscard]] Paddle& paddle_of(ze::net::CONTROL_OWNER owner) noexcept;
    [[nodiscard]] Paddle& other_paddle(const Paddle& paddle) noexcept;
    [[nodiscard]] float inside_field(const Paddle& paddle, float y) const noexcept {
        return rally::inside_field(paddle.bare(), field_height(), y);
    }
    void on_mouse(const QMouseEvent* ev);
    void step_paddle(Paddle& paddle, float step);
    void fire_set_pos(const Paddle& paddle, float y);

    void dispatch(const ze::net::PlayMessage& msg, ze::net::CONTROL_OWNER owner);
    void on_orientation(const ze::net::PlayMessage& msg);
    void on_start(const ze::net::PlayMessage& msg, ze::net::CONTROL_OWNER owner);
    void on_stop_message(ze::net::CONTROL_OWNER owner);
    void on_travel(const ze::net::PlayMessage& msg);
    void on_set_ball(const ze::net::PlayMessage& msg);
    void set_master(bool flag);

    void draw_labels(ze::qt::GPC& gpc, const ze::math::Rect& rect) const;
    void draw_cross(ze::qt::GPC& gpc) const;

    ze::net::IConnectionState& connection;
    bool flagMaster = true;
    unsigned long long tmStartPlay = 0;  ///< of the last start message, milliseconds
};

}  // namespace vork2d::v5
