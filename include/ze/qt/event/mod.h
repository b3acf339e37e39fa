// Questions about the modifier keys that were held during an input event.
// Every question about a null event is answered with false.
#pragma once

#include <string>

class QInputEvent;

namespace ze::qt::event::mod {

[[nodiscard]] bool is_alt(const QInputEvent* ev) noexcept;
[[nodiscard]] bool is_ctrl(const QInputEvent* ev) noexcept;
[[nodiscard]] bool is_shift(const QInputEvent* ev) noexcept;

/// Whether any of Shift, Ctrl, Alt and Meta was held.
[[nodiscard]] bool is_any_meta(const QInputEvent* ev) noexcept;

/// The held keys as words joined by "+", such as "CTRL+SHIFT", "NONE" without any, "nullptr" for
/// null.
[[nodiscard]] std::string to_string(const QInputEvent* ev);

}  // namespace ze::qt::event::mod
