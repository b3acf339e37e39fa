// The measures that the first four generations of the game share: field, ball, paddles, frame.
// A field unit is the unit of the canvas: origin in the middle of the field, x to the right, y
// upward. The live game has its own numbers; what it changes leaves the early ones as they were.
#pragma once

#include "ze/tools/os.h"

#include <limits>

#include <glm/vec2.hpp>

namespace vork2d::early {

inline constexpr float FIELD_WIDTH = 800;
inline constexpr float FIELD_HEIGHT = 400;
inline constexpr int FIELD_MIN_PIXELS = 100;  // height of the widget

/// Edge of the square ball, field units.
inline constexpr float BALL_SIZE = 10;

/// Direction of the ball before anything has aimed it: (4, 1) as a unit vector.
inline constexpr glm::vec2 BALL_DIR{0.97014254f, 0.24253564f};

/// The inset goes from the field's edge to the centre of the paddle there; all in
/// field units.
inline constexpr float PADDLE_WIDTH = 10;
inline constexpr float PADDLE_HEIGHT = 80;
inline constexpr float PADDLE_INSET = 20;

/// Time of travel at the start, seconds: what the ball needs for the field's width.
inline constexpr float TM_TRAVEL = 5;

/// The time of travel that a player can choose, milliseconds.
inline constexpr int MS_TRAVEL_MIN = 100;
inline constexpr int MS_TRAVEL_MAX = 10000;

/// The interval of the frame timer that a player can choose, milliseconds.
inline constexpr int MS_REFRESH_MIN = 1;
inline constexpr int MS_REFRESH_MAX = 1000;

inline constexpr float MS_PER_SECOND = 1000;

/// A length that does not exceed this is too small to count; field units.
inline constexpr float EPS = std::numeric_limits<float>::epsilon();

/// Interval of the frame timer on this device, milliseconds.
[[nodiscard]] inline int ms_frame() noexcept {
    return ze::os::is_mobile() ? 33 : 16;
}

}  // namespace vork2d::early
