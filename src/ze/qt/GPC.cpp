#include "ze/qt/GPC.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPen>
#include <QPoint>

namespace ze::qt {

namespace {

QPen make_pen(const QColor& color, float width, Qt::PenStyle style, Cosmetic cosmetic) {
    QPen pen(QBrush(color), width, style);
    pen.setCosmetic(cosmetic == COSMETIC_ON);
    return pen;
}

QPointF to_point(const glm::vec2& v) noexcept {
    return {v.x, v.y};
}

}  // namespace

void GPC::set_anti_alias(bool flag) {
    painter.setRenderHint(QPainter::Antialiasing, flag);
}

void GPC::translate(const glm::vec2& v) {
    painter.translate(to_point(v));
}

void GPC::translate(float dx, float dy) {
    painter.translate(dx, dy);
}

void GPC::translate(const QPoint& p) {
    painter.translate(p);
}

void GPC::scale(float factor) {
    painter.scale(factor, factor);
}

void GPC::scale(float sx, float sy) {
    painter.scale(sx, sy);
}

void GPC::shear(float sh, float sv) {
    painter.shear(sh, sv);
}

void GPC::rotate(float degrees) {
    painter.rotate(degrees);
}

void GPC::fill_rect(float x, float y, float w, float h, const QColor& color) {
    painter.fillRect(QRectF(x, double(y) + h, w, -h), color);
}

void GPC::fill_rect(const math::Rect& r, const QColor& color) {
    fill_rect(r.x, r.y, r.w, r.h, color);
}

void GPC::draw_rect(float x, float y, float w, float h, QColor color, float width,
                    Qt::PenStyle style, Cosmetic cosmetic) {
    draw_rect(math::Rect(x, y, w, h), color, width, style, cosmetic);
}

void GPC::draw_rect(const math::Rect& r, QColor color, float width, Qt::PenStyle style,
                    Cosmetic cosmetic) {
    const GPC_Guard guard(*this);
    set_pen(color, width, style, cosmetic);
    const QRectF rect(r.left(), r.top(), r.w, -r.h);
    painter.drawRects(&rect, 1);
}

void GPC::set_pen(const QColor& color, float width, Qt::PenStyle style, Cosmetic cosmetic) {
    painter.setPen(make_pen(color, width, style, cosmetic));
}

void GPC::draw_line_direct(const glm::vec2& a, const glm::vec2& b) {
    painter.drawLine(to_point(a), to_point(b));
}

void GPC::draw_line(const glm::vec2& a, const glm::vec2& b, QColor color, float width,
                    Qt::PenStyle style, Cosmetic cosmetic) {
    const GPC_Guard guard(*this);
    set_pen(color, width, style, cosmetic);
    draw_line_direct(a, b);
}

void GPC::draw_line(float x1, float y1, float x2, float y2, QColor color, float width,
                    Qt::PenStyle style, Cosmetic cosmetic) {
    draw_line(glm::vec2(x1, y1), glm::vec2(x2, y2), color, width, style, cosmetic);
}

void GPC::draw_line(const math::Segment& s, QColor color, float width, Qt::PenStyle style,
                    Cosmetic cosmetic) {
    draw_line(s.start, s.end, color, width, style, cosmetic);
}

void GPC::fill_circle(const glm::vec2& center, float r, const QColor& color) {
    fill_oval(center, 2.0F * r, 2.0F * r, color);
}

void GPC::fill_circle(float x, float y, float r, const QColor& color) {
    fill_circle(glm::vec2(x, y), r, color);
}

void GPC::draw_circle(const glm::vec2& center, float r, QColor color, float width,
                      Qt::PenStyle style, Cosmetic cosmetic) {
    draw_oval(center, 2.0F * r, 2.0F * r, color, width, style, cosmetic);
}

void GPC::draw_circle(float x, float y, float r, QColor color, float width, Qt::PenStyle style,
                      Cosmetic cosmetic) {
    draw_circle(glm::vec2(x, y), r, color, width, style, cosmetic);
}

void GPC::fill_oval(const glm::vec2& center, float w, float h, const QColor& color) {
    fill_oval(center.x, center.y, w, h, color);
}

void GPC::fill_oval(float x, float y, float w, float h, const QColor& color) {
    if (w <= 0.0F || h <= 0.0F) {
        return;
    }
    QPen pen = painter.pen();
    pen.setStyle(Qt::NoPen);
    const GPC_Guard guard(*this);
    painter.setPen(pen);
    painter.setBrush(QBrush(color));
    painter.drawEllipse(QRectF(x - w * 0.5, y - h * 0.5, w, h));
}

void GPC::draw_oval(const glm::vec2& center, float w, float h, QColor color, float width,
                    Qt::PenStyle style, Cosmetic cosmetic) {
    draw_oval(center.x, center.y, w, h, color, width, style, cosmetic);
}

void GPC::draw_oval(float x, float y, float w, float h, QColor color, float width,
                    Qt::PenStyle style, Cosmetic cosmetic) {
    if (w <= 0.0F || h <= 0.0F) {
        return;
    }
    const GPC_Guard guard(*this);
    set_pen(color, width, style, cosmetic);
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QRectF(x - w * 0.5, y - h * 0.5, w, h));
}

void GPC::draw_text(const glm::vec2& pos, const QString& text, int pointSize, const QColor& color,
                    TextAlignY alignY) {
    const GPC_Guard guard(*this);
    QFont textFont = painter.font();
    textFont.setPointSize(pointSize);
    painter.setFont(textFont);
    painter.setPen(color);
    translate(pos);
    scale(1.0F, -1.0F);
    switch (alignY) {
        case BASELINE:
            painter.drawText(QPointF(0.0, 0.0), text);
            break;
        case TOP:
            painter.drawText(QPointF(0.0, QFontMetricsF(painter.font()).ascent()), text);
            break;
        case BOTTOM:
            painter.drawText(QPointF(0.0, -QFontMetricsF(painter.font()).descent()), text);
            break;
    }
}

void GPC::draw_text(float x, float y, const QString& text, int pointSize, const QColor& color,
                    TextAlignY /*alignY*/) {
    draw_text(glm::vec2(x, y), text, pointSize, color, BASELINE);
}

void GPC::draw_text_screen(float x, float y, const QString& text) {
    painter.drawText(QPointF(x, y), text);
}

void GPC::draw_text_screen(const glm::vec2& pos, const QString& text, int pointSize,
                           const QColor& color) {
    const GPC_Guard guard(*this);
    QFont textFont = painter.font();
    textFont.setPointSize(pointSize);
    painter.setFont(textFont);
    painter.setPen(color);
    draw_text_screen(pos.x, pos.y, text);
}

void GPC::draw_string(const glm::vec2& /*pos*/, const QString& /*text*/) {}

void GPC::draw_string(const glm::vec2& pos, const char* text) {
    draw_string(pos, QString::fromUtf8(text));
}

QFont GPC::font() const {
    return painter.font();
}

math::Size GPC::measure_string(const QString& text) const {
    const QFontMetricsF metrics(painter.font());
    return {static_cast<float>(metrics.horizontalAdvance(text)),
            static_cast<float>(metrics.height())};
}

math::Size GPC::measure_string_bounds(const QString& text) const {
    const QRectF bounds = QFontMetricsF(painter.font()).boundingRect(text);
    return {static_cast<float>(bounds.width()), static_cast<float>(bounds.height())};
}

float GPC::line_height() const {
    return static_cast<float>(QFontMetricsF(painter.font()).lineSpacing());
}

void GPC::set_font_point_size(float size) {
    QFont sized = painter.font();
    sized.setPointSize(static_cast<int>(size));
    painter.setFont(sized);
}

GPC_Guard::GPC_Guard(GPC& theGpc) : gpc(theGpc) {
    gpc.get_painter().save();
}

GPC_Guard::~GPC_Guard() {
    gpc.get_painter().restore();
}

}  // namespace ze::qt
