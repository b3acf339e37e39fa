// The field of the third generation. All motion is continuous now; the hit test stands on its own,
// and the place where a ball leaves the field is computed, so that the distance of a flight ends
// there. The two serves are aimed at the other paddle, wherever it stands.
//
// Coordinates are field units: origin in the middle, x to the right, y upward. Main thread only.
#pragma once

#include "ze/qt/GCanvas.h"
#include "ze/qt/components/GTimer.h"

#include "Ball.h"
#include "Paddle.h"
#include "vork2d/early/PlayStats.h"

#include <optional>

class QMouseEvent;

namespace vork2d::v3 {

struct HitInfo;

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

    // Flight (PlayField.cpp)

    /// Serves from the left paddle, a little clear of its face, through the top wall at the middle
    /// of the right paddle.
    void on_play();

    /// The same from the very face of the left paddle: the way there and the way back are alike.
    void on_play_symmetric();

    /// Ends the flight by a player's wish; the ball stays where it is.
    void on_stop();

    /// Whether the ball flies.
    [[nodiscard]] bool is_flying() const noexcept { return state == STATE_FLYING; }

    /// Puts the paddle that the ball flies to at the height of the mouse, kept inside the field;
    /// nothing while flagMouse is off.
    void on_mouse_press(const QMouseEvent* ev);
    void on_mouse_drag(const QMouseEvent* ev);
    void on_move_paddle(const glm::vec2& pos);

    /// One tick of the frame timer, msNow being the clock's milliseconds.
    void on_timer(unsigned long long msNow);

    // Frame (PlayField_frame.cpp)

    /// Moves the ball by dt seconds from hit to hit. A dt of 0 or less is reported and skipped.
    void next_frame(float dt);

    /// Draws the field; rect is the whole view in field units.
    void draw(ze::qt::GPC& gpc, const ze::math::Rect& rect) override;

    static constexpr unsigned STATE_REST = 0;
    static constexpr unsigned STATE_FLYING = 2;

    unsigned state = STATE_REST;
    bool flagMouse = true;  ///< the mouse moves the paddles
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

    void serve(glm::vec2 ptStart);
    void end_flight();
    [[nodiscard]] HitInfo find_hit(glm::vec2 ptStart, glm::vec2 vRemain) const;
    [[nodiscard]] HitInfo find_wall_hit(glm::vec2 ptStart, glm::vec2 ptEnd) const;
    [[nodiscard]] HitInfo find_paddle_hit(glm::vec2 ptStart, glm::vec2 ptEnd) const;
    [[nodiscard]] glm::vec2 bounce(const HitInfo& hit, glm::vec2 vRest);
    void check_exit(glm::vec2 posBefore);
    [[nodiscard]] std::optional<glm::vec2> exit_point(glm::vec2 posBefore, float xHit) const;

    unsigned long long tmLastFrame = 0;  ///< milliseconds; 0 means none
};

/// The flight that runs or ran last; main thread only.
extern early::PlayStats playStats;

}  // namespace vork2d::v3
