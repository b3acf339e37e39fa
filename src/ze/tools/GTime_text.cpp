// A point in time as the fields of the local calendar, and as text.
#include "ze/tools/GTime.h"
#include "ze/tools/calendar.h"
#include "ze/tools/clock.h"
#include "ze/tools/str.h"

#include <array>

namespace ze::time {

namespace {

constexpr std::size_t CAPACITY = 512;

using Weekdays = std::array<const char*, 7>;

constexpr Weekdays GERMAN = {"Sonntag",    "Montag",  "Dienstag", "Mittwoch",
                             "Donnerstag", "Freitag", "Samstag"};
constexpr Weekdays RUSSIAN = {"Воскресенье", "Монтаг",  "Вторник", "Среда",
                              "Четверг",     "Пятница", "Суббота"};
constexpr Weekdays ENGLISH = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                              "Thursday", "Friday", "Saturday"};

}  // namespace

// Rounded down, so that the second before 1970 has its fraction upward too.
long long GTime::whole_seconds() const noexcept {
    const auto since = std::chrono::floor<std::chrono::seconds>(point->time_since_epoch());
    return since.count();
}

unsigned long long GTime::rest_microseconds() const noexcept {
    return getMicroseconds() - static_cast<unsigned long long>(whole_seconds()) * SECOND;
}

std::tm GTime::calendar() const noexcept {
    return local_calendar(whole_seconds()).value_or(std::tm{});
}

int GTime::tm_hour() const noexcept {
    return calendar().tm_hour;
}

int GTime::tm_min() const noexcept {
    return calendar().tm_min;
}

int GTime::tm_sec() const noexcept {
    return calendar().tm_sec;
}

int GTime::tm_year() const noexcept {
    return calendar().tm_year + 1900;
}

int GTime::tm_month() const noexcept {
    return calendar().tm_mon + 1;
}

int GTime::tm_day() const noexcept {
    return calendar().tm_mday;
}

int GTime::tm_day_of_week() const noexcept {
    return calendar().tm_wday;
}

int GTime::tm_yearDay() const noexcept {
    return calendar().tm_yday + 1;
}

std::string GTime::day_of_week(const std::string& language) const {
    const auto day = static_cast<std::size_t>(tm_day_of_week());
    if (language == "de") {
        return GERMAN[day];
    }
    return language == "ru" ? RUSSIAN[day] : ENGLISH[day];
}

std::string GTime::fraction(FORMAT_SECOND form) const {
    switch (form) {
        case MILLISECONDS:
            return "," + str::format_fill_zero_milliseconds(getRelativeMilliseconds());
        case MICROSECONDS:
            return "," + str::format_fill_zero_microseconds(rest_microseconds());
        default:
            return {};
    }
}

std::string GTime::getTheTimeString(const std::string& format, FORMAT_SECOND form) const {
    return toString(format) + fraction(form);
}

std::string GTime::get_the_time(const std::string& format, FORMAT_SECOND form) {
    return GTime(true).getTheTimeString(format, form);
}

std::string GTime::getTimeString(unsigned flags) const {
    constexpr unsigned SHOW_MILLISECONDS = 1u << 7;
    constexpr unsigned SHOW_MICROSECONDS = 1u << 8;
    FORMAT_SECOND form = NO_FRACTION;
    if ((flags & SHOW_MICROSECONDS) != 0) {
        form = MICROSECONDS;
    } else if ((flags & SHOW_MILLISECONDS) != 0) {
        form = MILLISECONDS;
    }
    return getTheTimeString("%H:%M:%S", form);
}

std::string GTime::toString(const std::string& format) const {
    return format_calendar(calendar(), format, CAPACITY);
}

std::string GTime::toString_year_month_day() const {
    return toString("%Y-%m-%d");
}

std::string GTime::create_file_name(const std::string& format) const {
    return toString(format);
}

std::string GTime::create_second_file_name() {
    return GTime(true).create_file_name("%Y-%m-%d---%H-%M-%S");
}

std::string GTime::create_GMT_time() const {
    const std::tm gmt = utc_calendar(whole_seconds()).value_or(std::tm{});
    return format_calendar(gmt, "%a, %d %b %Y %H:%M:%S GMT", CAPACITY);
}

std::string GTime::create_Mail_time(const std::string& day) const {
    return day + toString("%d %b %Y %H:%M:%S");
}

}  // namespace ze::time
