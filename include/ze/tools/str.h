// Small string tools, and numbers as text for people. They share no state and run on any thread;
// none reports an error.
#pragma once

#include "ze/tools/format.h"

#include <sstream>
#include <string>
#include <vector>

namespace ze::str {

/// Byte by byte: letters outside ASCII stay as they are.
[[nodiscard]] std::string to_lower(const std::string& text);
/// Without the white space at both ends.
[[nodiscard]] std::string trim(const std::string& text);
/// Each tab becomes four blanks.
[[nodiscard]] std::string replace_tab(const std::string& text);
[[nodiscard]] bool contains(const std::string& text, const std::string& part);
[[nodiscard]] bool contains(const std::string& text, char part);

/// Gives for each line feed all of the text before it, without the line feeds and without a
/// carriage return at the end: the lines grow ("a", "ab", "abc"). The `max`-th line feed ends it
/// without a line of its own; a negative `max` is no limit.
[[nodiscard]] std::vector<std::string> split_lines(const std::string& text, int max);

/// Erases the last occurrence of the part; false without one. An empty part is found and changes
/// nothing.
bool remove_part(std::string& text, const std::string& part);

/// Drops characters at the end of what has been written; nothing if there are fewer.
void remove_last_chars(std::stringstream& out, unsigned count);
[[nodiscard]] std::size_t count_chars(std::stringstream& out);

/// Digits in groups of three: "-1.234.567".
[[nodiscard]] std::string format_1000(long long value, char separator);
/// The same grouping of any text; a sign counts as a character.
[[nodiscard]] std::string format_str_1000(const std::string& text, char separator);

/// "12 thousand", or "thousand" without the number; below 1000 the number itself.
[[nodiscard]] std::string format_magnitude(unsigned long long value, bool with_number);

/// With that many decimals; `force_dot` replaces the decimal comma of a locale.
[[nodiscard]] std::string format_real(double value, unsigned decimals, bool force_dot);

/// Filled on the left up to the width; a longer text is never cut.
[[nodiscard]] std::string format_fill(char fill, unsigned width, long long value);
/// Zeros stand behind the sign.
[[nodiscard]] std::string format_fill_zero(unsigned width, long long value);
[[nodiscard]] std::string format_fill_zero_microseconds(unsigned long long value);
[[nodiscard]] std::string format_fill_zero_milliseconds(unsigned long long value);

/// A size in bytes as "12.34 MB". From "TB" on the number still counts GB.
[[nodiscard]] std::string format_bytes(double bytes);
[[nodiscard]] std::string format_bytes_1024(double bytes);

/// "[10] = {00 01  .. 08 09}": the first `head` and the last `tail` bytes, or all if that covers
/// them.
[[nodiscard]] std::string format_array_as_hex(const unsigned char* data, unsigned size,
                                              unsigned long long head, unsigned long long tail);

}  // namespace ze::str
