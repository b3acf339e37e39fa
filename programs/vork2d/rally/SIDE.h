// The two sides of the field, and of a player.
#pragma once

namespace vork2d::rally {

enum class SIDE : unsigned char { LEFT, RIGHT };

}  // namespace vork2d::rally
