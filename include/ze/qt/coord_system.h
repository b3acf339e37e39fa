// The coordinate systems in which a canvas can be drawn.
#pragma once

#include <string>

namespace ze::qt::coord_system {

enum Type : unsigned {
    SCREEN = 0,  ///< origin top left, y down, one unit is one pixel
    CARTESIAN =
        1,    ///< origin in the middle, y up, the view size fitted with one scale on both axes
    NDC = 2,  ///< origin in the middle, y up, -1 to 1 along the shorter side
    UV = 3,   ///< origin top left, y down, 0 to 1 on each axis, stretched
};

/// The name of the system; "COORDINATE_SYSTEM:" and the number for any other value.
[[nodiscard]] std::string to_string(Type type);

}  // namespace ze::qt::coord_system
