// The ball of the field: that of the rally, with a picture and a text.
#pragma once

#include "ze/math/Rect.h"

#include "vork2d/rally/Ball.h"

#include <string>

namespace ze::qt {
class GPC;
}

namespace vork2d::v5 {

struct Ball : rally::Ball {
    [[nodiscard]] ze::math::Rect rect() const noexcept {
        return {pos.x - size / 2, pos.y - size / 2, size, size};
    }
    void draw(ze::qt::GPC& gpc) const;

    [[nodiscard]] std::string to_string() const;
};

}  // namespace vork2d::v5
