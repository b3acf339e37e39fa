// The text form of vectors on the wire: "1.5,-2", a comma and no blank, six significant digits,
// independent of the locale. The log's form with two decimals is that of ze/tools/format.h.
#pragma once

#include <string>

#include <glm/vec2.hpp>
#include <glm/vec3.hpp>

namespace ze::math {

[[nodiscard]] std::string to_string(const glm::vec2& value);
[[nodiscard]] std::string to_string(const glm::vec3& value);

/// Reads the form of `to_string`; the fallback when a number cannot be read, is out of the range of
/// a float or is not finite, or when it is not a comma that separates. Text behind the last number
/// is not looked at.
[[nodiscard]] glm::vec2 from_string(const std::string& text, const glm::vec2& fallback);
[[nodiscard]] glm::vec3 from_string(const std::string& text, const glm::vec3& fallback);

}  // namespace ze::math
