#include "ze/tools/duration.h"

#include "ze/tools/clock.h"
#include "ze/tools/format.h"
#include "ze/tools/str.h"

namespace ze::time {

namespace {

constexpr unsigned long long MEAN_YEAR = 31'556'952'000'000;

// The whole units within the next larger one.
unsigned long long seconds_of(unsigned long long mc) noexcept {
    return mc % MINUTE / SECOND;
}

unsigned long long minutes_of(unsigned long long mc) noexcept {
    return mc % HOUR / MINUTE;
}

unsigned long long hours_of(unsigned long long mc) noexcept {
    return mc % DAY / HOUR;
}

std::string two_digits(unsigned long long value) {
    return str::format_fill_zero(2, static_cast<long long>(value));
}

std::string grouped_microseconds(unsigned long long mc) {
    return str::format_str_1000(std::to_string(mc % SECOND), '.');
}

}  // namespace

std::string formatMicrosecond_as_Sec(unsigned long long mc) {
    const std::string fraction = str::format_fill_zero_microseconds(mc % SECOND);
    return str::xprintF(0, "$.$", get_seconds(mc), fraction.size() == 6 ? fraction : "?MICRO?");
}

std::string formatMicrosecond_as_Minute(unsigned long long mc) {
    return str::xprintF(0, "$ min, $ sec, $ microseconds", get_minutes(mc), seconds_of(mc),
                        grouped_microseconds(mc));
}

std::string formatMicrosecond_as_Minute_compact(unsigned long long mc) {
    return str::xprintF(0, "$,$ min", two_digits(get_minutes(mc)), two_digits(seconds_of(mc)));
}

std::string formatMicrosecond_as_Minute_compact_milli(unsigned long long mc) {
    return str::xprintF(0, "$,$.$ min", two_digits(get_minutes(mc)), two_digits(seconds_of(mc)),
                        str::format_fill_zero_milliseconds(mc % SECOND / 1000));
}

std::string formatMicrosecond_as_Hour(unsigned long long mc) {
    return str::xprintF(0, "$ hour, $ minute, $ second, $ microseconds", get_hours(mc),
                        minutes_of(mc), seconds_of(mc), grouped_microseconds(mc));
}

std::string formatMicrosecond_as_Hour_compact(unsigned long long mc) {
    return str::xprintF(0, "$:$,$ hour", two_digits(get_hours(mc)), two_digits(minutes_of(mc)),
                        two_digits(seconds_of(mc)));
}

std::string formatMicrosecond_as_Hour_compact_mc(unsigned long long mc, FORM_SECOND form) {
    const std::string fraction = form == FORM_MICROSECONDS
                                     ? str::format_fill_zero_microseconds(mc % SECOND)
                                     : str::format_fill_zero_milliseconds(mc % 1000);
    return str::xprintF(0, "$:$,$,$", two_digits(get_hours(mc)), two_digits(minutes_of(mc)),
                        two_digits(seconds_of(mc)), fraction);
}

std::string formatMicrosecond_as_Day(unsigned long long mc) {
    return str::xprintF(0, "$ day, $ hour, $ minute, $ second, $ microseconds", get_days(mc),
                        hours_of(mc), minutes_of(mc), seconds_of(mc), grouped_microseconds(mc));
}

std::string formatMicrosecond_as_Year(unsigned long long mc, bool leap) {
    const unsigned long long year = leap ? MEAN_YEAR : YEAR;
    const unsigned long long rest = mc % year;
    return str::xprintF(0, "$ year, $ day, $ hour, $ minute, $ second, $ microseconds", mc / year,
                        get_days(rest), hours_of(rest), minutes_of(rest), seconds_of(rest),
                        grouped_microseconds(rest));
}

}  // namespace ze::time
