// A key event as the key sequence that menus, hotkeys and messages name it by.
#pragma once

#include <QKeySequence>

class QKeyEvent;

namespace ze::keys {

/// Whether the key itself is Shift, Ctrl, Alt, AltGr or Meta; false for null.
[[nodiscard]] bool is_mod_key(const QKeyEvent* ev) noexcept;

/// Key and modifiers as one sequence; empty for null and for a lone modifier key.
[[nodiscard]] QKeySequence to_key_sequence(const QKeyEvent* ev);

}  // namespace ze::keys
