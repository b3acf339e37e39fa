// A side of the field or one of the four directions. It is no angle and has no diagonal.
#pragma once

#include <string>

namespace ze::math::ORIENT2D {

enum Type : unsigned {
    LEFT = 0,
    RIGHT = 1,
    UP = 2,
    DOWN = 3,
};

/// The name of the value, such as "LEFT"; "ORIENT2D-type-unknown:" with the number above 3.
[[nodiscard]] std::string to_string(unsigned type);

/// The value of an exact name; any other text is logged as an error and gives `LEFT`.
[[nodiscard]] Type from_string(const std::string& text);

/// The other side of the same axis; a number above 3 is logged as an error and gives `LEFT`.
[[nodiscard]] Type get_opposite(unsigned type);

[[nodiscard]] constexpr bool is_left(unsigned type) noexcept {
    return type == LEFT;
}
[[nodiscard]] constexpr bool is_right(unsigned type) noexcept {
    return type == RIGHT;
}
[[nodiscard]] constexpr bool is_up(unsigned type) noexcept {
    return type == UP;
}
[[nodiscard]] constexpr bool is_down(unsigned type) noexcept {
    return type == DOWN;
}

}  // namespace ze::math::ORIENT2D
