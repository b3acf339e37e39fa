// The numbers that the fourth generation adds. Both clients of a rally must hold the same values:
// each of them computes the whole rally.
#pragma once

namespace vork2d::v4::rules {

/// The sub-step with this number is not flown any more: a frame holds one less. The bound on the
/// cost of a frame.
inline constexpr unsigned GUARD_LIMIT = 9;

/// Part of half a paddle, from its middle, that sends the ball back like a mirror.
inline constexpr float DEAD_ZONE = 0.05f;

/// What is left of half a paddle beside the dead zone; scales the place of a hit back to 0..1.
inline constexpr float LIVE_RANGE = 0.95f;

/// Largest change of the direction's y by one hit, before the direction is made a unit vector
/// again.
inline constexpr float DEFLECTION = 0.85f;

/// One key step of a paddle, field units.
inline constexpr float PADDLE_STEP = 25;

/// Time of travel of a start message that names none, milliseconds.
inline constexpr int MS_TRAVEL = 5000;

/// The time of travel that a message may set, milliseconds.
inline constexpr int MS_TRAVEL_MIN = 1;

}  // namespace vork2d::v4::rules
