#include "ze/tools/key_sequence.h"

#include <QKeyEvent>

namespace ze::keys {

bool is_mod_key(const QKeyEvent* ev) noexcept {
    if (ev == nullptr) {
        return false;
    }
    switch (ev->key()) {
        case Qt::Key_Shift:
        case Qt::Key_Control:
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
        case Qt::Key_Meta:
            return true;
        default:
            return false;
    }
}

QKeySequence to_key_sequence(const QKeyEvent* ev) {
    if (ev == nullptr || is_mod_key(ev)) {
        return {};
    }
    // The keypad gives the same keys: its mark would keep "Up" from being "Up".
    return QKeySequence(QKeyCombination(ev->modifiers() & ~Qt::KeypadModifier, Qt::Key(ev->key())));
}

}  // namespace ze::keys
