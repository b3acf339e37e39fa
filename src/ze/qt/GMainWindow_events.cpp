// How a main window answers Qt's events.
#include "ze/log/pp.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/GPanel.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QEvent>
#include <QFont>
#include <QGestureEvent>
#include <QMimeData>
#include <QPinchGesture>
#include <QResizeEvent>
#include <QUrl>

namespace ze::qt {

namespace {

constexpr unsigned DETAIL_INDENT = 4;  // blanks

}  // namespace

void GMainWindow::send_layout_event(int reason, int fontSize) {
    LayoutEvent event{size(), fontSize, reason};
    do_layout_all(event);
}

void GMainWindow::do_layout_all(LayoutEvent& event) {
    if (auto* panel = dynamic_cast<GPanel*>(centralWidget())) {
        panel->do_layout(event);
    }
}

void GMainWindow::resizeEvent(QResizeEvent* event) {
    BaseWindow::resizeEvent(event);
    ze::pp_format(log::TRACE, 0, "GMainWindow::resizeEvent, @$, size:$", get_object_name(),
                  event->size());
    if (!first_resize_done) {
        first_resize_done = true;
        if (first_resize_listener.has_listeners()) {
            post([this] { first_resize_listener.fire_event({}); });
        }
    }
    if (first_show_done) {
        send_layout_event(LayoutEvent::RESIZE, font().pointSize());
    }
}

void GMainWindow::showEvent(QShowEvent* event) {
    BaseWindow::showEvent(event);
    if (first_show_done) {
        return;
    }
    first_show_done = true;
    const bool inPoints = font().pointSize() >= 1;
    send_layout_event(LayoutEvent::FIRST_SHOW, inPoints ? font().pointSize() : font().pixelSize());
}

void GMainWindow::changeEvent(QEvent* event) {
    switch (event->type()) {
        case QEvent::PaletteChange:
            post([this] { notify_theme(); });
            break;
        case QEvent::WindowStateChange:
            notify_window_state();
            break;
        case QEvent::ActivationChange:
            activation_listener.fire_event(isActiveWindow());
            break;
        default:
            break;
    }
    BaseWindow::changeEvent(event);
}

void GMainWindow::notify_theme() {
    const unsigned int theme = get_theme();
    on_change_theme(theme);
    theme_listener.fire_event(theme);
}

void GMainWindow::notify_window_state() {
    const Qt::WindowStates state = windowState();
    if (state.testFlag(Qt::WindowMinimized)) {
        minimized_listener.fire_event({});
    }
    if (state.testFlag(Qt::WindowMaximized)) {
        maximized_listener.fire_event({});
    }
    if (state.testFlag(Qt::WindowFullScreen)) {
        fullscreen_listener.fire_event({});
    }
    if ((state & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen)) == 0) {
        normal_state_listener.fire_event({});
    }
}

void GMainWindow::on_gesture_event(QGestureEvent* event) {
    ze::pp("GMainWindow::on_gesture_event");
    const auto* pinch = dynamic_cast<QPinchGesture*>(event->gesture(Qt::PinchGesture));
    if (pinch != nullptr) {
        ze::pp_format(log::DEBUG, DETAIL_INDENT, "GMainWindow::on_gesture_event, scaleFactor:$",
                      pinch->scaleFactor());
    }
}

void GMainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) {
        event->acceptProposedAction();
        ze::pp("GMainWindow::dragEnterEvent, URLs");
    }
}

void GMainWindow::dropEvent(QDropEvent* event) {
    if (event->mimeData()->hasUrls()) {
        const QList<QUrl> urls = event->mimeData()->urls();
        ze::pp("GMainWindow::dropEvent, urls:$", static_cast<int>(urls.size()));
        for (const QUrl& url : urls) {
            ze::pp_format(log::DEBUG, DETAIL_INDENT, "GMainWindow::dropEvent, <<<$>>>",
                          url.toLocalFile());
        }
    }
    event->acceptProposedAction();
}

}  // namespace ze::qt
