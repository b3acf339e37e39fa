// A drawing surface: it puts the painter into one of four coordinate systems, clips to the view and
// calls draw. It converts between widget pixels and its own, logical coordinates; it keeps nothing
// of what was drawn.
#pragma once

#include "ze/math/QUADRANT.h"
#include "ze/math/Rect.h"
#include "ze/math/ViewPort.h"
#include "ze/qt/GWidget.h"
#include "ze/qt/coord_system.h"

#include <QString>

#include <glm/vec2.hpp>

namespace ze::qt {

class GPC;

class GCanvas : public GWidget {
public:
    explicit GCanvas(QWidget* parent);

    /// A change schedules a repaint.
    void set_coord_system(coord_system::Type type);
    [[nodiscard]] coord_system::Type get_coord_system() const noexcept { return coord_system_type; }
    [[nodiscard]] bool is_coord_SCREEN() const noexcept;
    [[nodiscard]] bool is_coord_CARTESIAN() const noexcept;
    [[nodiscard]] bool is_coord_NDC() const noexcept;
    [[nodiscard]] bool is_coord_UV() const noexcept;

    /// Sets the logical size that always fits into the widget; only in CARTESIAN and above 0,
    /// otherwise an error is logged and nothing changes.
    void set_view_size(float w, float h);
    [[nodiscard]] math::Size get_view_size() const noexcept { return view_size; }

    /// With the clip on, draw paints only inside the view rectangle.
    void set_clip_enabled(bool flag) noexcept { clip_enabled = flag; }
    [[nodiscard]] bool is_clip_enabled() const noexcept { return clip_enabled; }

    /// The event's position, rounded to whole pixels, in logical coordinates.
    [[nodiscard]] glm::vec2 pos_from_mouse_event(const QMouseEvent* ev) const;

    /// Widget pixels to logical coordinates; (0, 0) where the widget has no area, but in SCREEN.
    [[nodiscard]] glm::vec2 convert_to_coord_system(const glm::vec2& p) const;

    /// Logical coordinates to widget pixels; (0, 0) where the widget has no area, but in SCREEN.
    [[nodiscard]] glm::vec2 convert_from_coord_system(const glm::vec2& p) const;

    /// The quadrant of a logical point, or the axis within 1e-5 of it; ORIGIN and an error for a
    /// NaN.
    [[nodiscard]] math::QUADRANT::Type quadrant_from_point(const glm::vec2& p) const;

    /// The view in logical coordinates; in CARTESIAN the view size, not the larger area that may be
    /// visible.
    [[nodiscard]] math::Rect get_view_rect(const math::ViewPort& vp) const;

    /// Puts the painter into the coordinate system for a surface of the given size in pixels.
    void setup_transform(GPC& gpc, const math::ViewPort& vp) const;

    /// Kept for its callers and paints nothing, as GPC::draw_string; text goes through
    /// GPC::draw_text and GPC::draw_text_screen.
    void draw_string_screen(GPC& gpc, const glm::vec2& pos, const QString& text,
                            int pointSize) const;

    /// The height of a text line in logical units.
    [[nodiscard]] float line_height_logical(const GPC& gpc) const;

protected:
    void paintEvent(QPaintEvent* ev) override;

    /// Draws the canvas; `rView` is the view in logical coordinates.
    virtual void draw(GPC& gpc, const math::Rect& rView);

private:
    /// Pixels per logical unit, in the systems that have one scale on both axes.
    [[nodiscard]] float scale_for(float w, float h) const noexcept;
    [[nodiscard]] bool has_area() const noexcept;

    bool log_viewport{false};  // to be set by hand while the paint path is studied
    coord_system::Type coord_system_type{coord_system::SCREEN};
    math::Size view_size{1.0F, 1.0F};
    bool clip_enabled{true};
};

}  // namespace ze::qt
