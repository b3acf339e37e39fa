#include "ze/qt/event/key.h"

#include "ze/qt/event/mod.h"
#include "ze/tools/format.h"

#include <QKeyEvent>

namespace ze::qt::event::key {

namespace {

bool is_key(const QKeyEvent* ev, Qt::Key key) noexcept {
    return ev != nullptr && ev->key() == key;
}

}  // namespace

bool is_mod_ctrl(const QKeyEvent* ev) noexcept {
    return mod::is_ctrl(ev);
}

bool is_mod_shift(const QKeyEvent* ev) noexcept {
    return mod::is_shift(ev);
}

bool is_mod_alt(const QKeyEvent* ev) noexcept {
    return mod::is_alt(ev);
}

bool is_mod_meta(const QKeyEvent* ev) noexcept {
    return ev != nullptr && ev->modifiers().testFlag(Qt::MetaModifier);
}

bool is_up(const QKeyEvent* ev) noexcept {
    return is_key(ev, Qt::Key_Up);
}

bool is_down(const QKeyEvent* ev) noexcept {
    return is_key(ev, Qt::Key_Down);
}

bool is_left(const QKeyEvent* ev) noexcept {
    return is_key(ev, Qt::Key_Left);
}

bool is_right(const QKeyEvent* ev) noexcept {
    return is_key(ev, Qt::Key_Right);
}

bool is_space(const QKeyEvent* ev) noexcept {
    return is_key(ev, Qt::Key_Space);
}

std::string to_string(const QKeyEvent* ev) {
    if (ev == nullptr || is_mod_key(ev)) {
        return mod::to_string(ev);
    }
    return str::to_utf8(to_key_sequence(ev).toString(QKeySequence::PortableText));
}

}  // namespace ze::qt::event::key
