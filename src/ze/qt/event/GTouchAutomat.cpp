#include "ze/qt/event/GTouchAutomat.h"

#include "ze/log/pp.h"

#include <QTouchEvent>

#include <cmath>
#include <numbers>

namespace ze::qt::event {

namespace {

// A hand that rests is never quite still: changes up to these are its trembling.
constexpr float ZOOM_MINIMUM = 0.001F;
constexpr float ROTATION_MINIMUM_DEGREES = 0.1F;

double length(const QPointF& v) {
    return std::hypot(v.x(), v.y());
}

}  // namespace

void GTouchAutomat::process_event(QEvent* ev) {
    const QEvent::Type type = ev->type();
    if (type == QEvent::TouchEnd) {
        reset_state();
        return;
    }
    if (type != QEvent::TouchBegin && type != QEvent::TouchUpdate) {
        return;
    }
    const auto& points = static_cast<const QTouchEvent*>(ev)->points();
    if (points.isEmpty()) {
        reset_state();
    } else if (points.size() == 1) {
        handle_one_finger(points[0].scenePosition());
    } else {
        handle_two_finger(points[0].scenePosition(), points[1].scenePosition());
    }
}

void GTouchAutomat::reset_state() {
    pp_trace("GTouchAutomat::reset_state");
    state = IDLE;
    distanceLast = 0.0;
    angleLast = 0.0;
}

void GTouchAutomat::handle_one_finger(QPointF pos) {
    if (state != ONE_FINGER) {
        state = ONE_FINGER;
        ptLast = pos;
        return;
    }
    const QPointF delta = pos - ptLast;
    on_delta(delta);
    ptLast = pos;
    report_pan(delta);
}

void GTouchAutomat::handle_two_finger(QPointF a, QPointF b) {
    pp_trace("GTouchAutomat::handle_two_finger");
    const QPointF center = (a + b) * 0.5;
    const QPointF span = b - a;
    const double distance = length(span);
    const double angle = std::atan2(span.y(), span.x());
    if (state == TWO_FINGERS) {
        report_pan(center - ptCenterLast);
        report_zoom(distance);
        report_rotation(angle);
    }
    state = TWO_FINGERS;
    distanceLast = distance;
    angleLast = angle;
    ptCenterLast = center;
}

void GTouchAutomat::report_pan(QPointF delta) {
    const int pan = static_cast<int>(std::lround(length(delta)));
    if (pan != 0) {
        on_pan(pan);
    }
}

void GTouchAutomat::report_zoom(double distance) {
    if (distanceLast <= 0.0) {
        return;
    }
    const auto zoom = static_cast<float>(distance / distanceLast - 1.0);
    if (std::abs(zoom) > ZOOM_MINIMUM) {
        on_zoom(zoom);
    }
}

void GTouchAutomat::report_rotation(double angle) {
    const auto degrees = static_cast<float>((angle - angleLast) * 180.0 / std::numbers::pi);
    if (std::abs(degrees) > ROTATION_MINIMUM_DEGREES) {
        on_rotate(degrees);
    }
}

void GTouchAutomat::on_delta(QPointF delta) {
    delta_listener.fire_event(delta, FIRE_DIRECT);
}

void GTouchAutomat::on_pan(int pixels) {
    pan_listener.fire_event(pixels, FIRE_DIRECT);
}

void GTouchAutomat::on_zoom(float delta) {
    pp("GTouchAutomat::on_zoom, delta:$", delta);
    zoom_listener.fire_event(delta, FIRE_DIRECT);
}

void GTouchAutomat::on_rotate(float degrees) {
    pp("GTouchAutomat::on_rotate, degree:$", degrees);
    rotate_listener.fire_event(degrees, FIRE_DIRECT);
}

void GTouchAutomat::on_double_tab() {
    pp("GTouchAutomat::on_double_tab");
}

}  // namespace ze::qt::event
