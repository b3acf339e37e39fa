// Painter context: the drawing operations of a QPainter for float coordinates, vectors, rectangles
// and segments. It knows that y may point upward. It owns nothing and is made anew for each paint.
#pragma once

#include "ze/math/Rect.h"
#include "ze/math/Segment.h"
#include "ze/math/Size.h"

#include <QColor>
#include <QFont>
#include <QString>

#include <glm/vec2.hpp>

class QPainter;
class QPoint;

namespace ze::qt {

/// Whether a pen keeps its width in pixels under every transform.
enum Cosmetic : unsigned { COSMETIC_OFF = 0, COSMETIC_ON = 1 };

/// Where a text stands above or below its y.
enum TextAlignY : unsigned { BASELINE = 0, TOP = 1, BOTTOM = 2 };

/// All coordinates are those of the painter's present transform; pen widths too, unless they are
/// cosmetic. Each operation leaves the painter as it was, but for set_pen, set_font_point_size,
/// set_anti_alias and the transforms.
class GPC {
public:
    explicit GPC(QPainter& thePainter) noexcept : painter(thePainter) {}

    [[nodiscard]] QPainter& get_painter() const noexcept { return painter; }

    void set_anti_alias(bool flag);
    void translate(const glm::vec2& v);
    void translate(float dx, float dy);
    void translate(const QPoint& p);
    void scale(float factor);
    void scale(float sx, float sy);
    void shear(float sh, float sv);
    /// Degrees, as QPainter::rotate.
    void rotate(float degrees);

    void fill_rect(float x, float y, float w, float h, const QColor& color);
    void fill_rect(const math::Rect& r, const QColor& color);
    void draw_rect(float x, float y, float w, float h, QColor color, float width,
                   Qt::PenStyle style, Cosmetic cosmetic);
    void draw_rect(const math::Rect& r, QColor color, float width, Qt::PenStyle style,
                   Cosmetic cosmetic);

    /// Sets the pen for the operations that take none.
    void set_pen(const QColor& color, float width, Qt::PenStyle style, Cosmetic cosmetic);
    /// A line with the present pen.
    void draw_line_direct(const glm::vec2& a, const glm::vec2& b);
    void draw_line(const glm::vec2& a, const glm::vec2& b, QColor color, float width,
                   Qt::PenStyle style, Cosmetic cosmetic);
    void draw_line(float x1, float y1, float x2, float y2, QColor color, float width,
                   Qt::PenStyle style, Cosmetic cosmetic);
    void draw_line(const math::Segment& s, QColor color, float width, Qt::PenStyle style,
                   Cosmetic cosmetic);

    /// Circles around a centre; a radius of 0 or less draws nothing.
    void fill_circle(const glm::vec2& center, float r, const QColor& color);
    void fill_circle(float x, float y, float r, const QColor& color);
    void draw_circle(const glm::vec2& center, float r, QColor color, float width,
                     Qt::PenStyle style, Cosmetic cosmetic);
    void draw_circle(float x, float y, float r, QColor color, float width, Qt::PenStyle style,
                     Cosmetic cosmetic);

    /// Ovals around a centre with full width and height; a side of 0 or less draws nothing.
    void fill_oval(const glm::vec2& center, float w, float h, const QColor& color);
    void fill_oval(float x, float y, float w, float h, const QColor& color);
    void draw_oval(const glm::vec2& center, float w, float h, QColor color, float width,
                   Qt::PenStyle style, Cosmetic cosmetic);
    void draw_oval(float x, float y, float w, float h, QColor color, float width,
                   Qt::PenStyle style, Cosmetic cosmetic);

    /// Text that stands upright where y points up; mirrored where y points down.
    void draw_text(const glm::vec2& pos, const QString& text, int pointSize, const QColor& color,
                   TextAlignY alignY);
    /// The same on the baseline, whatever `alignY` says.
    void draw_text(float x, float y, const QString& text, int pointSize, const QColor& color,
                   TextAlignY alignY);

    /// Text where y points down, with the present font and pen, or with a size and a colour.
    void draw_text_screen(float x, float y, const QString& text);
    void draw_text_screen(const glm::vec2& pos, const QString& text, int pointSize,
                          const QColor& color);

    /// Draws nothing: the text is dropped. Text goes through draw_text and draw_text_screen.
    void draw_string(const glm::vec2& pos, const QString& text);
    /// The same for UTF-8; null counts as empty.
    void draw_string(const glm::vec2& pos, const char* text);

    [[nodiscard]] QFont font() const;
    /// Advance and line height of a text.
    [[nodiscard]] math::Size measure_string(const QString& text) const;
    /// Size of the rectangle around the glyphs of a text.
    [[nodiscard]] math::Size measure_string_bounds(const QString& text) const;
    [[nodiscard]] float line_height() const;
    /// Takes whole points: the fraction is cut off.
    void set_font_point_size(float size);

private:
    QPainter& painter;
};

/// Saves the painter and restores it at the end of the scope.
class [[nodiscard]] GPC_Guard {
public:
    explicit GPC_Guard(GPC& theGpc);
    ~GPC_Guard();
    GPC_Guard(const GPC_Guard&) = delete;
    GPC_Guard& operator=(const GPC_Guard&) = delete;

private:
    GPC& gpc;
};

}  // namespace ze::qt
