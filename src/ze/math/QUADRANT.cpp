#include "ze/math/QUADRANT.h"

#include "ze/tools/format.h"

#include <array>
#include <cmath>

namespace ze::math::QUADRANT {

std::string to_string(unsigned type) {
    static constexpr std::array<const char*, 7> WORDS = {
        "TOP_RIGHT", "TOP_LEFT", "BOTTOM_LEFT", "BOTTOM_RIGHT", "ON_X_AXIS", "ON_Y_AXIS", "ORIGIN"};
    if (type >= WORDS.size()) {
        return str::xprintF(0, "unknown QUADRANT type:$", type);
    }
    return WORDS[type];
}

bool is_left(const glm::vec2& point) noexcept {
    return point.x < -TOLERANCE;
}

bool is_right(const glm::vec2& point) noexcept {
    return point.x > TOLERANCE;
}

bool is_top(const glm::vec2& point) noexcept {
    return point.y > TOLERANCE;
}

bool is_bottom(const glm::vec2& point) noexcept {
    return point.y < -TOLERANCE;
}

bool is_on_y_axis(const glm::vec2& point) noexcept {
    return std::abs(point.x) <= TOLERANCE;
}

bool is_on_x_axis(const glm::vec2& point) noexcept {
    return std::abs(point.y) <= TOLERANCE;
}

}  // namespace ze::math::QUADRANT
