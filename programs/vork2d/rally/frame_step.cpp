#include "frame_step.h"

#include <algorithm>
#include <cmath>

#include <glm/geometric.hpp>

namespace vork2d::rally {

namespace {

// Of a place that is far from a line, field units. More than all rounding in a field of any size
// that can be seen; what it costs is that the last of a ball's way to a line is searched for hits.
constexpr float CLEARANCE = 1.0f;

// Whether a motion counts, by its length; the root is left out where it cannot matter.
bool is_flown(glm::vec2 motion) noexcept {
    const float squared = glm::dot(motion, motion);
    return squared > 1 || std::sqrt(squared) > rules::EPS;
}

// Where the straight line from ptStart to ptEnd is at x; nothing when it does not come there.
std::optional<glm::vec2> cut_vertical(glm::vec2 ptStart, glm::vec2 ptEnd, float x) noexcept {
    const float dx = ptEnd.x - ptStart.x;
    if (rules::EPS >= std::fabs(dx)) {
        return std::nullopt;
    }
    const float t = (x - ptStart.x) / dx;
    if (0 > t || t > 1) {
        return std::nullopt;
    }
    return glm::vec2{ptStart.x + dx * t, ptStart.y + (ptEnd.y - ptStart.y) * t};
}

// The length of a frame's way in field units, added to the ball's distance; 0 when it is none.
float begin_way(Ball& ball, float dt, StepWatcher& watcher) {
    if (0 >= dt) {
        watcher.on_invalid_dt(dt);
        return 0;
    }
    const float length = dt * ball.velocity;
    if (rules::EPS >= length) {
        return 0;
    }
    ball.travelDistance += length;
    return length;
}

}  // namespace

// The ball is its centre here, and the collision lines are moved inward by its radius.

// Whether a ball at this place is far from every line. A way between two such places meets none,
// also not by rounding: most frames are such, and the search with its divisions is spared.
inline bool FrameStep::is_clear(glm::vec2 pt) const noexcept {
    const float reach = ball.radius() + CLEARANCE;
    return std::fabs(pt.y) < court.field.height * 0.5f - reach &&
           pt.x > court.paddleLeft.right() + reach && pt.x < court.paddleRight.left() - reach;
}

// Whether nothing is upside down, which the search would tell of wherever the ball is.
inline bool FrameStep::is_sound() const noexcept {
    return ball.size >= 0 && court.paddleLeft.size.height >= 0 &&
           court.paddleRight.size.height >= 0;
}

inline HitInfo FrameStep::find_wall_hit(glm::vec2 ptEnd) const noexcept {
    // From the rounded end point: this is the way that the ball really takes.
    const float dy = ptEnd.y - ptStart.y;
    if (!(std::fabs(dy) >= rules::EPS)) {
        return {};
    }
    HitInfo hit;
    if (vRemain.y > 0) {
        hit = {HIT_TOP, (court.field.height * 0.5f - ball.radius() - ptStart.y) / dy, {}};
    } else if (vRemain.y < 0) {
        hit = {HIT_BOTTOM, (court.field.height * -0.5f + ball.radius() - ptStart.y) / dy, {}};
    }
    if (!(0 <= hit.t && hit.t <= 1)) {
        return {};
    }
    hit.pt = {(ptEnd.x - ptStart.x) * hit.t + ptStart.x, dy * hit.t + ptStart.y};
    return hit;
}

inline HitInfo FrameStep::find_paddle_hit(glm::vec2 ptEnd) const {
    if (!(vRemain.x < 0) && !(vRemain.x > 0)) {
        return {};
    }
    const bool flagLeft = vRemain.x < 0;
    const Paddle& paddle = flagLeft ? court.paddleLeft : court.paddleRight;
    const float yMin = paddle.bottom() - ball.radius();
    const float yMax = paddle.top() + ball.radius();
    if (yMin > yMax) {
        watcher.on_paddle_upside_down(yMin, yMax);
        return {};
    }
    return flagLeft ? HitInfo::hit_vertical(HIT_PADDLE_LEFT, ptStart, ptEnd,
                                            paddle.right() + ball.radius(), yMin, yMax)
                    : HitInfo::hit_vertical(HIT_PADDLE_RIGHT, ptStart, ptEnd,
                                            paddle.left() - ball.radius(), yMin, yMax);
}

inline HitInfo FrameStep::find_hit(glm::vec2 ptEnd) const {
    const HitInfo wall = find_wall_hit(ptEnd);
    const HitInfo paddle = find_paddle_hit(ptEnd);
    const bool paddleFirst =
        paddle.type != HIT_NONE && (wall.type == HIT_NONE || wall.t > paddle.t);
    return paddleFirst ? paddle : wall;
}

inline void FrameStep::bounce_wall(const HitInfo& hit, glm::vec2 vRest) {
    watcher.on_wall_hit(hit);
    ++(hit.type == HIT_TOP ? hits.hitsTop : hits.hitsBottom);
    ball.dir.y = -ball.dir.y;
    vRemain = {vRest.x, -vRest.y};
}

inline void FrameStep::bounce_paddle(const Paddle& paddle, const HitInfo& hit, glm::vec2 vRest) {
    // The collision line reaches a radius beyond the paddle's ends: hits there count as at the end.
    const float rel =
        std::clamp((hit.pt.y - paddle.pos.y) / (paddle.size.height * 0.5f), -1.0f, 1.0f);
    watcher.on_paddle_hit(hit, rel);
    ++(hit.type == HIT_PADDLE_LEFT ? hits.hitsPaddleLeft : hits.hitsPaddleRight);
    const glm::vec2 dirOld = ball.dir;
    ball.dir.x = -dirOld.x;
    if (std::fabs(rel) > rules::DEAD_ZONE) {
        const float live = rel > 0 ? rel - rules::DEAD_ZONE : rel + rules::DEAD_ZONE;
        const float a = live / rules::LIVE_RANGE;
        const float y = a * rules::DEFLECTION + dirOld.y;
        const float len = std::sqrt(y * y + dirOld.x * dirOld.x);
        ball.dir = {-dirOld.x / len, y / len};
    }
    watcher.on_deflected(cGuard);
    vRemain = ball.dir * glm::length(vRest);
}

inline void FrameStep::bounce(const HitInfo& hit, glm::vec2 vRest) {
    switch (hit.type) {
        case HIT_PADDLE_LEFT:
            bounce_paddle(court.paddleLeft, hit, vRest);
            break;
        case HIT_PADDLE_RIGHT:
            bounce_paddle(court.paddleRight, hit, vRest);
            break;
        default:
            bounce_wall(hit, vRest);
    }
}

inline FrameStep::STEP FrameStep::sub_step() {
    ++cGuard;
    if (cGuard >= rules::GUARD_LIMIT) {
        watcher.on_guard_break(cGuard, vRemain);
        return STEP::END_FRAME;
    }
    ptLastPart = ptStart;
    const glm::vec2 ptEnd = ptStart + vRemain;
    const HitInfo hit = find_hit(ptEnd);
    if (hit.type == HIT_NONE) {
        ball.pos = ptEnd;
        return STEP::END_FRAME;
    }
    if (0 > hit.t || hit.t > 1) {
        watcher.on_invalid_hit(hit, ptStart, ptEnd);
        ball.pos = ptEnd;
        return STEP::END_FRAME;
    }
    const glm::vec2 vHit = vRemain * hit.t;
    if (rules::EPS >= glm::length(vHit)) {
        watcher.on_zero_length_hit(hit);
        return STEP::END_FRAME;
    }
    ball.pos = hit.pt;
    bounce(hit, vRemain - vHit);
    ptStart = ball.pos;
    oneHit = true;
    watcher.on_turned(vRemain);
    return STEP::GO_ON;
}

bool FrameStep::fly(float dt) {
    const float length = begin_way(ball, dt, watcher);
    if (length == 0) {
        return false;
    }
    vRemain = ball.dir * length;
    const glm::vec2 ptEnd = ptStart + vRemain;
    if (is_sound() && is_clear(ptStart) && is_clear(ptEnd) && is_flown(vRemain)) {
        ball.pos = ptEnd;
        return true;
    }
    while (is_flown(vRemain) && sub_step() == STEP::GO_ON) {
    }
    return true;
}

void fly_straight(Ball& ball, float dt, StepWatcher& watcher) {
    const float length = begin_way(ball, dt, watcher);
    if (length != 0) {
        ball.pos += ball.dir * length;
    }
}

Exit exit_of(const Ball& ball, float fieldWidth, glm::vec2 ptLastPart) noexcept {
    const bool flagLeft = is_beyond_left(ball, fieldWidth);
    const float xEdge =
        flagLeft ? -0.5f * fieldWidth - ball.radius() : 0.5f * fieldWidth + ball.radius();
    return {flagLeft ? SIDE::LEFT : SIDE::RIGHT, xEdge, cut_vertical(ptLastPart, ball.pos, xEdge)};
}

float distance_beyond(const Exit& exit, const Ball& ball) noexcept {
    return exit.pt ? glm::length(ball.pos - *exit.pt) : 0;
}

}  // namespace vork2d::rally
