// A line without ends, given by a point and a direction. For a piece of it see Segment.
#pragma once

#include <optional>
#include <string>

#include <glm/vec2.hpp>

namespace ze::math {

struct Line {
    glm::vec2 p{0.0f};    ///< a point on the line
    glm::vec2 dir{0.0f};  ///< its direction, of any length

    Line() noexcept = default;
    Line(const glm::vec2& point, const glm::vec2& direction) noexcept : p(point), dir(direction) {}
    Line(float x, float y, float dx, float dy) noexcept : p(x, y), dir(dx, dy) {}

    /// The line that starts in `a` and reaches `b` at the parameter 1.
    [[nodiscard]] static Line from_points(const glm::vec2& a, const glm::vec2& b) noexcept;

    /// True when the direction is longer than `eps`.
    [[nodiscard]] bool is_valid(float eps) const noexcept;

    /// The point at the parameter `t`, counted in lengths of `dir`.
    [[nodiscard]] glm::vec2 point(float t) const noexcept;

    /// The distance from the line, at least 0; from its point when the direction is zero.
    [[nodiscard]] float distance_to_point(const glm::vec2& q) const noexcept;

    /// Where the lines meet; nothing for parallel lines, even when they are the same, and for a
    /// zero direction. The tolerances are absolute and do not scale with the directions.
    [[nodiscard]] std::optional<glm::vec2> intersects(const Line& other) const noexcept;
    [[nodiscard]] static std::optional<glm::vec2> intersects(const glm::vec2& p1,
                                                             const glm::vec2& d1,
                                                             const glm::vec2& p2,
                                                             const glm::vec2& d2) noexcept;

    [[nodiscard]] std::string to_string() const;

    friend bool operator==(const Line&, const Line&) noexcept = default;
};

}  // namespace ze::math
