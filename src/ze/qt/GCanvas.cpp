#include "ze/qt/GCanvas.h"

#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/qt/GPC.h"

#include <QMouseEvent>
#include <QPainter>

namespace ze::qt {

GCanvas::GCanvas(QWidget* parent) : GWidget(parent) {}

void GCanvas::set_coord_system(coord_system::Type type) {
    if (type != coord_system_type) {
        coord_system_type = type;
        update();
    }
}

bool GCanvas::is_coord_SCREEN() const noexcept {
    return coord_system_type == coord_system::SCREEN;
}

bool GCanvas::is_coord_CARTESIAN() const noexcept {
    return coord_system_type == coord_system::CARTESIAN;
}

bool GCanvas::is_coord_NDC() const noexcept {
    return coord_system_type == coord_system::NDC;
}

bool GCanvas::is_coord_UV() const noexcept {
    return coord_system_type == coord_system::UV;
}

void GCanvas::set_view_size(float w, float h) {
    if (!is_coord_CARTESIAN()) {
        pp_format(log::ERROR, 0,
                  "GCanvas::set_view_size, w:$, h:$ only valid for CARTESIAN, current system:'$'",
                  w, h, coord_system::to_string(coord_system_type));
        return;
    }
    if (w <= 0.0F || h <= 0.0F) {
        pp_format(log::ERROR, 0, "GCanvas::set_view_size, invalid size, w:$, h:$", w, h);
        return;
    }
    view_size = {w, h};
    pp_format(log::INFO, 0, "GCanvas::set_view_size, $x$", w, h);
    update();
}

glm::vec2 GCanvas::pos_from_mouse_event(const QMouseEvent* ev) const {
    if (ev == nullptr) {
        nullPointerHandling("src/ze/qt/GCanvas", __LINE__, QStringLiteral("ev == NULL"));
    }
    const QPoint pixel = ev->position().toPoint();
    return convert_to_coord_system(glm::vec2(pixel.x(), pixel.y()));
}

void GCanvas::paintEvent(QPaintEvent* /*ev*/) {
    QPainter painter(this);
    GPC gpc(painter);
    const math::ViewPort vp(static_cast<float>(width()), static_cast<float>(height()));
    const math::Rect rView = get_view_rect(vp);
    if (log_viewport) {
        pp_format(log::DEBUG, 0, "VIEWPORT: {$}, rView:{$}", vp, rView);
    }
    setup_transform(gpc, vp);
    if (!clip_enabled) {
        draw(gpc, rView);
        return;
    }
    const GPC_Guard guard(gpc);
    painter.setClipRect(QRectF(rView.x, rView.y, rView.w, rView.h), Qt::ReplaceClip);
    draw(gpc, rView);
}

void GCanvas::draw(GPC& /*gpc*/, const math::Rect& /*rView*/) {}

void GCanvas::draw_string_screen(GPC& gpc, const glm::vec2& pos, const QString& text,
                                 int pointSize) const {
    const GPC_Guard guard(gpc);
    QPainter& painter = gpc.get_painter();
    painter.resetTransform();
    if (pointSize > 0) {
        gpc.set_font_point_size(static_cast<float>(pointSize));
    }
    gpc.draw_string(convert_from_coord_system(pos), text);
}

}  // namespace ze::qt
