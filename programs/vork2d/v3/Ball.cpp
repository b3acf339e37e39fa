#include "Ball.h"

#include "ze/qt/GPC.h"
#include "ze/tools/format.h"

namespace vork2d::v3 {

ze::math::Rect Ball::rect() const noexcept {
    return {pos.x - size / 2, pos.y - size / 2, size, size};
}

void Ball::draw(ze::qt::GPC& gpc) const {
    gpc.fill_rect(rect(), Qt::white);
}

std::string Ball::to_string() const {
    return ze::str::xprintF(0, "pos:$, dir:$, velocity:$", pos, dir, velocity);
}

}  // namespace vork2d::v3
