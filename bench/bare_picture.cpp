#include "bare_picture.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace {

void bare_text(QPainter& painter, QPointF pos, const QString& text, const QColor& color) {
    painter.save();
    QFont font = painter.font();
    font.setPointSize(16);
    painter.setFont(font);
    painter.setPen(color);
    painter.translate(pos);
    painter.scale(1, -1);
    painter.drawText(QPointF(0, -QFontMetricsF(painter.font()).descent()), text);
    painter.restore();
}

void bare_line(QPainter& painter, QPointF from, QPointF to) {
    painter.save();
    QPen pen(QBrush(Qt::white), 0.5, Qt::DotLine);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawLine(from, to);
    painter.restore();
}

}  // namespace

void bare_picture(QPainter& painter, QSizeF canvas, QPointF ball) {
    static const QString text = QStringLiteral("0");
    const double scale = std::min(canvas.width() / 800, canvas.height() / 400);
    painter.resetTransform();
    painter.translate(canvas.width() / 2, canvas.height() / 2);
    painter.scale(scale, -scale);
    painter.fillRect(QRectF(-400, 200, 800, -400), Qt::black);
    bare_text(painter, {-350, 160}, text, QColor(255, 255, 0, 128));
    const double width = QFontMetricsF(painter.font()).horizontalAdvance(text);
    bare_text(painter, {350 - width, 160}, text, QColor(255, 255, 255, 128));
    painter.fillRect(QRectF(-385, 40, 10, -80), Qt::yellow);
    painter.fillRect(QRectF(375, 40, 10, -80), Qt::white);
    painter.fillRect(QRectF(ball.x() - 5, ball.y() + 5, 10, -10), Qt::white);
    bare_line(painter, {-400, 0}, {400, 0});
    bare_line(painter, {0, 200}, {0, -200});
}
