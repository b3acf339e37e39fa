#include "ze/qt/components/GLabel.h"

#include "ze/tools/format.h"
#include "ze/tools/rnd.h"

namespace ze::qt {

GLabel::GLabel(const QString& text, const QString& toolTip)
    : QLabel(text), StringSetter(static_cast<QLabel*>(this)), ColorSetter(this) {
    setToolTip(toolTip);
    setAttribute(Qt::WA_MouseTracking, true);
}

void GLabel::set_horz_line(int height, const QString& color, const QString& name) {
    if (objectName().isEmpty()) {
        constexpr unsigned RANDOM_NAME_LENGTH = 8;
        setObjectName(name.isEmpty() ? rnd::next_QString(RANDOM_NAME_LENGTH, true) : name);
    }
    setMaximumHeight(height);
    setStyleSheet(str::qprintF("#$ { border: $px solid $; background:$}", objectName(), height,
                               color, color));
}

void GLabel::mousePressEvent(QMouseEvent* ev) {
    QLabel::mousePressEvent(ev);
    mouse_press_listener.fire_event(ev, FIRE_DIRECT);
}

void GLabel::mouseReleaseEvent(QMouseEvent* ev) {
    QLabel::mouseReleaseEvent(ev);
    mouse_release_listener.fire_event(ev, FIRE_DIRECT);
}

void GLabel::mouseMoveEvent(QMouseEvent* ev) {
    QLabel::mouseMoveEvent(ev);
    mouse_move_listener.fire_event(ev, FIRE_DIRECT);
}

}  // namespace ze::qt
