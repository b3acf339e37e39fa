#include "ze/qt/GWidget.h"

#include "ze/log/pp.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/event/key.h"
#include "ze/qt/event/mouse.h"
#include "ze/qt/event/wheel.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/tools/os.h"

#include <QMouseEvent>
#include <QPointer>

namespace ze::qt {

GWidget::GWidget(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_MouseTracking, true);
    if (!os::is_mobile()) {
        setFocusPolicy(Qt::StrongFocus);
    }
}

GMainWindow* GWidget::get_main_window() const {
    return qt::get_main_window(this);
}

void GWidget::mousePressEvent(QMouseEvent* ev) {
    if (show_events) {
        pp("GWidget::mousePressEvent, $", ev);
    }
    mouse_press_listener.fire_event(ev, FIRE_DIRECT);
}

void GWidget::mouseReleaseEvent(QMouseEvent* ev) {
    if (show_events) {
        pp("GWidget::mouseReleaseEvent, $", ev);
    }
    mouse_release_listener.fire_event(ev, FIRE_DIRECT);
}

void GWidget::mouseMoveEvent(QMouseEvent* ev) {
    if (show_events && event::mouse::is_any_button(ev)) {
        pp("GWidget::mouseMoveEvent, $", ev);
    }
    mouse_move_listener.fire_event(ev, FIRE_DIRECT);
}

void GWidget::wheelEvent(QWheelEvent* ev) {
    if (show_events) {
        pp("GWidget::wheelEvent, $", event::wheel::to_string(ev));
    }
    QWidget::wheelEvent(ev);
}

void GWidget::keyPressEvent(QKeyEvent* ev) {
    if (show_events) {
        pp("GWidget::keyPressEvent, $", event::key::to_string(ev));
    }
    QWidget::keyPressEvent(ev);
    key_press_listener.fire_event(ev, FIRE_DIRECT);
}

void GWidget::keyReleaseEvent(QKeyEvent* ev) {
    if (show_events) {
        pp("GWidget::keyReleaseEvent, $", event::key::to_string(ev));
    }
    QWidget::keyReleaseEvent(ev);
    key_release_listener.fire_event(ev, FIRE_DIRECT);
}

void GWidget::focusInEvent(QFocusEvent* ev) {
    QWidget::focusInEvent(ev);
    focus_in_signal.fire_event({}, FIRE_DIRECT);
    focus_in_listener.fire_event(ev, FIRE_DIRECT);
}

void GWidget::focusOutEvent(QFocusEvent* ev) {
    QWidget::focusOutEvent(ev);
    focus_out_signal.fire_event({}, FIRE_DIRECT);
    focus_out_listener.fire_event(ev, FIRE_DIRECT);
}

void GWidget::enterEvent(QEnterEvent* ev) {
    QWidget::enterEvent(ev);
    enter_signal.fire_event({}, FIRE_DIRECT);
    enter_listener.fire_event(ev, FIRE_DIRECT);
}

void GWidget::leaveEvent(QEvent* ev) {
    QWidget::leaveEvent(ev);
    leave_signal.fire_event({}, FIRE_DIRECT);
    leave_listener.fire_event(ev, FIRE_DIRECT);
}

void GWidget::changeEvent(QEvent* ev) {
    QWidget::changeEvent(ev);
    if (ev->type() == QEvent::PaletteChange) {
        // The widget may be gone by the time the event loop turns.
        invoke_later([alive = QPointer<GWidget>(this)] {
            if (!alive.isNull()) {
                alive->notify_theme();
            }
        });
    }
}

void GWidget::notify_theme() {
    const GMainWindow* const win = get_main_window();
    on_change_theme(win != nullptr ? win->get_theme() : 0);
}

void GWidget::on_change_theme(unsigned int theTheme) {
    const QString name = objectName().isEmpty() ? QString() : u'@' + objectName();
    pp_format(log::TRACE, 0, "GWidget$::on_change_theme(), theTheme:$ - overwrite me", name,
              theTheme);
}

}  // namespace ze::qt
