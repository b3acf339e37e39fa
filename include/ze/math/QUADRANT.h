// The quadrants and axes of the plane with y growing upward, and the sign tests of a point.
#pragma once

#include <string>

#include <glm/vec2.hpp>

namespace ze::math::QUADRANT {

enum Type : unsigned {
    TOP_RIGHT = 0,
    TOP_LEFT = 1,
    BOTTOM_LEFT = 2,
    BOTTOM_RIGHT = 3,
    ON_X_AXIS = 4,
    ON_Y_AXIS = 5,
    ORIGIN = 6,
};

/// A coordinate of at most this magnitude lies on the axis.
inline constexpr float TOLERANCE = 1e-5f;

/// The name of the value; "unknown QUADRANT type:" with the number above 6.
[[nodiscard]] std::string to_string(unsigned type);

[[nodiscard]] bool is_left(const glm::vec2& point) noexcept;
[[nodiscard]] bool is_right(const glm::vec2& point) noexcept;
[[nodiscard]] bool is_top(const glm::vec2& point) noexcept;
[[nodiscard]] bool is_bottom(const glm::vec2& point) noexcept;
[[nodiscard]] bool is_on_y_axis(const glm::vec2& point) noexcept;
[[nodiscard]] bool is_on_x_axis(const glm::vec2& point) noexcept;

}  // namespace ze::math::QUADRANT
