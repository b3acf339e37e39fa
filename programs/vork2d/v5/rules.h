// The numbers of the live game: those of a rally, and what the desktop adds to them.
#pragma once

#include "vork2d/rally/rules.h"

namespace vork2d::v5::rules {

using namespace rally::rules;

/// A game with this time of travel or a shorter one is silent; seconds. Its sounds would only cut
/// each other off.
inline constexpr float TM_TRAVEL_SILENT = 0.99f;

/// Interval of the frame timer, milliseconds. It has no effect on the speed of the ball.
inline constexpr int MS_FRAME = 16;

}  // namespace vork2d::v5::rules
