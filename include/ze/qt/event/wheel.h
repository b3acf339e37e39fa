// Questions about a wheel event, and its text form for the log.
#pragma once

#include <string>

class QWheelEvent;

namespace ze::qt::event::wheel {

/// Whether the wheel was turned away from the user; false for null and for a sideways turn.
[[nodiscard]] bool is_forward(const QWheelEvent* ev) noexcept;

/// Turn in eighths of a degree, position in widget pixels and modifiers; "nullptr" for null.
[[nodiscard]] std::string to_string(const QWheelEvent* ev);

}  // namespace ze::qt::event::wheel
