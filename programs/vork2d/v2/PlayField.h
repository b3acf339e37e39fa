// The field of the second generation. Beside the step of the first one it has a continuous motion:
// the way of a frame is cut at the earliest hit and goes on after the bounce, so that no ball jumps
// over a paddle. A flight is flown in one manner or in the other, to compare them. What a flight
// came to is kept in a record.
//
// Coordinates are field units: origin in the middle, x to the right, y upward. Main thread only.
#pragma once

#include "ze/qt/GCanvas.h"
#include "ze/qt/components/GTimer.h"

#include "Ball.h"
#include "Paddle.h"
#include "vork2d/early/PlayStats.h"

class QMouseEvent;

namespace vork2d::v2 {

/// How a flight is computed.
enum class MOTION : unsigned { STEP, CONTINUOUS };

class PlayField : public ze::qt::GCanvas {
public:
    /// A field of w by h field units.
    PlayField(float w, float h);
    ~PlayField() override;

    /// Sets the time of travel, milliseconds, and with it the speed of the ball at once; 0 counts
    /// as 1.
    void set_tm_travel(unsigned long long ms);

    /// The time of travel in milliseconds, limited to 1..10000 although the field may run with
    /// another one.
    [[nodiscard]] unsigned tm_travel() const noexcept;

    /// Sends the ball from the face of the left paddle to the middle of the top wall.
    void on_move_top1(MOTION motionOfFlight);

    /// Ends the flight by a player's wish; the ball stays where it is.
    void on_stop();

    /// Whether the ball flies.
    [[nodiscard]] bool is_flying() const noexcept { return state == STATE_FLYING; }

    /// Puts the paddle that the ball flies to at the height of the mouse, kept inside the field.
    void on_mouse_press(const QMouseEvent* ev);
    void on_mouse_drag(const QMouseEvent* ev);
    void on_move_paddle(const glm::vec2& pos);

    /// One tick of the frame timer, msNow being the clock's milliseconds.
    void on_timer(unsigned long long msNow);

    /// Moves the ball by dt seconds, then looks what it has run into. A dt of 0 or less is reported
    /// and skipped.
    void next_frame(float dt);

    /// Moves the ball by dt seconds from hit to hit. A dt of 0 or less is reported and skipped.
    void next_frame_ext(float dt);

    /// Draws the field; rect is the whole view in field units.
    void draw(ze::qt::GPC& gpc, const ze::math::Rect& rect) override;

    static constexpr unsigned STATE_REST = 0;
    static constexpr unsigned STATE_FLYING = 2;

    unsigned state = STATE_REST;
    MOTION motion = MOTION::CONTINUOUS;  ///< of the flight
    QColor colorBackground = Qt::black;
    Ball ball;
    Paddle paddleLeft;
    Paddle paddleRight;
    float tmTravel = early::TM_TRAVEL;  ///< seconds
    ze::qt::GTimer timer;               ///< ticks as long as the field lives

private:
    [[nodiscard]] float left() const noexcept;
    [[nodiscard]] float right() const noexcept;
    [[nodiscard]] float top() const noexcept;
    [[nodiscard]] float bottom() const noexcept;

    void end_flight();
    void check_walls();
    void check_paddles();
    void check_exit();

    unsigned long long tmLastFrame = 0;  ///< milliseconds; 0 means none
};

/// The flight that runs or ran last; main thread only.
extern early::PlayStats playStats;

}  // namespace vork2d::v2
