// The numbers of a rally, each with its unit. A field unit is the unit of the canvas that the game
// is drawn on: origin in the middle of the field, x to the right, y upward. Both clients of a rally
// must hold the same values, or their serves differ.
#pragma once

#include <limits>

#include <glm/vec2.hpp>

namespace vork2d::rally::rules {

/// A length or a step that does not exceed this is too small to count; field units. It keeps every
/// division of the frame step away from 0.
inline constexpr float EPS = std::numeric_limits<float>::epsilon();

/// The sub-step with this number is not flown any more: a frame holds one less. The bound on the
/// cost of a frame.
inline constexpr unsigned GUARD_LIMIT = 9;

/// Part of half a paddle, from its middle, that sends the ball back like a mirror.
inline constexpr float DEAD_ZONE = 0.05f;

/// What is left of half a paddle beside the dead zone; scales the place of a hit back to 0..1.
inline constexpr float LIVE_RANGE = 0.95f;

/// Largest change of the direction's y by one hit, before the direction is made a unit vector
/// again. More makes the paddle's ends sharper.
inline constexpr float DEFLECTION = 0.85f;

/// The field that the game is played on, field units.
inline constexpr float FIELD_WIDTH = 800.0f;
inline constexpr float FIELD_HEIGHT = 400.0f;

/// Edge of the square ball, field units.
inline constexpr float BALL_SIZE = 10.0f;

/// Direction of the ball before the first serve: (4, 1) as a unit vector.
inline constexpr glm::vec2 BALL_DIR{0.97014254f, 0.24253564f};

/// Width and height of a paddle, field units.
inline constexpr float PADDLE_WIDTH = 10.0f;
inline constexpr float PADDLE_HEIGHT = 80.0f;

/// From the field's left or right edge to the centre of the paddle there, field units.
inline constexpr float PADDLE_INSET = 20.0f;

/// One key step of a paddle, field units.
inline constexpr float PADDLE_STEP = 25.0f;

/// Time of travel at the start, seconds: what the ball needs for the field's width.
inline constexpr float TM_TRAVEL = 5.0f;

/// Time of travel of a start message that names none, milliseconds.
inline constexpr int MS_TRAVEL = 5000;

/// Range of a time of travel that is shown to, and accepted from, a player; milliseconds.
inline constexpr int MS_TRAVEL_MIN = 1;
inline constexpr int MS_TRAVEL_MAX = 10000;

inline constexpr float MS_PER_SECOND = 1000.0f;

}  // namespace vork2d::rally::rules
