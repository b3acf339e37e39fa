// The earliest contact of the ball's motion with a wall or a paddle. Only the frame step uses it.
#pragma once

#include <string>

#include <glm/vec2.hpp>

namespace vork2d::v4 {

enum HIT_TYPE : unsigned {
    HIT_NONE = 0,
    HIT_TOP = 1,
    HIT_BOTTOM = 2,
    HIT_PADDLE_LEFT = 3,
    HIT_PADDLE_RIGHT = 4,
};

/// The enumerator's text; a number beyond the enumeration is named as unknown.
[[nodiscard]] std::string to_string(HIT_TYPE type);

struct HitInfo {
    HIT_TYPE type = HIT_NONE;
    float t = 2.0f;      ///< place along the motion, 0..1; 2 is later than any real hit
    glm::vec2 pt{0, 0};  ///< place of the contact, field units

    /// Contact of a point that moves from ptStart to ptEnd with the vertical line at x between yMin
    /// and yMax, borders included. No contact gives a fresh value, and so does a motion that is too
    /// flat in x to count; yMin above yMax is reported.
    [[nodiscard]] static HitInfo hit_vertical(HIT_TYPE type, glm::vec2 ptStart, glm::vec2 ptEnd,
                                              float x, float yMin, float yMax);
};

}  // namespace vork2d::v4
