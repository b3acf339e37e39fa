// The size of a drawing surface in pixels, with its origin in the upper left corner. It knows
// neither the widget nor the coordinate system that is drawn in.
#pragma once

#include <string>

#include <glm/vec2.hpp>

class QPoint;
class QPointF;

namespace ze::math {

struct Rect;

struct ViewPort {
    float w = 0.0f;
    float h = 0.0f;

    constexpr ViewPort() noexcept = default;
    constexpr ViewPort(float width, float height) noexcept : w(width), h(height) {}

    /// A pixel in normalised device coordinates: -1 to 1 on both axes, y upward. The viewport has
    /// to be valid, an empty one gives values that are not finite.
    [[nodiscard]] glm::vec2 get_ndc(const QPoint& pixel) const noexcept;

    [[nodiscard]] glm::vec2 middle() const noexcept;
    [[nodiscard]] QPointF middle_qpoint() const noexcept;

    /// True when width and height are above 0.
    [[nodiscard]] constexpr bool is_valid() const noexcept { return w > 0.0f && h > 0.0f; }
    constexpr explicit operator bool() const noexcept { return is_valid(); }

    [[nodiscard]] Rect rect() const noexcept;

    /// Width, height and aspect; an aspect that is not finite shows as 1.00.
    [[nodiscard]] std::string to_string() const;

    friend constexpr bool operator==(const ViewPort&, const ViewPort&) noexcept = default;
};

}  // namespace ze::math
