// The clock and the units of time. Durations are unsigned 64-bit microseconds everywhere; what the
// clock gives counts from 1970.
#pragma once

namespace ze::time {

inline constexpr unsigned long long SECOND = 1'000'000;
inline constexpr unsigned long long MINUTE = 60 * SECOND;
inline constexpr unsigned long long HOUR = 60 * MINUTE;
inline constexpr unsigned long long DAY = 24 * HOUR;
inline constexpr unsigned long long WEEK = 7 * DAY;
inline constexpr unsigned long long MONTH = 28 * DAY;  ///< always four weeks
inline constexpr unsigned long long YEAR = 365 * DAY;

/// The clock now, in the unit of the name.
[[nodiscard]] unsigned long long get_seconds() noexcept;
[[nodiscard]] unsigned long long get_milli_seconds() noexcept;
[[nodiscard]] unsigned long long get_micro_seconds() noexcept;

/// Milliseconds since 1970 as the clock told them at the first call, and from then on by a clock
/// that nobody sets: the difference of two is the time that really passed.
[[nodiscard]] unsigned long long get_steady_milli_seconds() noexcept;

/// A count of the unit, in microseconds.
[[nodiscard]] unsigned long long from_seconds(unsigned count) noexcept;
[[nodiscard]] unsigned long long from_minutes(unsigned count) noexcept;
[[nodiscard]] unsigned long long from_hours(unsigned count) noexcept;
[[nodiscard]] unsigned long long from_days(unsigned count) noexcept;
[[nodiscard]] unsigned long long from_months(unsigned count) noexcept;
[[nodiscard]] unsigned long long from_years(unsigned count) noexcept;

/// The sum of all counts, in microseconds; the smallest unit comes first.
[[nodiscard]] unsigned long long from_time_reverse(unsigned seconds, unsigned minutes,
                                                   unsigned hours, unsigned days,
                                                   unsigned years) noexcept;

/// The whole units in a number of microseconds.
[[nodiscard]] unsigned long long get_seconds(unsigned long long mc) noexcept;
[[nodiscard]] unsigned long long get_minutes(unsigned long long mc) noexcept;
[[nodiscard]] unsigned long long get_hours(unsigned long long mc) noexcept;
[[nodiscard]] unsigned long long get_days(unsigned long long mc) noexcept;
[[nodiscard]] unsigned long long get_years(unsigned long long mc) noexcept;

/// True once `mc` microseconds hold `seconds` whole seconds.
[[nodiscard]] bool is_timeout_second(unsigned long long mc, unsigned seconds) noexcept;

/// Blocks the calling thread for `ms` milliseconds; 0, or what is negative as a signed number,
/// returns at once.
void sleep(unsigned long long ms);

}  // namespace ze::time
