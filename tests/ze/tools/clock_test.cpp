#include "ze/tools/clock.h"

#include <chrono>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace time = ze::time;

constexpr unsigned long long HIGHEST = ~0ULL;

TEST(clock, counts_from_1970_in_the_unit_of_the_name) {
    using std::chrono::system_clock;
    const auto before =
        static_cast<unsigned long long>(system_clock::to_time_t(system_clock::now()));
    const unsigned long long seconds = time::get_seconds();
    const unsigned long long milliseconds = time::get_milli_seconds();
    const unsigned long long microseconds = time::get_micro_seconds();
    EXPECT_LE(before, seconds);
    EXPECT_LE(seconds, milliseconds / 1000);
    EXPECT_LE(milliseconds, microseconds / 1000);
    EXPECT_LE(microseconds / 1'000'000, before + 60);
}

TEST(clock, that_is_steady_starts_with_the_clock_of_the_day_and_never_goes_back) {
    unsigned long long last = time::get_milli_seconds();
    EXPECT_LE(time::get_steady_milli_seconds(), last + 60'000);
    for (int i = 0; i < 1000; ++i) {
        const unsigned long long now = time::get_steady_milli_seconds();
        ASSERT_LE(last, now);
        last = now;
    }
}

TEST(clock, has_months_of_28_days_and_years_of_365) {
    EXPECT_EQ(time::from_seconds(1), 1'000'000ULL);
    EXPECT_EQ(time::from_minutes(1), 60'000'000ULL);
    EXPECT_EQ(time::from_hours(1), 3'600'000'000ULL);
    EXPECT_EQ(time::from_days(1), 86'400'000'000ULL);
    EXPECT_EQ(time::WEEK, 604'800'000'000ULL);
    EXPECT_EQ(time::from_months(1), 2'419'200'000'000ULL);
    EXPECT_EQ(time::from_years(1), 31'536'000'000'000ULL);
}

TEST(clock, converts_counts_beyond_32_bits_of_microseconds) {
    EXPECT_EQ(time::from_seconds(4'294'967'295u), 4'294'967'295'000'000ULL);
    EXPECT_EQ(time::from_days(10'000), 864'000'000'000'000ULL);
}

TEST(clock, sums_units_with_the_smallest_first) {
    EXPECT_EQ(
        time::from_time_reverse(1, 2, 3, 4, 5),
        1 * time::SECOND + 2 * time::MINUTE + 3 * time::HOUR + 4 * time::DAY + 5 * time::YEAR);
}

TEST(clock, counts_whole_units_only) {
    EXPECT_EQ(time::get_seconds(1'999'999), 1ULL);
    EXPECT_EQ(time::get_minutes(119'999'999), 1ULL);
    EXPECT_EQ(time::get_hours(2 * time::HOUR - 1), 1ULL);
    EXPECT_EQ(time::get_days(2 * time::DAY - 1), 1ULL);
    EXPECT_EQ(time::get_years(2 * time::YEAR - 1), 1ULL);
    EXPECT_EQ(time::get_seconds(HIGHEST), 18'446'744'073'709ULL);
}

TEST(clock, is_timed_out_once_the_seconds_are_whole) {
    EXPECT_FALSE(time::is_timeout_second(4'999'999, 5));
    EXPECT_TRUE(time::is_timeout_second(5'000'000, 5));
    EXPECT_TRUE(time::is_timeout_second(0, 0));
    EXPECT_TRUE(time::is_timeout_second(HIGHEST, 4'294'967'295u));
}

TEST(clock, sleeps_at_least_as_long_as_asked) {
    const auto start = std::chrono::steady_clock::now();
    time::sleep(5);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(5));
}

TEST(clock, does_not_sleep_for_zero_or_less) {
    time::sleep(0);
    time::sleep(static_cast<unsigned long long>(-1LL));  // would be half a billion years
}

}  // namespace
