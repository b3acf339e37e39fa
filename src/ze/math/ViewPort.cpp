#include "ze/math/ViewPort.h"

#include "ze/math/Rect.h"
#include "ze/tools/format.h"

#include <QPoint>
#include <QPointF>

#include <cmath>

namespace ze::math {

glm::vec2 ViewPort::get_ndc(const QPoint& pixel) const noexcept {
    const auto px = static_cast<float>(pixel.x());
    const auto py = static_cast<float>(pixel.y());
    return {2.0f * px / w - 1.0f, 1.0f - 2.0f * py / h};
}

glm::vec2 ViewPort::middle() const noexcept {
    return {w / 2.0f, h / 2.0f};
}

QPointF ViewPort::middle_qpoint() const noexcept {
    const glm::vec2 point = middle();
    return {point.x, point.y};
}

Rect ViewPort::rect() const noexcept {
    return {0.0f, 0.0f, w, h};
}

std::string ViewPort::to_string() const {
    const float ratio = w / h;
    const float aspect = std::isfinite(ratio) ? ratio : 1.0f;
    return str::sprintF("%2.2f / %2.2f, aspect:%2.2f", static_cast<double>(w),
                        static_cast<double>(h), static_cast<double>(aspect));
}

}  // namespace ze::math
