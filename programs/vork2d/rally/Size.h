// Width and height in field units.
#pragma once

namespace vork2d::rally {

struct Size {
    float width = 0;
    float height = 0;
};

}  // namespace vork2d::rally
