// Code points of UTF-8. The text was checked before; what is broken all the same counts by the
// byte.
#pragma once

#include <cstddef>
#include <string_view>

namespace relay {

/// Takes the first code point off the text, which must not be empty.
[[nodiscard]] char32_t take_code_point(std::string_view& text) noexcept;

[[nodiscard]] std::size_t count_code_points(std::string_view text) noexcept;

}  // namespace relay
