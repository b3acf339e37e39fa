// Width and height in float units, of whatever coordinate system its user is in.
#pragma once

#include <string>

#include <glm/vec2.hpp>

namespace ze::math {

struct Size {
    float width = 0.0f;
    float height = 0.0f;

    constexpr Size() noexcept = default;
    constexpr Size(float w, float h) noexcept : width(w), height(h) {}

    [[nodiscard]] constexpr glm::vec2 to_vec() const noexcept { return {width, height}; }

    /// "width, height" with two decimals each, for the log.
    [[nodiscard]] std::string to_string() const;

    friend constexpr bool operator==(const Size&, const Size&) noexcept = default;
};

}  // namespace ze::math
