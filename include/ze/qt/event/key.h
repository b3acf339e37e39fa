// Questions about a key event, and its text form for the log.
// is_mod_key asks whether the key itself is a modifier, the other is_mod_ questions which modifiers
// were held. Every question about a null event is answered with false.
#pragma once

#include "ze/tools/key_sequence.h"

#include <string>

class QKeyEvent;

namespace ze::qt::event::key {

using keys::is_mod_key;
using keys::to_key_sequence;

[[nodiscard]] bool is_mod_ctrl(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_mod_shift(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_mod_alt(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_mod_meta(const QKeyEvent* ev) noexcept;

[[nodiscard]] bool is_up(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_down(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_left(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_right(const QKeyEvent* ev) noexcept;
[[nodiscard]] bool is_space(const QKeyEvent* ev) noexcept;

/// The sequence in portable text, such as "Ctrl+Up"; the modifiers' words for a lone modifier,
/// "nullptr" for null.
[[nodiscard]] std::string to_string(const QKeyEvent* ev);

}  // namespace ze::qt::event::key
