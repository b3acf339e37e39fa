#include "ze/math/Rect.h"

#include "ze/log/pp.h"
#include "ze/tools/format.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include <glm/geometric.hpp>

namespace ze::math {

namespace {

constexpr float HIT_TOLERANCE = 1e-5f;  // of `get_intersections`, in field units

Rect from_edges(float left, float top, float right, float bottom) noexcept {
    return {left, bottom, right - left, top - bottom};
}

// The edges of the common area, which has a negative size when there is none.
Rect common(const Rect& a, const Rect& b) noexcept {
    return from_edges(std::max(a.left(), b.left()), std::min(a.top(), b.top()),
                      std::min(a.right(), b.right()), std::max(a.bottom(), b.bottom()));
}

Rect grown(const Rect& rect, float eps) noexcept {
    return rect.adjusted(-eps, eps, eps, -eps);
}

bool is_near(float a, float b) noexcept {
    return std::abs(a - b) <= HIT_TOLERANCE;
}

// The compass number by the edges that the point lies on; nothing when it lies on none.
std::optional<unsigned> compass_of(const Rect& rect, const glm::vec2& point) noexcept {
    const bool top = is_near(point.y, rect.top());
    const bool bottom = is_near(point.y, rect.bottom());
    const bool left = is_near(point.x, rect.left());
    const bool right = is_near(point.x, rect.right());
    const std::array<bool, 8> places = {
        top && !left && !right,    top && right,   right && !top && !bottom, bottom && right,
        bottom && !left && !right, bottom && left, left && !top && !bottom,  top && left};
    const auto place = std::find(places.begin(), places.end(), true);
    if (place == places.end()) {
        return std::nullopt;
    }
    return static_cast<unsigned>(place - places.begin());
}

float place_along(const Segment& segment, const glm::vec2& point) noexcept {
    const glm::vec2 dir = segment.dir();
    const float squared = glm::dot(dir, dir);
    return squared < HIT_TOLERANCE ? 0.0f : glm::dot(point - segment.start, dir) / squared;
}

void add_hit(GResultArray<RectHit>& hits, const RectHit& hit) {
    const bool known = std::any_of(hits.begin(), hits.end(), [&hit](const RectHit& other) {
        return other.compass == hit.compass &&
               glm::distance(other.point, hit.point) <= HIT_TOLERANCE;
    });
    if (!known) {
        hits.push_back(hit);
    }
}

}  // namespace

Rect Rect::from_positions(const glm::vec2& a, const glm::vec2& b) noexcept {
    return from_edges(std::min(a.x, b.x), std::max(a.y, b.y), std::max(a.x, b.x),
                      std::min(a.y, b.y));
}

glm::vec2 Rect::pos_compass(unsigned compass) const {
    switch (compass) {
        case 0:
            return point(0.5f, 1.0f);
        case 1:
            return top_right();
        case 2:
            return point(1.0f, 0.5f);
        case 3:
            return bottom_right();
        case 4:
            return point(0.5f, 0.0f);
        case 5:
            return bottom_left();
        case 6:
            return point(0.0f, 0.5f);
        case 7:
            return top_left();
        default:
            pp_format(log::ERROR, 0, "Rect::pos_compass, compass:$ unknown ! - must be 0...7",
                      compass);
            return top_left();
    }
}

bool Rect::contains(const glm::vec2& q, float eps) const noexcept {
    return q.x >= left() - eps && q.x <= right() + eps && q.y >= bottom() - eps &&
           q.y <= top() + eps;
}

bool Rect::contains(const Rect& other, float eps) const noexcept {
    return contains(other.bottom_left(), eps) && contains(other.top_right(), eps);
}

bool Rect::contains_on_border(const glm::vec2& q, float eps) const noexcept {
    return contains(q, eps) && (std::abs(q.x - left()) <= eps || std::abs(q.x - right()) <= eps ||
                                std::abs(q.y - bottom()) <= eps || std::abs(q.y - top()) <= eps);
}

bool Rect::overlaps(const Rect& other) const noexcept {
    return static_cast<bool>(common(*this, other));
}

bool Rect::intersects(const Rect& other) const noexcept {
    return common(*this, other).is_valid();
}

bool Rect::touches(const Rect& other, float eps) const noexcept {
    return grown(*this, eps).intersects(other);
}

Rect Rect::intersection(const Rect& other) const noexcept {
    const Rect rect = common(*this, other);
    return rect.is_valid() ? rect : Rect();
}

Rect Rect::united(const Rect& other) const noexcept {
    return from_edges(std::min(left(), other.left()), std::max(top(), other.top()),
                      std::max(right(), other.right()), std::min(bottom(), other.bottom()));
}

Rect Rect::normalized() const noexcept {
    return {w < 0.0f ? x + w : x, h < 0.0f ? y + h : y, std::abs(w), std::abs(h)};
}

void Rect::move(const glm::vec2& distance) noexcept {
    x += distance.x;
    y += distance.y;
}

Rect Rect::moved(const glm::vec2& distance) const noexcept {
    return {pos() + distance, size()};
}

void Rect::set_center(const glm::vec2& point) noexcept {
    x = point.x - w * 0.5f;
    y = point.y - h * 0.5f;
}

Rect Rect::adjusted(float left, float top, float right, float bottom) const noexcept {
    return {x + left, y + bottom, w - left + right, h - bottom + top};
}

Rect Rect::shrinked(float f) const noexcept {
    return adjusted(f, -f, -f, f);
}

Rect Rect::expanded(float f) const noexcept {
    return shrinked(f);
}

Rect Rect::adjusted_percent(float percent) const noexcept {
    return adjusted_ratio(percent / 100.0f);
}

Rect Rect::adjusted_ratio(float ratio) const noexcept {
    const float dx = ratio * w;
    const float dy = ratio * h;
    return adjusted(dx, dy, -dx, -dy);
}

glm::vec2 Rect::closest_point(const glm::vec2& q) const noexcept {
    const Rect rect = normalized();
    return {std::clamp(q.x, rect.left(), rect.right()), std::clamp(q.y, rect.bottom(), rect.top())};
}

float Rect::distance_to_point(const glm::vec2& q) const noexcept {
    return glm::distance(closest_point(q), q);
}

bool Rect::intersects(const Segment& segment, float eps) const noexcept {
    if (contains(segment.start, eps) || contains(segment.end, eps)) {
        return true;
    }
    return segment.intersects(line_top()) || segment.intersects(line_bottom()) ||
           segment.intersects(line_left()) || segment.intersects(line_right());
}

GResultArray<RectHit> Rect::get_intersections(const Segment& segment) const {
    struct Edge {
        Segment line;
        unsigned compass;
    };
    GResultArray<RectHit> hits;
    for (const glm::vec2& end : {segment.start, segment.end}) {
        const std::optional<unsigned> compass = compass_of(*this, end);
        if (compass && contains_on_border(end, HIT_TOLERANCE)) {
            add_hit(hits, {end, *compass, place_along(segment, end)});
        }
    }
    for (const Edge& edge : {Edge{line_top(), 0}, Edge{line_bottom(), 4}, Edge{line_left(), 6},
                             Edge{line_right(), 2}}) {
        if (const std::optional<glm::vec2> point = segment.intersects(edge.line)) {
            // Far from the origin a crossing can round to more than the tolerance beside its edge.
            const unsigned compass = compass_of(*this, *point).value_or(edge.compass);
            add_hit(hits, {*point, compass, place_along(segment, *point)});
        }
    }
    return hits;
}

RectFirstHit Rect::get_first_intersection(const Segment& segment) const {
    const GResultArray<RectHit> hits = get_intersections(segment);
    const auto first = std::min_element(
        hits.begin(), hits.end(), [](const RectHit& a, const RectHit& b) { return a.t < b.t; });
    return first == hits.end() ? RectFirstHit() : RectFirstHit{*first, true};
}

std::string Rect::to_string() const {
    return str::xprintF(0, "$, $, $, $", x, y, w, h);
}

}  // namespace ze::math
