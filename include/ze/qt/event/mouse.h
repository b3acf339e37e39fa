// Questions about a mouse event, and its text form for the log.
// A button counts when it caused the event or is held during it, so that the questions serve
// presses, releases and moves alike. Every question about a null event is answered with false.
#pragma once

#include <string>

class QMouseEvent;

namespace ze::qt::event::mouse {

[[nodiscard]] bool is_left(const QMouseEvent* ev) noexcept;
[[nodiscard]] bool is_right(const QMouseEvent* ev) noexcept;
[[nodiscard]] bool is_middle(const QMouseEvent* ev) noexcept;
[[nodiscard]] bool is_any_button(const QMouseEvent* ev) noexcept;

/// Type, buttons, position in widget pixels and modifiers; "nullptr" for null. So prints the
/// formatter, too.
[[nodiscard]] std::string to_string(const QMouseEvent* ev);

}  // namespace ze::qt::event::mouse
