#include "ze/log/pp.h"
#include "ze/qt/GCanvas.h"
#include "ze/qt/GPC.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace ze::qt {

namespace {

// A value from outside the enumeration can only come from a cast.
bool is_known(coord_system::Type type, const char* errorFormat) {
    if (type <= coord_system::UV) {
        return true;
    }
    pp_error(errorFormat, static_cast<unsigned>(type));
    return false;
}

}  // namespace

bool GCanvas::has_area() const noexcept {
    return width() >= 1 && height() >= 1;
}

float GCanvas::scale_for(float w, float h) const noexcept {
    return is_coord_CARTESIAN() ? std::min(w / view_size.width, h / view_size.height)
                                : std::min(w, h) * 0.5F;
}

glm::vec2 GCanvas::convert_to_coord_system(const glm::vec2& p) const {
    if (is_coord_SCREEN()) {
        return p;
    }
    if (!is_known(coord_system_type, "GCanvas::convert_to_coord_system, unknown coordSystem:$") ||
        !has_area()) {
        return {0.0F, 0.0F};
    }
    const auto w = static_cast<float>(width());
    const auto h = static_cast<float>(height());
    if (is_coord_UV()) {
        return {p.x / w, p.y / h};
    }
    const float s = scale_for(w, h);
    return {(p.x - w * 0.5F) / s, -(p.y - h * 0.5F) / s};
}

glm::vec2 GCanvas::convert_from_coord_system(const glm::vec2& p) const {
    if (is_coord_SCREEN()) {
        return p;
    }
    if (!is_known(coord_system_type, "GCanvas::convert_from_coord_system, unknown coordSystem:$") ||
        !has_area()) {
        return {0.0F, 0.0F};
    }
    const auto w = static_cast<float>(width());
    const auto h = static_cast<float>(height());
    if (is_coord_UV()) {
        return {p.x * w, p.y * h};
    }
    const float s = scale_for(w, h);
    return {w * 0.5F + p.x * s, h * 0.5F - p.y * s};
}

math::QUADRANT::Type GCanvas::quadrant_from_point(const glm::vec2& p) const {
    using namespace math;
    if (std::isnan(p.x) || std::isnan(p.y)) {
        pp_error("GCanvas::quadrant_from_point, invalid point:$", p);
        return QUADRANT::ORIGIN;
    }
    const bool onX = QUADRANT::is_on_x_axis(p);
    const bool onY = QUADRANT::is_on_y_axis(p);
    if (onX || onY) {
        return onX && onY ? QUADRANT::ORIGIN : onX ? QUADRANT::ON_X_AXIS : QUADRANT::ON_Y_AXIS;
    }
    if (p.x > 0.0F) {
        return p.y > 0.0F ? QUADRANT::TOP_RIGHT : QUADRANT::BOTTOM_RIGHT;
    }
    return p.y > 0.0F ? QUADRANT::TOP_LEFT : QUADRANT::BOTTOM_LEFT;
}

math::Rect GCanvas::get_view_rect(const math::ViewPort& vp) const {
    switch (coord_system_type) {
        case coord_system::SCREEN:
            break;
        case coord_system::CARTESIAN:
            return {view_size.width * -0.5F, view_size.height * -0.5F, view_size.width,
                    view_size.height};
        case coord_system::NDC:
            return {-1.0F, -1.0F, 2.0F, 2.0F};
        case coord_system::UV:
            return {0.0F, 0.0F, 1.0F, 1.0F};
        default:
            is_known(coord_system_type, "GCanvas::get_view_rect, unknown coordSystem:$");
    }
    return {0.0F, 0.0F, vp.w, vp.h};
}

void GCanvas::setup_transform(GPC& gpc, const math::ViewPort& vp) const {
    gpc.get_painter().resetTransform();
    if (!is_known(coord_system_type, "GCanvas::setup_transform, unknown coordSystem:$")) {
        return;
    }
    if (is_coord_UV()) {
        gpc.scale(vp.w, vp.h);
    } else if (!is_coord_SCREEN()) {
        const float s = scale_for(vp.w, vp.h);
        gpc.translate(vp.middle());
        gpc.scale(s, -s);
    }
}

float GCanvas::line_height_logical(const GPC& gpc) const {
    const auto w = static_cast<float>(width());
    const auto h = static_cast<float>(height());
    switch (coord_system_type) {
        case coord_system::CARTESIAN:
        case coord_system::NDC:
            return gpc.line_height() / scale_for(w, h);
        case coord_system::UV:
            return gpc.line_height() / h;
        default:
            return gpc.line_height();
    }
}

}  // namespace ze::qt
