// One frame of a rally: the ball's motion, its hits, its exit. The search for contacts is
// continuous: the motion of a frame is cut at each hit, so that a fast ball cannot pass through a
// paddle and one frame can hold several bounces.
//
// Single precision throughout and in the written order: both clients of a rally start from the same
// numbers, and the results go out on the wire.
#pragma once

#include "Ball.h"
#include "Court.h"
#include "Hits.h"
#include "SIDE.h"
#include "StepWatcher.h"

#include <optional>

#include <glm/vec2.hpp>

namespace vork2d::rally {

/// The flight of a ball through one frame. It is made for that frame and thrown away.
class FrameStep {
public:
    /// All four outlive it.
    FrameStep(Ball& theBall, Hits& theHits, const Court& theCourt, StepWatcher& theWatcher) noexcept
        : ball(theBall),
          hits(theHits),
          court(theCourt),
          watcher(theWatcher),
          ptStart(theBall.pos) {}

    /// Advances the ball by dt seconds and bounces it at the court. False when nothing was flown: a
    /// dt of 0 or less is told to the watcher, a way too short to count is not.
    [[nodiscard]] bool fly(float dt);

    /// Whether a wall or a paddle was met at least once.
    [[nodiscard]] bool one_hit() const noexcept { return oneHit; }

    /// Where the last straight part of the flight began, field units.
    [[nodiscard]] glm::vec2 pt_last_part() const noexcept { return ptLastPart; }

private:
    enum class STEP : bool { END_FRAME, GO_ON };

    [[nodiscard]] bool is_clear(glm::vec2 pt) const noexcept;
    [[nodiscard]] bool is_sound() const noexcept;
    STEP sub_step();
    [[nodiscard]] HitInfo find_wall_hit(glm::vec2 ptEnd) const noexcept;
    [[nodiscard]] HitInfo find_paddle_hit(glm::vec2 ptEnd) const;
    [[nodiscard]] HitInfo find_hit(glm::vec2 ptEnd) const;
    void bounce(const HitInfo& hit, glm::vec2 vRest);
    void bounce_wall(const HitInfo& hit, glm::vec2 vRest);
    void bounce_paddle(const Paddle& paddle, const HitInfo& hit, glm::vec2 vRest);

    Ball& ball;
    Hits& hits;
    const Court& court;
    StepWatcher& watcher;
    glm::vec2 ptStart;  // of the current sub-step
    glm::vec2 ptLastPart = ptStart;
    glm::vec2 vRemain{0, 0};  // what this frame has still to fly
    unsigned cGuard = 0;      // number of the current sub-step, from 1
    bool oneHit = false;
};

/// Advances the ball by dt seconds straight on, through walls and paddles: the client that follows
/// a rally waits for the other one's word about hits.
void fly_straight(Ball& ball, float dt, StepWatcher& watcher);

/// How a ball has left the field.
struct Exit {
    SIDE side;
    float xEdge;                  ///< of the ball's centre when all of it was just out, field units
    std::optional<glm::vec2> pt;  ///< where it was then; nothing when its way does not tell
};

/// Whether the whole ball is past that edge of a field of that width, field units.
[[nodiscard]] inline bool is_beyond_left(const Ball& ball, float fieldWidth) noexcept {
    return -0.5f * fieldWidth > ball.pos.x + ball.radius();
}
[[nodiscard]] inline bool is_beyond_right(const Ball& ball, float fieldWidth) noexcept {
    return ball.pos.x - ball.radius() > 0.5f * fieldWidth;
}

[[nodiscard]] inline bool is_out(const Ball& ball, float fieldWidth) noexcept {
    return is_beyond_left(ball, fieldWidth) || is_beyond_right(ball, fieldWidth);
}

/// How a ball that is out has left a field of that width on its way from ptLastPart.
[[nodiscard]] Exit exit_of(const Ball& ball, float fieldWidth, glm::vec2 ptLastPart) noexcept;

/// What the ball has flown past the edge, field units; 0 when its way does not tell.
[[nodiscard]] float distance_beyond(const Exit& exit, const Ball& ball) noexcept;

}  // namespace vork2d::rally
