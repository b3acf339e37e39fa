#include "ze/math/Line.h"

#include "ze/tools/format.h"

#include <cmath>

#include <glm/geometric.hpp>

namespace ze::math {

namespace {

constexpr float MIN_SQUARED_LENGTH = 1e-10f;  // directions up to this count as zero
constexpr float MIN_CROSS = 1e-5f;            // directions up to this count as parallel

}  // namespace

Line Line::from_points(const glm::vec2& a, const glm::vec2& b) noexcept {
    return {a, b - a};
}

bool Line::is_valid(float eps) const noexcept {
    return eps * eps < glm::dot(dir, dir);
}

glm::vec2 Line::point(float t) const noexcept {
    return p + t * dir;
}

float Line::distance_to_point(const glm::vec2& q) const noexcept {
    const float len = glm::length(dir);
    if (len <= 0.0f) {
        return glm::distance(p, q);
    }
    return std::abs(dir.y * (q.x - p.x) - dir.x * (q.y - p.y)) / len;
}

std::optional<glm::vec2> Line::intersects(const Line& other) const noexcept {
    return intersects(p, dir, other.p, other.dir);
}

std::optional<glm::vec2> Line::intersects(const glm::vec2& p1, const glm::vec2& d1,
                                          const glm::vec2& p2, const glm::vec2& d2) noexcept {
    if (glm::dot(d1, d1) <= MIN_SQUARED_LENGTH || glm::dot(d2, d2) <= MIN_SQUARED_LENGTH) {
        return std::nullopt;
    }
    const float cross = d1.x * d2.y - d2.x * d1.y;
    if (std::abs(cross) <= MIN_CROSS) {
        return std::nullopt;
    }
    const float t = ((p2.x - p1.x) * d2.y - (p2.y - p1.y) * d2.x) / cross;
    return p1 + t * d1;
}

std::string Line::to_string() const {
    return str::xprintF(0, "Line{p:$, dir:$}", p, dir);
}

}  // namespace ze::math
