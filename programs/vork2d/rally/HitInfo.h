// The earliest contact of the ball's motion with a wall or a paddle.
#pragma once

#include "rules.h"

#include <cmath>

#include <glm/vec2.hpp>

namespace vork2d::rally {

enum HIT_TYPE : unsigned {
    HIT_NONE = 0,
    HIT_TOP = 1,
    HIT_BOTTOM = 2,
    HIT_PADDLE_LEFT = 3,
    HIT_PADDLE_RIGHT = 4,
};

struct HitInfo {
    HIT_TYPE type = HIT_NONE;
    float t = 2.0f;      ///< place along the motion, 0..1; 2 is later than any real hit
    glm::vec2 pt{0, 0};  ///< place of the contact, field units

    /// Contact of a point that moves from ptStart to ptEnd with the vertical line at x between yMin
    /// and yMax, borders included. No contact gives a fresh value, and so does a motion that is too
    /// flat in x to count, or a yMin above yMax.
    [[nodiscard]] static HitInfo hit_vertical(HIT_TYPE type, glm::vec2 ptStart, glm::vec2 ptEnd,
                                              float x, float yMin, float yMax) noexcept;
};

// Inline: the frame step asks for it with every sub-step.
inline HitInfo HitInfo::hit_vertical(HIT_TYPE type, glm::vec2 ptStart, glm::vec2 ptEnd, float x,
                                     float yMin, float yMax) noexcept {
    const float dx = ptEnd.x - ptStart.x;
    if (rules::EPS > std::fabs(dx)) {
        return {};
    }
    const float t = (x - ptStart.x) / dx;
    if (0 > t || t > 1) {
        return {};
    }
    const float y = (ptEnd.y - ptStart.y) * t + ptStart.y;
    if (yMin > y || y > yMax) {
        return {};
    }
    return {type, t, {dx * t + ptStart.x, y}};
}

}  // namespace vork2d::rally
