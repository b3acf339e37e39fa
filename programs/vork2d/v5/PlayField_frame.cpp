// The frame step. The search for contacts is continuous: the motion of a frame is cut at each hit,
// so that a fast ball cannot pass through a paddle and one frame can hold several bounces. The ball
// is its centre here, and the collision lines are moved inward by its radius.
//
// Single precision throughout and in this order: the other client starts from the same numbers, and
// the results go out on the wire.
#include "ze/log/pp.h"
#include "ze/net/IConnectionState.h"
#include "ze/tools/clock.h"

#include "HitInfo.h"
#include "PLAY_STATE.h"
#include "PlayField.h"
#include "PlayStats.h"
#include "sounds.h"

#include <algorithm>
#include <cmath>

#include <glm/geometric.hpp>

namespace vork2d::v5 {

using ze::log::DEBUG;
using ze::log::ERROR;

namespace {

constexpr unsigned INDENT_SUB_STEP = 4;  // blanks before a log line of a sub-step

template <typename... Args>
[[gnu::noinline]] void write_line(ze::log::LOG_LEVEL level, unsigned indent, const char* format,
                                  Args... args) {
    ze::pp_format(level, indent, format, args...);
}

// A line of the frame step. The values go on as copies, so that a step whose lines are not shown
// keeps its numbers in registers.
template <typename... Args>
inline void show_line(ze::log::LOG_LEVEL level, unsigned indent, const char* format,
                      const Args&... args) {
    if (ze::log::is_on(level)) {
        write_line(level, indent, format, args...);
    }
}

// Whether a motion counts, by its length; the root is left out where it cannot matter.
inline bool is_flown(glm::vec2 motion) {
    const float squared = glm::dot(motion, motion);
    return squared > 1 || std::sqrt(squared) > rules::EPS;
}

}  // namespace

struct PlayField::FrameMotion {
    glm::vec2 ptStart;    // of the current sub-step
    glm::vec2 posBefore;  // start of the last sub-step that was searched
    glm::vec2 vRemain;    // what this frame has still to fly
    unsigned cGuard = 0;
    bool oneHit = false;
};

// The parts of a step are inline and stand before the whole: a frame in free flight is a handful of
// nanoseconds and should cost no calls.

inline HitInfo PlayField::find_wall_hit(const FrameMotion& motion, glm::vec2 ptEnd) const {
    const glm::vec2 ptStart = motion.ptStart;
    // From the rounded end point: this is the way that the ball really takes.
    const float dy = ptEnd.y - ptStart.y;
    if (!(std::fabs(dy) >= rules::EPS)) {
        return {};
    }
    const float radius = ball.size * 0.5f;
    HitInfo hit;
    if (motion.vRemain.y > 0) {
        hit = {HIT_TOP, (field_height() * 0.5f - radius - ptStart.y) / dy, {}};
    } else if (motion.vRemain.y < 0) {
        hit = {HIT_BOTTOM, (field_height() * -0.5f + radius - ptStart.y) / dy, {}};
    }
    if (!(0 <= hit.t && hit.t <= 1)) {
        return {};
    }
    hit.pt = {(ptEnd.x - ptStart.x) * hit.t + ptStart.x, dy * hit.t + ptStart.y};
    return hit;
}

inline HitInfo PlayField::find_paddle_hit(const FrameMotion& motion, glm::vec2 ptEnd) const {
    const float radius = ball.size * 0.5f;
    if (motion.vRemain.x < 0) {
        const ze::math::Rect r = paddleLeft.rect();
        return HitInfo::hit_vertical(HIT_PADDLE_LEFT, motion.ptStart, ptEnd, r.right() + radius,
                                     r.bottom() - radius, r.top() + radius);
    }
    if (motion.vRemain.x > 0) {
        const ze::math::Rect r = paddleRight.rect();
        return HitInfo::hit_vertical(HIT_PADDLE_RIGHT, motion.ptStart, ptEnd, r.left() - radius,
                                     r.bottom() - radius, r.top() + radius);
    }
    return {};
}

inline HitInfo PlayField::find_hit(const FrameMotion& motion, glm::vec2 ptEnd) const {
    const HitInfo wall = find_wall_hit(motion, ptEnd);
    const HitInfo paddle = find_paddle_hit(motion, ptEnd);
    const bool paddleFirst =
        paddle.type != HIT_NONE && (wall.type == HIT_NONE || wall.t > paddle.t);
    return paddleFirst ? paddle : wall;
}

inline glm::vec2 PlayField::bounce_wall(const HitInfo& hit, glm::vec2 vRest) {
    play_sound(sounds::WALL_HIT);
    show_line(DEBUG, 0, "PlayField::next_frame, HIT $, ball: {$}", hit.type, ball);
    ball.dir.y = -ball.dir.y;
    return {vRest.x, -vRest.y};
}

inline glm::vec2 PlayField::bounce_paddle(const Paddle& paddle, const HitInfo& hit, glm::vec2 vRest,
                                          unsigned cGuard) {
    play_sound(sounds::PADDLE_HIT);
    // The collision line reaches a radius beyond the paddle's ends: hits there count as at the end.
    const float rel =
        std::clamp((hit.pt.y - paddle.pos.y) / (paddle.size.height * 0.5f), -1.0f, 1.0f);
    show_line(DEBUG, 0, "PlayField::next_frame, HIT $, ball.pos:$, rel:$", paddle.name, ball.pos,
              rel);
    const glm::vec2 dirOld = ball.dir;
    ball.dir.x = -dirOld.x;
    if (std::fabs(rel) > rules::DEAD_ZONE) {
        const float live = rel > 0 ? rel - rules::DEAD_ZONE : rel + rules::DEAD_ZONE;
        const float a = live / rules::LIVE_RANGE;
        const float y = a * rules::DEFLECTION + dirOld.y;
        const float len = std::sqrt(y * y + dirOld.x * dirOld.x);
        ball.dir = {-dirOld.x / len, y / len};
    }
    show_line(DEBUG, 0, "PlayField::next_frame, cGuard:$, after calc, ball:$", cGuard, ball);
    return ball.dir * glm::length(vRest);
}

inline glm::vec2 PlayField::bounce(const HitInfo& hit, glm::vec2 vRest, unsigned cGuard) {
    switch (hit.type) {
        case HIT_PADDLE_LEFT:
            ++playStats.hitsPaddleLeft;
            return bounce_paddle(paddleLeft, hit, vRest, cGuard);
        case HIT_PADDLE_RIGHT:
            ++playStats.hitsPaddleRight;
            return bounce_paddle(paddleRight, hit, vRest, cGuard);
        case HIT_TOP:
            ++playStats.hitsTop;
            break;
        default:
            ++playStats.hitsBottom;
            break;
    }
    return bounce_wall(hit, vRest);
}

inline PlayField::STEP PlayField::sub_step(FrameMotion& motion) {
    ++motion.cGuard;
    if (motion.cGuard >= rules::GUARD_LIMIT) {
        show_line(ERROR, 0, "PlayField::next_frame, guard break, cGuard:$, ball.pos:$, vRemain:$",
                  motion.cGuard, ball.pos, motion.vRemain);
        return STEP::END_FRAME;
    }
    motion.posBefore = motion.ptStart;
    const glm::vec2 ptEnd = motion.ptStart + motion.vRemain;
    const HitInfo hitBest = find_hit(motion, ptEnd);
    if (hitBest.type == HIT_NONE) {
        ball.pos = ptEnd;
        return STEP::END_FRAME;
    }
    if (0 > hitBest.t || hitBest.t > 1) {
        show_line(ERROR, 0,
                  "PlayField::next_frame, invalid hitBest.t:$, ball.pos:$, ptStart:$, ptEnd:$",
                  hitBest.t, ball.pos, motion.ptStart, ptEnd);
        ball.pos = ptEnd;
        return STEP::END_FRAME;
    }
    const glm::vec2 vHit = motion.vRemain * hitBest.t;
    if (rules::EPS >= glm::length(vHit)) {
        show_line(ERROR, 0,
                  "PlayField::next_frame, zero-length hit step, type:$, t:$, ball.pos:$, ptHit:$",
                  hitBest.type, hitBest.t, ball.pos, hitBest.pt);
        return STEP::END_FRAME;
    }
    ball.pos = hitBest.pt;
    motion.vRemain = bounce(hitBest, motion.vRemain - vHit, motion.cGuard);
    motion.ptStart = ball.pos;
    motion.oneHit = true;
    show_line(DEBUG, INDENT_SUB_STEP, "PlayField::next_frame, vRemain:$", motion.vRemain);
    return STEP::GO_ON;
}

void PlayField::next_frame(float dt) {
    if (0 >= dt) {
        show_line(ERROR, 0, "PlayField::next_frame, invalid dt:$", dt);
        return;
    }
    const float stepLength = dt * ball.velocity;
    if (rules::EPS >= stepLength) {
        return;
    }
    ball.travelDistance += stepLength;
    const glm::vec2 vStep = ball.dir * stepLength;
    if (!flagMaster) {
        ball.pos += vStep;
        return;
    }
    FrameMotion motion{ball.pos, ball.pos, vStep};
    STEP next = STEP::GO_ON;
    while (next == STEP::GO_ON && is_flown(motion.vRemain)) {
        next = sub_step(motion);
    }
    if (motion.oneHit && connection.is_connected()) {
        // Once, after the whole motion: what goes out is the ball at the end of the frame.
        show_line(DEBUG, 0, "ONE HIT, ball:$", ball);
        listenerBallHit.fire_event(ze::NO_PAYLOAD{});
    }
    if (is_out_of_field()) {
        on_exit(motion.posBefore);
    }
}

void PlayField::on_timer(unsigned long long msNow) {
    if (!is_state_PLAY()) {
        listenerFps.fire_event(0);
        return;
    }
    const unsigned long long last = tmLastFrame;
    tmLastFrame = msNow;
    if (last == 0 || msNow == last) {
        return;
    }
    next_frame(static_cast<float>(msNow - last) / rules::MS_PER_SECOND);
    update();
}

void PlayField::on_exit(glm::vec2 posBefore) {
    const bool beyondLeft = is_ball_beyond_left();
    cut_at_edge(posBefore, beyondLeft);
    playStats.travelDistance = ball.travelDistance;
    playStats.msEnd = ze::time::get_steady_milli_seconds();
    ze::pp_empty();
    playStats.show(PlayStats::INDENT);
    listenerBallExit.fire_event(beyondLeft ? ze::math::ORIENT2D::LEFT : ze::math::ORIENT2D::RIGHT);
    // As a rule a handler has cleared the bit already, and nothing is reported twice.
    set_state_RUN(false);
}

void PlayField::cut_at_edge(glm::vec2 posBefore, bool beyondLeft) {
    const float radius = ball.size * 0.5f;
    const float xHit = beyondLeft ? left() - radius : right() + radius;
    const char* const sideText = beyondLeft ? "LEFT" : "RIGHT";
    const std::optional<glm::vec2> ptExit = exit_point(posBefore, xHit);

    ze::pp_empty();
    if (!ptExit) {
        show_line(DEBUG, 0, "BALL ON $ SIDE, ball.pos:$", sideText, ball.pos);
        show_line(ERROR, 0,
                  "PlayField::next_frame, BALL EXIT but no vertical cut found, posBefore:$, "
                  "ball.pos:$, xHit:$",
                  posBefore, ball.pos, xHit);
        return;
    }
    show_line(DEBUG, 0, "MASTER:$", flagMaster);
    show_line(DEBUG, 0, "BALL ON $ SIDE, ball.pos:$", sideText, ball.pos);
    show_line(DEBUG, 0, "BALL EXIT, ptExit:$", *ptExit);
    ball.travelDistance -= glm::length(ball.pos - *ptExit);
}

std::optional<glm::vec2> PlayField::exit_point(glm::vec2 posBefore, float xHit) const {
    const float dx = ball.pos.x - posBefore.x;
    if (rules::EPS >= std::fabs(dx)) {
        return std::nullopt;
    }
    const float t = (xHit - posBefore.x) / dx;
    if (0 > t || t > 1) {
        return std::nullopt;
    }
    return glm::vec2{posBefore.x + dx * t, posBefore.y + (ball.pos.y - posBefore.y) * t};
}

}  // namespace vork2d::v5
