// Durations as text. All take microseconds; the first field holds the whole of its unit, every
// other one the remainder within the next larger unit.
#pragma once

#include <string>

namespace ze::time {

/// The fractional part of a stamp. GTime::FORMAT_SECOND is another enumeration with other numbers.
enum FORM_SECOND : unsigned {
    FORM_MICROSECONDS = 0,
    FORM_MILLISECONDS = 1,
};

/// "123.456000": seconds and six digits of microseconds.
[[nodiscard]] std::string formatMicrosecond_as_Sec(unsigned long long mc);

/// "2 min, 3 sec, 456.000 microseconds".
[[nodiscard]] std::string formatMicrosecond_as_Minute(unsigned long long mc);

/// "02,03 min".
[[nodiscard]] std::string formatMicrosecond_as_Minute_compact(unsigned long long mc);

/// "02,03.456 min", with milliseconds.
[[nodiscard]] std::string formatMicrosecond_as_Minute_compact_milli(unsigned long long mc);

/// "1 hour, 2 minute, 3 second, 456.000 microseconds".
[[nodiscard]] std::string formatMicrosecond_as_Hour(unsigned long long mc);

/// "01:02,03 hour".
[[nodiscard]] std::string formatMicrosecond_as_Hour_compact(unsigned long long mc);

/// "01:02,03,456789" with `FORM_MICROSECONDS`. Any other form shows the lowest three digits of the
/// microseconds and no milliseconds: "01:02,03,789".
[[nodiscard]] std::string formatMicrosecond_as_Hour_compact_mc(unsigned long long mc,
                                                               FORM_SECOND form);

/// "1 day, 2 hour, 3 minute, 4 second, 456.000 microseconds".
[[nodiscard]] std::string formatMicrosecond_as_Day(unsigned long long mc);

/// "1 year, 2 day, 3 hour, 4 minute, 5 second, 456.000 microseconds". With `leap` a year has the
/// mean length of the calendar, otherwise 365 days.
[[nodiscard]] std::string formatMicrosecond_as_Year(unsigned long long mc, bool leap);

}  // namespace ze::time
