#include "Paddle.h"

#include "ze/qt/GPC.h"

namespace vork2d::v2 {

ze::math::Rect Paddle::rect() const noexcept {
    return {pos.x - size.width / 2, pos.y - size.height / 2, size.width, size.height};
}

void Paddle::draw(ze::qt::GPC& gpc) const {
    gpc.fill_rect(rect(), color);
}

}  // namespace vork2d::v2
