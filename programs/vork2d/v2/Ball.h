// The ball: where it is, where it flies and how fast. It knows no rules.
#pragma once

#include "ze/math/Rect.h"

#include "vork2d/early/measures.h"

#include <string>

#include <glm/vec2.hpp>

namespace ze::qt {
class GPC;
}

namespace vork2d::v2 {

struct Ball {
    glm::vec2 pos{0, 0};              ///< centre, field units
    glm::vec2 dir = early::BALL_DIR;  ///< unit vector
    float velocity = 0;               ///< field units per second
    float size = early::BALL_SIZE;    ///< edge of the square, field units
    float travelDistance = 0;         ///< covered in the current flight, field units

    [[nodiscard]] ze::math::Rect rect() const noexcept;
    void draw(ze::qt::GPC& gpc) const;

    [[nodiscard]] bool is_dir_left() const noexcept { return 0 > dir.x; }
    [[nodiscard]] bool is_dir_right() const noexcept { return dir.x > 0; }
    [[nodiscard]] bool is_dir_up() const noexcept { return dir.y > 0; }
    [[nodiscard]] bool is_dir_down() const noexcept { return 0 > dir.y; }

    [[nodiscard]] std::string to_string() const;
};

}  // namespace vork2d::v2
