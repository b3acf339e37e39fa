// The picture of the field by QPainter alone: no class of ours between the numbers and the pixels.
#pragma once

#include <QPointF>
#include <QSizeF>

class QPainter;

/// Paints the field of 800 by 400 units, both paddles in the middle, in the middle of a canvas of
/// that many pixels.
void bare_picture(QPainter& painter, QSizeF canvas, QPointF ball);
