// What Unicode says of a character of a name, from the table that make_code_points.py makes.
#pragma once

namespace relay {

/// What a name may not hold: a comma, what is drawn without ink, what is not assigned, and what
/// only steers how the text around it is drawn.
[[nodiscard]] bool is_refused_in_name(char32_t point) noexcept;

/// An accent or sign that is drawn over the character before it, without a width of its own.
[[nodiscard]] bool is_stacking_mark(char32_t point) noexcept;

}  // namespace relay
