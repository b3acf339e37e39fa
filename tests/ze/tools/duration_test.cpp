#include "ze/tools/duration.h"

#include "ze/tools/clock.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace ze::time;

// 1 day, 2 hours, 3 minutes, 4.005006 seconds
constexpr unsigned long long LONG = DAY + 2 * HOUR + 3 * MINUTE + 4 * SECOND + 5006;

struct Row {
    const char* name;
    std::string text;
    std::string expected;
};

TEST(duration, splits_into_the_fields_of_its_form) {
    const std::vector<Row> rows = {
        {"Sec", formatMicrosecond_as_Sec(123'456'000), "123.456000"},
        {"Sec above a minute", formatMicrosecond_as_Sec(LONG), "93784.005006"},
        {"Minute", formatMicrosecond_as_Minute(LONG), "1563 min, 4 sec, 5.006 microseconds"},
        {"Minute_compact", formatMicrosecond_as_Minute_compact(184 * SECOND), "03,04 min"},
        {"Minute_compact_milli", formatMicrosecond_as_Minute_compact_milli(LONG),
         "1563,04.005 min"},
        {"Hour", formatMicrosecond_as_Hour(LONG),
         "26 hour, 3 minute, 4 second, 5.006 microseconds"},
        {"Hour_compact", formatMicrosecond_as_Hour_compact(LONG), "26:03,04 hour"},
        {"Hour_compact_mc", formatMicrosecond_as_Hour_compact_mc(LONG, FORM_MICROSECONDS),
         "26:03,04,005006"},
        {"Day", formatMicrosecond_as_Day(LONG),
         "1 day, 2 hour, 3 minute, 4 second, 5.006 microseconds"},
        {"Year", formatMicrosecond_as_Year(2 * YEAR + LONG, false),
         "2 year, 1 day, 2 hour, 3 minute, 4 second, 5.006 microseconds"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.text, row.expected) << row.name;
    }
}

TEST(duration, forms_of_a_second_have_fixed_numbers) {
    EXPECT_EQ(unsigned{FORM_MICROSECONDS}, 0u);
    EXPECT_EQ(unsigned{FORM_MILLISECONDS}, 1u);
}

TEST(duration, of_nothing_shows_zeros) {
    EXPECT_EQ(formatMicrosecond_as_Sec(0), "0.000000");
    EXPECT_EQ(formatMicrosecond_as_Minute_compact_milli(0), "00,00.000 min");
    EXPECT_EQ(formatMicrosecond_as_Day(0), "0 day, 0 hour, 0 minute, 0 second, 0 microseconds");
}

TEST(duration, has_six_digits_behind_the_seconds) {
    EXPECT_EQ(formatMicrosecond_as_Sec(1'500'000), "1.500000");
    EXPECT_EQ(formatMicrosecond_as_Sec(1), "0.000001");
}

TEST(duration, in_compact_hours_has_two_digits_each) {
    EXPECT_EQ(formatMicrosecond_as_Hour_compact(3'661'000'000), "01:01,01 hour");
}

TEST(duration, of_a_stamp_shows_microseconds_or_their_lowest_three_digits) {
    EXPECT_EQ(formatMicrosecond_as_Hour_compact_mc(1'234'567, FORM_MICROSECONDS),
              "00:00,01,234567");
    EXPECT_EQ(formatMicrosecond_as_Hour_compact_mc(1'234'567, FORM_MILLISECONDS), "00:00,01,567");
    EXPECT_EQ(formatMicrosecond_as_Hour_compact_mc(1'234'567, static_cast<FORM_SECOND>(2)),
              "00:00,01,567");
    EXPECT_EQ(formatMicrosecond_as_Hour_compact_mc(1'000'007, FORM_MILLISECONDS), "00:00,01,007");
}

TEST(duration, of_a_year_is_365_days_or_the_calendar_mean) {
    EXPECT_EQ(formatMicrosecond_as_Year(31'536'000'000'000, false),
              "1 year, 0 day, 0 hour, 0 minute, 0 second, 0 microseconds");
    EXPECT_EQ(formatMicrosecond_as_Year(31'536'000'000'000, true),
              "0 year, 365 day, 0 hour, 0 minute, 0 second, 0 microseconds");
    EXPECT_EQ(formatMicrosecond_as_Year(31'556'952'000'000, true),
              "1 year, 0 day, 0 hour, 0 minute, 0 second, 0 microseconds");
}

TEST(duration, takes_the_highest_number) {
    EXPECT_EQ(formatMicrosecond_as_Hour_compact_mc(~0ULL, FORM_MICROSECONDS),
              "5124095576:01,49,551615");
}

}  // namespace
