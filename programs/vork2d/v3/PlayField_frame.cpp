// The frame step: the motion of a frame is cut at each hit, and the ball is its centre against
// lines that are moved inward by its radius. Nothing bounds the number of hits in one frame: a very
// long frame of a very fast ball is flown to its end, as long as a crossing shortens it at all.
#include "ze/log/pp.h"

#include "HitInfo.h"
#include "PlayField.h"

#include <cmath>

#include <glm/geometric.hpp>

namespace vork2d::v3 {

using ze::pp_format;
using ze::log::DEBUG;
using ze::log::ERROR;

namespace {

// A way so long that a float cannot tell it from one that is a crossing shorter would never end.
glm::vec2 rest_behind(const HitInfo& hit, glm::vec2 vRemain) {
    const glm::vec2 vRest = vRemain - vRemain * hit.t;
    return hit.t > 0 && vRest == vRemain ? glm::vec2{0, 0} : vRest;
}

}  // namespace

void PlayField::next_frame(float dt) {
    if (0 >= dt) {
        pp_format(ERROR, 0, "PlayField::next_frame, invalid dt:$", dt);
        return;
    }
    const float stepLength = dt * ball.velocity;
    ball.travelDistance += stepLength;
    glm::vec2 posBefore = ball.pos;
    glm::vec2 vRemain = ball.dir * stepLength;
    while (glm::length(vRemain) > early::EPS) {
        posBefore = ball.pos;
        const HitInfo hit = find_hit(ball.pos, vRemain);
        if (hit.type == HIT_NONE) {
            ball.pos += vRemain;
            break;
        }
        ball.pos = hit.pt;
        vRemain = bounce(hit, rest_behind(hit, vRemain));
    }
    check_exit(posBefore);
}

HitInfo PlayField::find_hit(glm::vec2 ptStart, glm::vec2 vRemain) const {
    const glm::vec2 ptEnd = ptStart + vRemain;
    const HitInfo wall = find_wall_hit(ptStart, ptEnd);
    const HitInfo paddle = find_paddle_hit(ptStart, ptEnd);
    return wall.t > paddle.t ? paddle : wall;
}

HitInfo PlayField::find_wall_hit(glm::vec2 ptStart, glm::vec2 ptEnd) const {
    const float dy = ptEnd.y - ptStart.y;
    if (early::EPS > std::fabs(dy)) {
        return {};
    }
    const float radius = ball.size * 0.5f;
    const float yWall = dy > 0 ? top() - radius : bottom() + radius;
    const float t = (yWall - ptStart.y) / dy;
    if (0 > t || t > 1) {
        return {};
    }
    return {dy > 0 ? HIT_TOP : HIT_BOTTOM, t, {(ptEnd.x - ptStart.x) * t + ptStart.x, yWall}};
}

HitInfo PlayField::find_paddle_hit(glm::vec2 ptStart, glm::vec2 ptEnd) const {
    const float radius = ball.size * 0.5f;
    if (ptStart.x > ptEnd.x) {
        const ze::math::Rect r = paddleLeft.rect();
        return HitInfo::hit_vertical(HIT_PADDLE_LEFT, ptStart, ptEnd, r.right() + radius,
                                     r.bottom() - radius, r.top() + radius);
    }
    const ze::math::Rect r = paddleRight.rect();
    return HitInfo::hit_vertical(HIT_PADDLE_RIGHT, ptStart, ptEnd, r.left() - radius,
                                 r.bottom() - radius, r.top() + radius);
}

glm::vec2 PlayField::bounce(const HitInfo& hit, glm::vec2 vRest) {
    pp_format(DEBUG, 0, "PlayField::next_frame, HIT $, ball: {$}", to_string(hit.type), ball);
    glm::vec2 mirror{1, -1};
    switch (hit.type) {
        case HIT_TOP:
            ++playStats.hitsTop;
            break;
        case HIT_BOTTOM:
            ++playStats.hitsBottom;
            break;
        case HIT_PADDLE_LEFT:
            ++playStats.hitsPaddleLeft;
            mirror = {-1, 1};
            break;
        default:
            ++playStats.hitsPaddleRight;
            mirror = {-1, 1};
            break;
    }
    ball.dir *= mirror;
    return vRest * mirror;
}

void PlayField::check_exit(glm::vec2 posBefore) {
    const float radius = ball.size * 0.5f;
    const bool beyondLeft = left() > ball.pos.x + radius;
    const bool beyondRight = ball.pos.x - radius > right();
    if (!beyondLeft && !beyondRight) {
        return;
    }
    const float xHit = beyondLeft ? left() - radius : right() + radius;
    pp_format(DEBUG, 0, "BALL ON $ SIDE, ball.pos:$", beyondLeft ? "LEFT" : "RIGHT", ball.pos);
    if (const std::optional<glm::vec2> ptExit = exit_point(posBefore, xHit)) {
        ze::pp("BALL EXIT, ptExit:$", *ptExit);
        // The distance ends at the edge; the ball itself stays where it is.
        ball.travelDistance -= glm::length(ball.pos - *ptExit);
    } else {
        ze::pp_error("BALL EXIT, no cut found");
    }
    end_flight();
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

}  // namespace vork2d::v3
