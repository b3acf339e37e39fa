// Questions about a key event, and its text form for the log.
// is_mod_key asks whether the key itself is a modifier, the other is_mod_ questions which modifiers
// were held. Every question about a null event is answered with false.
#pragma once

#include <QKeySequence>

#include <string>

class QKeyEvent;

namespace ze::qt::event::key {

/// Whether the key itself is Shift, Ctrl, Alt, AltGr or Meta.
[[nodiscard]] bool is_mod_key(const QKeyEvent* ev) noexcept;

[[nodiscard]] bool is_mod_ctrl(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_mod_shift(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_mod_alt(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_mod_meta(const QKeyEvent* ev) noexcept;

[[nodiscard]] bool is_up(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_down(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_left(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_right(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_space(const QKeyEvent* ev) noexcept;

/// Key and modifiers as one sequence; empty for null and for a lone modifier key.
[[nodiscard]] QKeySequence to_key_sequence(const QKeyEvent* ev);

/// The sequence in portable text, such as "Ctrl+Up"; the modifiers' words for a lone modifier,
/// "nullptr" for null.
[[nodiscard]] std::string to_string(const QKeyEvent* ev);

}  // namespace ze::qt::event::key
