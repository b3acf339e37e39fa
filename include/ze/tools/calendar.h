// Calendar times of a number of seconds since 1970, and their text by the patterns of strftime.
// GTime is the class on top of it.
#pragma once

#include <cstddef>
#include <ctime>
#include <optional>
#include <string>

namespace ze::time {

/// The fields of a calendar time; nothing when its year is beyond what they hold.
[[nodiscard]] std::optional<std::tm> local_calendar(long long seconds) noexcept;
[[nodiscard]] std::optional<std::tm> utc_calendar(long long seconds) noexcept;

/// The text of a pattern; empty when it takes `capacity` bytes or more.
[[nodiscard]] std::string format_calendar(const std::tm& calendar, const std::string& format,
                                          std::size_t capacity);

/// Local time by a pattern, up to 127 bytes. What cannot be converted or formatted, an empty
/// pattern too, gives a log line and an empty text.
[[nodiscard]] std::string time_as_string(long long seconds, const std::string& format);

/// "2024-02-29  12:34:56", or the date alone; "1970-01-01  01:00:00" for what cannot be converted.
[[nodiscard]] std::string local_time_to_string(long long seconds, bool with_time);

/// The same in UTC; empty for what cannot be converted.
[[nodiscard]] std::string utc_time_to_string(long long seconds, bool with_time);

/// The present local date and time in the long form of the US locale.
[[nodiscard]] std::string get_us_datetime();

}  // namespace ze::time
