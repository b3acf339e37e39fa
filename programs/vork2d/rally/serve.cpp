#include "serve.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vork2d::rally {

Serve serve(Ball& ball, const Court& court, SIDE sideStart) noexcept {
    const float r = ball.radius();
    const glm::vec2 ptLeft{court.paddleLeft.right() + r, court.paddleLeft.pos.y};
    const glm::vec2 ptRight{court.paddleRight.left() - r, court.paddleRight.pos.y};
    const bool fromLeft = sideStart == SIDE::LEFT;

    Serve line{};
    line.yTopBall = 0.5f * court.field.height - r;
    line.ptStart = fromLeft ? ptLeft : ptRight;
    line.ptTarget = fromLeft ? ptRight : ptLeft;
    line.ptTargetMirror = {line.ptTarget.x, 2 * line.yTopBall - line.ptTarget.y};

    ball.pos = line.ptStart;
    const glm::vec2 d = line.ptTargetMirror - line.ptStart;
    ball.dir = d * (1 / std::sqrt(d.x * d.x + d.y * d.y));
    return line;
}

float tm_travel_from_ms(unsigned long long ms) noexcept {
    return static_cast<float>(ms == 0 ? 1 : ms) / rules::MS_PER_SECOND;
}

unsigned ms_travel(float tmTravel) noexcept {
    const float ms = tmTravel * rules::MS_PER_SECOND;
    // Rounding is undefined for what no integer holds; such a time is too long in any case.
    if (!(ms < static_cast<float>(std::numeric_limits<long long>::max()))) {
        return rules::MS_TRAVEL_MAX;
    }
    const auto rounded = static_cast<unsigned>(std::llround(ms));
    return std::clamp<unsigned>(rounded, rules::MS_TRAVEL_MIN, rules::MS_TRAVEL_MAX);
}

}  // namespace vork2d::rally
