#include "ze/tools/GTime.h"

#include "ze/tools/clock.h"

#include <cstdint>
#include <limits>

namespace ze::time {

namespace {

bool is_countable_in_microseconds(std::time_t seconds) noexcept {
    constexpr auto LARGEST = std::numeric_limits<long long>::max() / static_cast<long long>(SECOND);
    return seconds >= -LARGEST && seconds <= LARGEST;
}

}  // namespace

GTime::GTime(bool now) : GTime(now ? get_micro_seconds() : 0ULL) {}

GTime::GTime(unsigned long long microseconds) : point(std::make_unique<TimePoint>()) {
    set_count(microseconds);
}

GTime::GTime(const GTime& other) : point(std::make_unique<TimePoint>(*other.point)) {}

GTime& GTime::operator=(const GTime& other) {
    *point = *other.point;
    return *this;
}

GTime::~GTime() = default;

long long GTime::count() const noexcept {
    return point->time_since_epoch().count();
}

void GTime::set_count(unsigned long long count) {
    *point = TimePoint(Microseconds(static_cast<long long>(count)));
}

void GTime::from_now(unsigned long long delta) {
    set_count(get_micro_seconds() + delta);
}

void GTime::from_mc(unsigned long long microseconds) {
    set_count(microseconds);
}

void GTime::from_tm(std::tm calendar) {
    // -1 is also a second before 1970; that mktime failed shows in a field that it always sets.
    calendar.tm_wday = -1;
    const std::time_t seconds = std::mktime(&calendar);
    if (calendar.tm_wday == -1 || !is_countable_in_microseconds(seconds)) {
        set_count(0);
        return;
    }
    set_count(static_cast<unsigned long long>(seconds) * SECOND);
}

void GTime::set_time(unsigned year, unsigned month, unsigned day, unsigned hour, unsigned minute,
                     unsigned second) {
    std::tm calendar{};
    calendar.tm_year = static_cast<int>(year - 1900u);
    calendar.tm_mon = static_cast<int>(month - 1u);
    calendar.tm_mday = static_cast<int>(day);
    calendar.tm_hour = static_cast<int>(hour);
    calendar.tm_min = static_cast<int>(minute);
    calendar.tm_sec = static_cast<int>(second);
    calendar.tm_isdst = -1;  // mktime finds out whether summer time holds
    from_tm(calendar);
}

void GTime::add(long seconds) {
    add_microseconds(static_cast<unsigned long long>(seconds) * SECOND);
}

void GTime::add_microseconds(unsigned long long mc) {
    set_count(getMicroseconds() + mc);
}

void GTime::add_in_32_bits(unsigned long long mc) {
    const auto sum = static_cast<std::uint32_t>(getMicroseconds() + mc);
    set_count(static_cast<unsigned long long>(static_cast<std::int32_t>(sum)));
}

void GTime::add_seconds(long count) {
    add_in_32_bits(static_cast<unsigned long long>(count) * SECOND);
}

void GTime::add_minutes(long count) {
    add_in_32_bits(static_cast<unsigned long long>(count) * MINUTE);
}

void GTime::add_hours(long count) {
    add_in_32_bits(static_cast<unsigned long long>(count) * HOUR);
}

void GTime::add_days(long count) {
    add_in_32_bits(static_cast<unsigned long long>(count) * DAY);
}

void GTime::add_weeks(long count) {
    add_in_32_bits(static_cast<unsigned long long>(count) * WEEK);
}

void GTime::add_months(long count) {
    add_in_32_bits(static_cast<unsigned long long>(count) * MONTH);
}

void GTime::add_years(long count) {
    add_in_32_bits(static_cast<unsigned long long>(count) * YEAR);
}

void GTime::minus_microseconds(unsigned long long mc) {
    add_in_32_bits(0ULL - mc);
}

unsigned long long GTime::getMicroseconds() const noexcept {
    return static_cast<unsigned long long>(count());
}

unsigned long long GTime::getMilliseconds() const noexcept {
    return getMicroseconds() / 1000;
}

unsigned long long GTime::getSeconds() const noexcept {
    return getMicroseconds() / SECOND;
}

unsigned long long GTime::getNanoseconds() const noexcept {
    return getMicroseconds();
}

unsigned GTime::getRelativeMilliseconds() const noexcept {
    return static_cast<unsigned>(rest_microseconds() / 1000);
}

int GTime::compare(const GTime& other) const noexcept {
    if (count() == other.count()) {
        return 0;
    }
    return count() < other.count() ? -1 : 1;
}

}  // namespace ze::time
