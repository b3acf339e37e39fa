#include "ze/tools/clock.h"

#include <chrono>
#include <thread>

namespace ze::time {

namespace {

template <typename Unit>
unsigned long long now_in() noexcept {
    const auto since_epoch = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<unsigned long long>(std::chrono::duration_cast<Unit>(since_epoch).count());
}

}  // namespace

unsigned long long get_seconds() noexcept {
    return now_in<std::chrono::seconds>();
}

unsigned long long get_milli_seconds() noexcept {
    return now_in<std::chrono::milliseconds>();
}

unsigned long long get_micro_seconds() noexcept {
    return now_in<std::chrono::microseconds>();
}

unsigned long long get_steady_milli_seconds() noexcept {
    using std::chrono::steady_clock;
    static const steady_clock::time_point start = steady_clock::now();
    static const unsigned long long mcStart = get_micro_seconds();
    const auto passed =
        std::chrono::duration_cast<std::chrono::microseconds>(steady_clock::now() - start);
    return (mcStart + static_cast<unsigned long long>(passed.count())) / (SECOND / 1000);
}

unsigned long long from_seconds(unsigned count) noexcept {
    return count * SECOND;
}

unsigned long long from_minutes(unsigned count) noexcept {
    return count * MINUTE;
}

unsigned long long from_hours(unsigned count) noexcept {
    return count * HOUR;
}

unsigned long long from_days(unsigned count) noexcept {
    return count * DAY;
}

unsigned long long from_months(unsigned count) noexcept {
    return count * MONTH;
}

unsigned long long from_years(unsigned count) noexcept {
    return count * YEAR;
}

unsigned long long from_time_reverse(unsigned seconds, unsigned minutes, unsigned hours,
                                     unsigned days, unsigned years) noexcept {
    return from_seconds(seconds) + from_minutes(minutes) + from_hours(hours) + from_days(days) +
           from_years(years);
}

unsigned long long get_seconds(unsigned long long mc) noexcept {
    return mc / SECOND;
}

unsigned long long get_minutes(unsigned long long mc) noexcept {
    return mc / MINUTE;
}

unsigned long long get_hours(unsigned long long mc) noexcept {
    return mc / HOUR;
}

unsigned long long get_days(unsigned long long mc) noexcept {
    return mc / DAY;
}

unsigned long long get_years(unsigned long long mc) noexcept {
    return mc / YEAR;
}

bool is_timeout_second(unsigned long long mc, unsigned seconds) noexcept {
    return get_seconds(mc) >= seconds;
}

void sleep(unsigned long long ms) {
    const auto signed_ms = static_cast<long long>(ms);
    if (signed_ms > 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(signed_ms));
    }
}

}  // namespace ze::time
