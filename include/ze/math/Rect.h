// A rectangle in float units with y growing upward: (x, y) is its lower left corner and `top` its
// larger y. It takes any values; width and height may be negative until `normalized` is asked.
#pragma once

#include "ze/math/Segment.h"
#include "ze/math/Size.h"

#include <string>
#include <vector>

#include <glm/vec2.hpp>

namespace ze::math {

/// A point where a segment meets the border of a rectangle.
struct RectHit {
    glm::vec2 point{0.0f};
    unsigned compass = 0;  ///< place on the border, numbered as in `Rect::pos_compass`
    float t = 0.0f;        ///< place along the segment, 0 at its start and 1 at its end

    friend bool operator==(const RectHit&, const RectHit&) noexcept = default;
};

template <typename T>
using GResultArray = std::vector<T>;

/// The answer of `Rect::get_first_intersection`; `hit` means something only when it was found.
struct RectFirstHit {
    RectHit hit;
    bool flagFound = false;

    friend bool operator==(const RectFirstHit&, const RectFirstHit&) noexcept = default;
};

struct Rect {
    float x = 0.0f;
    float y = 0.0f;
    float w = 0.0f;
    float h = 0.0f;

    Rect() noexcept = default;
    Rect(float left, float bottom, float width, float height) noexcept
        : x(left), y(bottom), w(width), h(height) {}
    Rect(const glm::vec2& position, const glm::vec2& size) noexcept
        : Rect(position.x, position.y, size.x, size.y) {}
    Rect(const glm::vec2& position, const Size& size) noexcept
        : Rect(position.x, position.y, size.width, size.height) {}

    /// The rectangle with the two points as opposite corners, in any order.
    [[nodiscard]] static Rect from_positions(const glm::vec2& a, const glm::vec2& b) noexcept;

    [[nodiscard]] glm::vec2 pos() const noexcept { return {x, y}; }
    [[nodiscard]] Size size() const noexcept { return {w, h}; }

    [[nodiscard]] float left() const noexcept { return x; }
    [[nodiscard]] float right() const noexcept { return x + w; }
    [[nodiscard]] float top() const noexcept { return y + h; }
    [[nodiscard]] float bottom() const noexcept { return y; }

    [[nodiscard]] glm::vec2 top_left() const noexcept { return {left(), top()}; }
    [[nodiscard]] glm::vec2 top_right() const noexcept { return {right(), top()}; }
    [[nodiscard]] glm::vec2 bottom_left() const noexcept { return {left(), bottom()}; }
    [[nodiscard]] glm::vec2 bottom_right() const noexcept { return {right(), bottom()}; }
    [[nodiscard]] glm::vec2 center() const noexcept { return point(0.5f, 0.5f); }

    /// The horizontal edges, from left to right.
    [[nodiscard]] Segment line_top() const noexcept { return {top_left(), top_right()}; }
    [[nodiscard]] Segment line_bottom() const noexcept { return {bottom_left(), bottom_right()}; }

    /// The vertical edges, from the top down.
    [[nodiscard]] Segment line_left() const noexcept { return {top_left(), bottom_left()}; }
    [[nodiscard]] Segment line_right() const noexcept { return {top_right(), bottom_right()}; }

    /// A point of the border, clockwise from 0, the top centre, to 7, the top left corner: the
    /// odd numbers are corners. Above 7 is logged as an error and gives the top left corner.
    [[nodiscard]] glm::vec2 pos_compass(unsigned compass) const;

    /// The point at the fractions `u` of the width and `v` of the height.
    [[nodiscard]] glm::vec2 point(float u, float v) const noexcept {
        return {x + u * w, y + v * h};
    }

    /// Inside the rectangle grown by `eps` on each side, borders included.
    [[nodiscard]] bool contains(const glm::vec2& q, float eps = 0.0f) const noexcept;
    [[nodiscard]] bool contains(const Rect& other, float eps = 0.0f) const noexcept;

    /// Inside with tolerance, and at most `eps` from the line of one of the edges.
    [[nodiscard]] bool contains_on_border(const glm::vec2& q, float eps) const noexcept;

    /// True when the two share an area; touching edges do not count.
    [[nodiscard]] bool overlaps(const Rect& other) const noexcept;

    /// True when the two share a point; touching edges count.
    [[nodiscard]] bool intersects(const Rect& other) const noexcept;

    /// As `intersects`, with this rectangle grown by `eps` on each side.
    [[nodiscard]] bool touches(const Rect& other, float eps) const noexcept;

    /// The common rectangle; an empty one at the origin when there is none.
    [[nodiscard]] Rect intersection(const Rect& other) const noexcept;

    /// The smallest rectangle that holds both.
    [[nodiscard]] Rect united(const Rect& other) const noexcept;

    /// The same area with width and height not negative.
    [[nodiscard]] Rect normalized() const noexcept;

    void move(const glm::vec2& distance) noexcept;
    [[nodiscard]] Rect moved(const glm::vec2& distance) const noexcept;

    /// Shifts the rectangle so that its centre is the point.
    void set_center(const glm::vec2& point) noexcept;

    /// Moves each edge by its number along its axis: positive numbers grow the rectangle at the
    /// right and the top, and shrink it at the left and the bottom.
    [[nodiscard]] Rect adjusted(float left, float top, float right, float bottom) const noexcept;

    /// Moves all four edges inward by `f`.
    [[nodiscard]] Rect shrinked(float f) const noexcept;

    /// The same as `shrinked`, inward too: who wants growth passes a negative number.
    [[nodiscard]] Rect expanded(float f) const noexcept;

    /// Moves the left and right edges inward by a part of the width, but the top and bottom edges
    /// outward by a part of the height: the rectangle gets narrower and higher.
    [[nodiscard]] Rect adjusted_percent(float percent) const noexcept;
    [[nodiscard]] Rect adjusted_ratio(float ratio) const noexcept;

    [[nodiscard]] bool is_valid(float eps = 0.0f) const noexcept { return w >= -eps && h >= -eps; }
    [[nodiscard]] bool is_empty(float eps = 0.0f) const noexcept { return w <= eps || h <= eps; }
    explicit operator bool() const noexcept { return w > 0.0f && h > 0.0f; }

    /// The point of the normalised rectangle that is nearest to `q`, which is `q` itself inside.
    [[nodiscard]] glm::vec2 closest_point(const glm::vec2& q) const noexcept;
    [[nodiscard]] float distance_to_point(const glm::vec2& q) const noexcept;

    [[nodiscard]] float area() const noexcept { return w * h; }
    [[nodiscard]] float perimeter() const noexcept { return 2.0f * (w + h); }

    /// True when an end of the segment is inside by `contains`, or when it crosses an edge.
    [[nodiscard]] bool intersects(const Segment& segment, float eps = 0.0f) const noexcept;

    /// The points where the segment meets the border: its start and its end when they lie there,
    /// then its crossings with the top, bottom, left and right edge, each place once.
    [[nodiscard]] GResultArray<RectHit> get_intersections(const Segment& segment) const;

    /// The hit with the smallest `t`, the first one on a tie.
    [[nodiscard]] RectFirstHit get_first_intersection(const Segment& segment) const;

    /// "x, y, w, h" with two decimals each, for the log.
    [[nodiscard]] std::string to_string() const;

    friend bool operator==(const Rect&, const Rect&) noexcept = default;
};

}  // namespace ze::math
