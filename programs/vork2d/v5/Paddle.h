// A paddle of the field. It moves in y only; who may move it is the field's affair.
#pragma once

#include "ze/math/Rect.h"
#include "ze/math/Size.h"

#include "vork2d/rally/Paddle.h"

#include <QColor>

#include <string>

#include <glm/vec2.hpp>

namespace ze::qt {
class GPC;
}

namespace vork2d::v5 {

struct Paddle {
    glm::vec2 pos{0, 0};  ///< centre, field units
    ze::math::Size size{rally::rules::PADDLE_WIDTH, rally::rules::PADDLE_HEIGHT};
    std::string name;  ///< "LEFT" or "RIGHT", for the log
    QColor color = Qt::white;

    [[nodiscard]] ze::math::Rect rect() const noexcept {
        return {pos.x - size.width / 2, pos.y - size.height / 2, size.width, size.height};
    }
    /// As the rules know it.
    [[nodiscard]] rally::Paddle bare() const noexcept { return {pos, {size.width, size.height}}; }

    void draw(ze::qt::GPC& gpc) const;
};

}  // namespace vork2d::v5
