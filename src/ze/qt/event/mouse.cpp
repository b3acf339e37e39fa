#include "ze/qt/event/mouse.h"

#include "ze/qt/event/mod.h"
#include "ze/tools/format.h"

#include <QMouseEvent>

namespace ze::qt::event::mouse {

namespace {

// A press and a release name their button, a move only tells which are held.
Qt::MouseButtons buttons_of(const QMouseEvent* ev) noexcept {
    return ev == nullptr ? Qt::MouseButtons{} : ev->buttons() | ev->button();
}

const char* type_word(QEvent::Type type) noexcept {
    switch (type) {
        case QEvent::MouseButtonPress:
            return "PRESS";
        case QEvent::MouseButtonRelease:
            return "RELEASE";
        case QEvent::MouseButtonDblClick:
            return "DOUBLE_CLICK";
        default:
            return "MOVE";
    }
}

std::string button_words(const QMouseEvent* ev) {
    std::string text;
    text += is_left(ev) ? " LEFT" : "";
    text += is_middle(ev) ? " MIDDLE" : "";
    text += is_right(ev) ? " RIGHT" : "";
    return text;
}

}  // namespace

bool is_left(const QMouseEvent* ev) noexcept {
    return buttons_of(ev).testFlag(Qt::LeftButton);
}

bool is_right(const QMouseEvent* ev) noexcept {
    return buttons_of(ev).testFlag(Qt::RightButton);
}

bool is_middle(const QMouseEvent* ev) noexcept {
    return buttons_of(ev).testFlag(Qt::MiddleButton);
}

bool is_any_button(const QMouseEvent* ev) noexcept {
    return buttons_of(ev) != Qt::NoButton;
}

std::string to_string(const QMouseEvent* ev) {
    if (ev == nullptr) {
        return "nullptr";
    }
    return str::xprintF(0, "$$, pos:$, mod:$", type_word(ev->type()), button_words(ev),
                        ev->position().toPoint(), mod::to_string(ev));
}

}  // namespace ze::qt::event::mouse

namespace ze {

template <>
void obj_to_stream(std::stringstream& out, QMouseEvent* const& ev) {
    out << qt::event::mouse::to_string(ev);
}

template <>
void obj_to_stream(std::stringstream& out, const QMouseEvent* const& ev) {
    out << qt::event::mouse::to_string(ev);
}

}  // namespace ze
