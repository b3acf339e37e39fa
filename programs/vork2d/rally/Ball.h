// The ball: where it is, where it flies and how fast.
#pragma once

#include "rules.h"

#include <glm/vec2.hpp>

namespace vork2d::rally {

struct Ball {
    glm::vec2 pos{0, 0};              ///< centre, field units
    glm::vec2 dir = rules::BALL_DIR;  ///< unit vector
    float velocity = 0;               ///< field units per second
    float size = rules::BALL_SIZE;    ///< edge of the square, field units
    float travelDistance = 0;         ///< covered in the current rally, field units

    [[nodiscard]] float radius() const noexcept { return size * 0.5f; }

    [[nodiscard]] bool is_dir_left() const noexcept { return 0 > dir.x; }
    [[nodiscard]] bool is_dir_right() const noexcept { return dir.x > 0; }
    [[nodiscard]] bool is_dir_up() const noexcept { return dir.y > 0; }
    [[nodiscard]] bool is_dir_down() const noexcept { return 0 > dir.y; }
};

}  // namespace vork2d::rally
