// How a rally begins, and how fast it is.
#pragma once

#include "Ball.h"
#include "Court.h"
#include "SIDE.h"

#include <glm/vec2.hpp>

namespace vork2d::rally {

/// The line of a serve, in field units: from the face of the starter's paddle to the top wall, and
/// from there to the face of the other one.
struct Serve {
    glm::vec2 ptStart;
    glm::vec2 ptTarget;
    float yTopBall;            ///< of the ball's centre at the top wall
    glm::vec2 ptTargetMirror;  ///< the target mirrored at the top wall: the ball is aimed there
};

/// Puts the ball at the face of the starter's paddle and aims it through the top wall at the middle
/// of the other one. Its speed stays.
Serve serve(Ball& ball, const Court& court, SIDE sideStart) noexcept;

/// The speed that takes a ball over a field of that width in that time of travel, in seconds; field
/// units per second.
[[nodiscard]] inline float speed(float fieldWidth, float tmTravel) noexcept {
    return fieldWidth / tmTravel;
}

/// The time of travel in seconds: what the ball needs for the field's width. 0 counts as 1 ms.
[[nodiscard]] float tm_travel_from_ms(unsigned long long ms) noexcept;

/// The time of travel in milliseconds, limited to 1..10000 although a rally may run with another.
[[nodiscard]] unsigned ms_travel(float tmTravel) noexcept;

}  // namespace vork2d::rally
