// A straight piece between two points. All tolerances are absolute, in the units of the points.
#pragma once

#include <optional>
#include <string>

#include <glm/vec2.hpp>

namespace ze::math {

struct Line;

struct Segment {
    glm::vec2 start{0.0f};
    glm::vec2 end{0.0f};

    Segment() noexcept = default;
    Segment(const glm::vec2& from, const glm::vec2& to) noexcept : start(from), end(to) {}
    Segment(float x1, float y1, float x2, float y2) noexcept : start(x1, y1), end(x2, y2) {}

    [[nodiscard]] float x1() const noexcept { return start.x; }
    [[nodiscard]] float y1() const noexcept { return start.y; }
    [[nodiscard]] float x2() const noexcept { return end.x; }
    [[nodiscard]] float y2() const noexcept { return end.y; }

    /// End minus start, not normalised.
    [[nodiscard]] glm::vec2 dir() const noexcept;
    [[nodiscard]] float length() const noexcept;
    [[nodiscard]] glm::vec2 center() const noexcept;

    /// The start at `t` 0, the end at 1, and on along the same line beyond.
    [[nodiscard]] glm::vec2 point(float t) const noexcept;

    /// The distance to the nearest point of the segment, its ends included.
    [[nodiscard]] float distance_to_point(const glm::vec2& q) const noexcept;

    /// Where the segments a-b and c-d cross, ends included; nothing when they are parallel.
    [[nodiscard]] static std::optional<glm::vec2> intersects(const glm::vec2& a, const glm::vec2& b,
                                                             const glm::vec2& c,
                                                             const glm::vec2& d) noexcept;
    [[nodiscard]] std::optional<glm::vec2> intersects(const Segment& other) const noexcept;

    /// True when the point is at most `eps` off the carrier line and projects onto the segment;
    /// the projection is unnormalised, so its `eps` is in squared units.
    [[nodiscard]] bool contains_point(const glm::vec2& q, float eps) const noexcept;

    /// True when the segment is longer than `eps`.
    [[nodiscard]] bool is_valid(float eps) const noexcept;

    /// Tests of the directions by their cross and dot product, which grow with the lengths.
    [[nodiscard]] bool is_parallel(const Segment& other, float eps) const noexcept;
    [[nodiscard]] bool is_orthogonal(const Segment& other, float eps) const noexcept;
    [[nodiscard]] bool is_same_direction(const Segment& other, float eps) const noexcept;
    [[nodiscard]] bool is_opposite_direction(const Segment& other, float eps) const noexcept;

    /// On which side of the carrier line the point lies, looking from the start to the end.
    [[nodiscard]] bool is_left(const glm::vec2& q, float eps) const noexcept;
    [[nodiscard]] bool is_right(const glm::vec2& q, float eps) const noexcept;
    [[nodiscard]] bool is_collinear(const glm::vec2& q, float eps) const noexcept;

    /// The line through both points. Include Line.h to use it.
    [[nodiscard]] Line line() const noexcept;

    [[nodiscard]] std::string to_string() const;

    friend bool operator==(const Segment&, const Segment&) noexcept = default;
};

}  // namespace ze::math
