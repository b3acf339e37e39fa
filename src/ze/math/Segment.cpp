#include "ze/math/Segment.h"

#include "ze/math/Line.h"
#include "ze/tools/format.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include <glm/geometric.hpp>

namespace ze::math {

namespace {

float cross(const glm::vec2& a, const glm::vec2& b) noexcept {
    return a.x * b.y - a.y * b.x;
}

// Written so that a NaN is outside.
bool is_in_unit_range(float t) noexcept {
    return t >= 0.0f && t <= 1.0f;
}

}  // namespace

glm::vec2 Segment::dir() const noexcept {
    return end - start;
}

float Segment::length() const noexcept {
    return glm::length(dir());
}

glm::vec2 Segment::center() const noexcept {
    return (start + end) * 0.5f;
}

glm::vec2 Segment::point(float t) const noexcept {
    return start + t * (end - start);
}

float Segment::distance_to_point(const glm::vec2& q) const noexcept {
    const glm::vec2 d = dir();
    const float squared = glm::dot(d, d);
    if (squared <= 0.0f) {
        return glm::distance(start, q);
    }
    const float t = std::clamp(glm::dot(q - start, d) / squared, 0.0f, 1.0f);
    return glm::distance(point(t), q);
}

std::optional<glm::vec2> Segment::intersects(const glm::vec2& a, const glm::vec2& b,
                                             const glm::vec2& c, const glm::vec2& d) noexcept {
    const glm::vec2 dir1 = b - a;
    const glm::vec2 dir2 = d - c;
    const float denominator = cross(dir1, dir2);
    if (std::abs(denominator) < FLT_EPSILON) {
        return std::nullopt;
    }
    const float t = cross(c - a, dir2) / denominator;
    const float u = cross(c - a, dir1) / denominator;
    if (!is_in_unit_range(t) || !is_in_unit_range(u)) {
        return std::nullopt;
    }
    return a + t * dir1;
}

std::optional<glm::vec2> Segment::intersects(const Segment& other) const noexcept {
    return intersects(start, end, other.start, other.end);
}

bool Segment::contains_point(const glm::vec2& q, float eps) const noexcept {
    const glm::vec2 d = dir();
    const float squared = glm::dot(d, d);
    if (squared <= 0.0f) {
        return glm::distance(start, q) <= eps;
    }
    const float projection = glm::dot(q - start, d);
    return std::abs(cross(d, q - start)) / std::sqrt(squared) <= eps && projection >= -eps &&
           projection <= squared + eps;
}

bool Segment::is_valid(float eps) const noexcept {
    return length() > eps;
}

bool Segment::is_parallel(const Segment& other, float eps) const noexcept {
    return std::abs(cross(dir(), other.dir())) <= eps;
}

bool Segment::is_orthogonal(const Segment& other, float eps) const noexcept {
    return std::abs(glm::dot(dir(), other.dir())) <= eps;
}

bool Segment::is_same_direction(const Segment& other, float eps) const noexcept {
    return is_parallel(other, eps) && glm::dot(dir(), other.dir()) > 0.0f;
}

bool Segment::is_opposite_direction(const Segment& other, float eps) const noexcept {
    return is_parallel(other, eps) && glm::dot(dir(), other.dir()) < 0.0f;
}

bool Segment::is_left(const glm::vec2& q, float eps) const noexcept {
    return cross(dir(), q - start) > eps;
}

bool Segment::is_right(const glm::vec2& q, float eps) const noexcept {
    return cross(dir(), q - start) < -eps;
}

bool Segment::is_collinear(const glm::vec2& q, float eps) const noexcept {
    return std::abs(cross(dir(), q - start)) <= eps;
}

Line Segment::line() const noexcept {
    return Line::from_points(start, end);
}

std::string Segment::to_string() const {
    return str::xprintF(0, "$ === $", start, end);
}

}  // namespace ze::math
