#include "ze/qt/event/EventFilter.h"

#include "ze/tools/format.h"

#include <QMetaEnum>
#include <QPalette>
#include <QWidget>

#include <iostream>
#include <string>

namespace ze::qt {

namespace {

bool is_touch(QEvent::Type type) noexcept {
    return type == QEvent::TouchBegin || type == QEvent::TouchUpdate || type == QEvent::TouchEnd ||
           type == QEvent::TouchCancel;
}

/// A pop-up is a window of its own: by itself it would show the application's colours, not those
/// of the window that it belongs to.
void hand_down_theme(QObject* obj) {
    auto* const popup = qobject_cast<QWidget*>(obj);
    if (popup == nullptr || popup->parentWidget() == nullptr) {
        return;
    }
    if (popup->windowType() == Qt::Popup || popup->windowType() == Qt::ToolTip) {
        QPalette theme = popup->parentWidget()->window()->palette();
        // A style may draw the rim of disabled text in this, and a theme need not have set it.
        theme.setBrush(QPalette::Disabled, QPalette::Light,
                       theme.brush(QPalette::Active, QPalette::Light));
        popup->setPalette(theme);
    }
}

std::string object_text(const QObject* obj) {
    const char* const className = obj->metaObject()->className();
    return obj->objectName().isEmpty() ? std::string(className)
                                       : str::xprintF(0, "$@$", className, obj->objectName());
}

std::string type_text(QEvent::Type type) {
    const char* const key = QMetaEnum::fromType<QEvent::Type>().valueToKey(type);
    return key != nullptr ? std::string(key)
                          : str::xprintF(0, "EVENT-TYPE:$", static_cast<int>(type));
}

}  // namespace

EventFilter::EventFilter(QObject* parent) : QObject(parent) {}

void EventFilter::add_filter(QEvent::Type type) {
    types.insert(type);
}

void EventFilter::remove_filter(QEvent::Type type) {
    types.erase(type);
}

void EventFilter::add_object_filter(const QObject* obj) {
    objects.insert(obj);
}

void EventFilter::remove_object_filter(const QObject* obj) {
    objects.erase(obj);
}

void EventFilter::add_object_name_filter(const QString& name) {
    names.insert(name);
}

void EventFilter::remove_object_name_filter(const QString& name) {
    names.erase(name);
}

void EventFilter::gen_common_filter() {
    types.insert({QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                  QEvent::KeyPress, QEvent::KeyRelease, QEvent::Wheel, QEvent::ContextMenu,
                  QEvent::TouchBegin, QEvent::TouchUpdate, QEvent::TouchEnd, QEvent::TouchCancel,
                  QEvent::FocusIn, QEvent::FocusOut, QEvent::WindowActivate,
                  QEvent::WindowDeactivate, QEvent::Show, QEvent::Hide, QEvent::Resize,
                  QEvent::Close});
}

bool EventFilter::eventFilter(QObject* obj, QEvent* ev) {
    // A touch reaches its window first and then, as copies, each widget that may take it: the
    // window has it once.
    if (is_touch(ev->type()) && obj->isWindowType()) {
        automat.process_event(ev);
    }
    if (ev->type() == QEvent::Show) {
        hand_down_theme(obj);
    }
    if (flagDump && is_dumped(obj, ev)) {
        // Not through the log: a line in the log view causes events of its own while the log is
        // locked.
        std::cout << str::xprintF(0, "EVENT <$>, <$>", object_text(obj), type_text(ev->type()))
                  << std::endl;
    }
    return false;
}

bool EventFilter::is_dumped(const QObject* obj, const QEvent* ev) const {
    return (objects.empty() || objects.contains(obj)) &&
           (names.empty() || names.contains(obj->objectName())) &&
           (types.empty() || types.contains(ev->type()));
}

}  // namespace ze::qt
