#include "Paddle.h"

#include "ze/qt/GPC.h"

namespace vork2d::v5 {

void Paddle::draw(ze::qt::GPC& gpc) const {
    gpc.fill_rect(rect(), color);
}

}  // namespace vork2d::v5
