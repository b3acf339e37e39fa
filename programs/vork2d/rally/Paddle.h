// A paddle as the ball meets it. It moves in y only.
#pragma once

#include "Size.h"
#include "rules.h"

#include <glm/vec2.hpp>

namespace vork2d::rally {

struct Paddle {
    glm::vec2 pos{0, 0};  ///< centre, field units
    Size size{rules::PADDLE_WIDTH, rules::PADDLE_HEIGHT};

    // The far edges are counted from the near ones, as in a rectangle of corner and size: the
    // rounding of these sums is part of the rules.
    [[nodiscard]] float left() const noexcept { return pos.x - size.width / 2; }
    [[nodiscard]] float right() const noexcept { return left() + size.width; }
    [[nodiscard]] float bottom() const noexcept { return pos.y - size.height / 2; }
    [[nodiscard]] float top() const noexcept { return bottom() + size.height; }
};

/// The height nearest to y at which a paddle stays inside a field of that height; field units. In
/// a field lower than the paddle its lower end is the one inside.
[[nodiscard]] inline float inside_field(const Paddle& paddle, float fieldHeight, float y) noexcept {
    const float half = paddle.size.height * 0.5f;
    const float yMin = half - 0.5f * fieldHeight;
    const float yMax = 0.5f * fieldHeight - half;
    if (y < yMin) {
        return yMin;
    }
    return y > yMax ? yMax : y;
}

}  // namespace vork2d::rally
