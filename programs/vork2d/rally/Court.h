// What the ball meets: the walls at the top and the bottom, the fronts of the two paddles, and the
// open edges behind them.
#pragma once

#include "Paddle.h"
#include "Size.h"
#include "rules.h"

namespace vork2d::rally {

struct Court {
    Size field{rules::FIELD_WIDTH, rules::FIELD_HEIGHT};
    Paddle paddleLeft{{-0.5f * field.width + rules::PADDLE_INSET, 0}};
    Paddle paddleRight{{0.5f * field.width - rules::PADDLE_INSET, 0}};
};

}  // namespace vork2d::rally
