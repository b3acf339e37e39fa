// The frame step. The search for contacts is continuous: the motion of a frame is cut at each hit,
// so that a fast ball cannot pass through a paddle and one frame can hold several bounces. The ball
// is its centre here, and the collision lines are moved inward by its radius.
//
// Every client runs this for itself, from the same serve and from the paddles as it knows them. So
// the two balls agree only as far as the paddles do, and nothing brings them together again.
#include "ze/log/pp.h"
#include "ze/net/IConnectionState.h"

#include "HitInfo.h"
#include "PlayField.h"
#include "rules.h"

#include <algorithm>
#include <cmath>

#include <glm/geometric.hpp>

namespace vork2d::v4 {

using ze::pp_format;
using ze::log::DEBUG;
using ze::log::ERROR;
namespace ORIENT2D = ze::math::ORIENT2D;

namespace {

constexpr unsigned INDENT_SUB_STEP = 4;  // blanks before a log line of a sub-step

QString wall_hit() {
    return QStringLiteral(":/wb/shared-res/sounds/Blop1.wav");
}

QString paddle_hit() {
    return QStringLiteral(":/wb/shared-res/sounds/Blop2.wav");
}

}  // namespace

struct PlayField::FrameMotion {
    glm::vec2 ptStart;    // of the current sub-step
    glm::vec2 posBefore;  // start of the last sub-step that was searched
    glm::vec2 vRemain;    // what this frame has still to fly
    unsigned cGuard = 0;
};

void PlayField::next_frame(float dt) {
    if (0 >= dt) {
        pp_format(ERROR, 0, "PlayField::next_frame, invalid dt:$", dt);
        return;
    }
    const float stepLength = dt * ball.velocity;
    if (early::EPS >= stepLength) {
        return;
    }
    ball.travelDistance += stepLength;
    FrameMotion motion{ball.pos, ball.pos, ball.dir * stepLength};
    STEP next = STEP::GO_ON;
    while (next == STEP::GO_ON && glm::length(motion.vRemain) > early::EPS) {
        next = sub_step(motion);
    }
    check_exit(motion.posBefore);
}

PlayField::STEP PlayField::sub_step(FrameMotion& motion) {
    ++motion.cGuard;
    if (motion.cGuard >= rules::GUARD_LIMIT) {
        pp_format(ERROR, 0, "PlayField::next_frame, guard break, cGuard:$, ball.pos:$, vRemain:$",
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
        pp_format(ERROR, 0,
                  "PlayField::next_frame, invalid hitBest.t:$, ball.pos:$, ptStart:$, ptEnd:$",
                  hitBest.t, ball.pos, motion.ptStart, ptEnd);
        ball.pos = ptEnd;
        return STEP::END_FRAME;
    }
    const glm::vec2 vHit = motion.vRemain * hitBest.t;
    if (early::EPS >= glm::length(vHit)) {
        pp_format(ERROR, 0,
                  "PlayField::next_frame, zero-length hit step, type:$, t:$, ball.pos:$, ptHit:$",
                  to_string(hitBest.type), hitBest.t, ball.pos, hitBest.pt);
        return STEP::END_FRAME;
    }
    ball.pos = hitBest.pt;
    motion.vRemain = bounce(hitBest, motion.vRemain - vHit, motion.cGuard);
    motion.ptStart = ball.pos;
    pp_format(DEBUG, INDENT_SUB_STEP, "PlayField::next_frame, vRemain:$", motion.vRemain);
    return STEP::GO_ON;
}

HitInfo PlayField::find_hit(const FrameMotion& motion, glm::vec2 ptEnd) const {
    const HitInfo wall = find_wall_hit(motion, ptEnd);
    const HitInfo paddle = find_paddle_hit(motion, ptEnd);
    const bool paddleFirst =
        paddle.type != HIT_NONE && (wall.type == HIT_NONE || wall.t > paddle.t);
    return paddleFirst ? paddle : wall;
}

HitInfo PlayField::find_wall_hit(const FrameMotion& motion, glm::vec2 ptEnd) const {
    const glm::vec2 ptStart = motion.ptStart;
    // From the rounded end point: this is the way that the ball really takes.
    const float dy = ptEnd.y - ptStart.y;
    if (!(std::fabs(dy) >= early::EPS)) {
        return {};
    }
    const float radius = ball.size * 0.5f;
    HitInfo hit;
    if (motion.vRemain.y > 0) {
        hit = {HIT_TOP, (top() - radius - ptStart.y) / dy, {}};
    } else if (motion.vRemain.y < 0) {
        hit = {HIT_BOTTOM, (bottom() + radius - ptStart.y) / dy, {}};
    }
    if (!(0 <= hit.t && hit.t <= 1)) {
        return {};
    }
    hit.pt = {(ptEnd.x - ptStart.x) * hit.t + ptStart.x, dy * hit.t + ptStart.y};
    return hit;
}

HitInfo PlayField::find_paddle_hit(const FrameMotion& motion, glm::vec2 ptEnd) const {
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

glm::vec2 PlayField::bounce(const HitInfo& hit, glm::vec2 vRest, unsigned cGuard) {
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

glm::vec2 PlayField::bounce_wall(const HitInfo& hit, glm::vec2 vRest) {
    play_sound(wall_hit());
    pp_format(DEBUG, 0, "PlayField::next_frame, HIT $, ball: {$}", to_string(hit.type), ball);
    ball.dir.y = -ball.dir.y;
    return {vRest.x, -vRest.y};
}

glm::vec2 PlayField::bounce_paddle(const Paddle& paddle, const HitInfo& hit, glm::vec2 vRest,
                                   unsigned cGuard) {
    play_sound(paddle_hit());
    // The collision line reaches a radius beyond the paddle's ends: hits there count as at the end.
    const float rel =
        std::clamp((hit.pt.y - paddle.pos.y) / (paddle.size.height * 0.5f), -1.0f, 1.0f);
    pp_format(DEBUG, 0, "PlayField::next_frame, HIT $, ball.pos:$, rel:$", paddle.name, ball.pos,
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
    pp_format(DEBUG, 0, "PlayField::next_frame, cGuard:$, after calc, ball:$", cGuard, ball);
    return ball.dir * glm::length(vRest);
}

void PlayField::check_exit(glm::vec2 posBefore) {
    const float radius = ball.size * 0.5f;
    const bool beyondLeft = left() > ball.pos.x + radius;
    if (!beyondLeft && !(ball.pos.x - radius > right())) {
        return;
    }
    const ORIENT2D::Type sideExit = beyondLeft ? ORIENT2D::LEFT : ORIENT2D::RIGHT;
    if (connection.is_connected() && sideExit != side) {
        return;  // it is the other client that lost the ball: the rally lives until he says so
    }
    cut_at_edge(posBefore, sideExit);
    show_stats();
    listenerBallExit.fire_event(sideExit);
    // As a rule a handler has cleared the bit already, and nothing is reported twice.
    set_state_RUN(false);
}

void PlayField::cut_at_edge(glm::vec2 posBefore, ORIENT2D::Type sideExit) {
    const float radius = ball.size * 0.5f;
    const float xHit = ORIENT2D::is_left(sideExit) ? left() - radius : right() + radius;
    const std::optional<glm::vec2> ptExit = exit_point(posBefore, xHit);

    ze::pp_empty();
    pp_format(DEBUG, 0, "BALL ON $ SIDE, ball.pos:$", ORIENT2D::to_string(sideExit), ball.pos);
    if (!ptExit) {
        pp_format(ERROR, 0,
                  "PlayField::next_frame, BALL EXIT but no vertical cut found, posBefore:$, "
                  "ball.pos:$, xHit:$",
                  posBefore, ball.pos, xHit);
        return;
    }
    pp_format(DEBUG, 0, "BALL EXIT, ptExit:$", *ptExit);
    ball.travelDistance -= glm::length(ball.pos - *ptExit);
}

std::optional<glm::vec2> PlayField::exit_point(glm::vec2 posBefore, float xHit) const {
    const float dx = ball.pos.x - posBefore.x;
    if (early::EPS >= std::fabs(dx)) {
        return std::nullopt;
    }
    const float t = (xHit - posBefore.x) / dx;
    if (0 > t || t > 1) {
        return std::nullopt;
    }
    return glm::vec2{posBefore.x + dx * t, posBefore.y + (ball.pos.y - posBefore.y) * t};
}

}  // namespace vork2d::v4
