// A paddle of the field. It moves in y only.
#pragma once

#include "ze/math/Rect.h"
#include "ze/math/Size.h"

#include "vork2d/early/measures.h"

#include <QColor>

#include <string>

#include <glm/vec2.hpp>

namespace ze::qt {
class GPC;
}

namespace vork2d::v2 {

struct Paddle {
    glm::vec2 pos{0, 0};  ///< centre, field units
    ze::math::Size size{early::PADDLE_WIDTH, early::PADDLE_HEIGHT};
    std::string name;  ///< "LEFT" or "RIGHT", for the log
    QColor color = Qt::white;

    [[nodiscard]] ze::math::Rect rect() const noexcept;
    void draw(ze::qt::GPC& gpc) const;
};

}  // namespace vork2d::v2
