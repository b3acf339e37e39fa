#include "ze/tools/calendar.h"

#include "support/LogCapture.h"
#include "support/TimeZone.h"

#include <limits>
#include <regex>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace ze::time;

constexpr long long LEAP_DAY = 1'709'210'096;  // 2024-02-29 12:34:56 UTC
constexpr long long BEYOND = std::numeric_limits<long long>::max();

class calendar : public testing::Test {
    const test::TimeZone zone{"CET-1"};  // one hour ahead of UTC, without summer time
};

TEST_F(calendar, shows_local_time_and_utc) {
    EXPECT_EQ(local_time_to_string(LEAP_DAY, true), "2024-02-29  13:34:56");
    EXPECT_EQ(local_time_to_string(LEAP_DAY, false), "2024-02-29");
    EXPECT_EQ(utc_time_to_string(LEAP_DAY, true), "2024-02-29  12:34:56");
    EXPECT_EQ(utc_time_to_string(LEAP_DAY, false), "2024-02-29");
}

TEST_F(calendar, starts_in_1970_and_goes_back) {
    EXPECT_EQ(utc_time_to_string(0, true), "1970-01-01  00:00:00");
    EXPECT_EQ(utc_time_to_string(-1, true), "1969-12-31  23:59:59");
}

TEST_F(calendar, has_a_fixed_text_for_a_local_time_beyond_the_years) {
    EXPECT_EQ(local_time_to_string(BEYOND, true), "1970-01-01  01:00:00");
    EXPECT_EQ(local_time_to_string(BEYOND, false), "1970-01-01  01:00:00");
    EXPECT_EQ(utc_time_to_string(BEYOND, true), "");
}

TEST_F(calendar, formats_local_time_by_a_pattern) {
    EXPECT_EQ(time_as_string(LEAP_DAY, "%d.%m.%Y %H:%M"), "29.02.2024 13:34");
}

TEST_F(calendar, logs_a_time_that_it_cannot_convert) {
    test::LogCapture log;
    EXPECT_EQ(time_as_string(BEYOND, "%Y"), "");
    EXPECT_EQ(log.lines_with_level(),
              std::vector<std::string>{
                  "DEB GTime::time_as_string, Failed to convert time, problems with <<<%Y>>>"});
}

TEST_F(calendar, logs_a_pattern_that_gives_nothing) {
    const std::string text = "DEB GTime::time_as_string, Failed to format time, problems with ";
    for (const std::string& pattern : {std::string(), std::string(128, 'x')}) {
        test::LogCapture log;
        EXPECT_EQ(time_as_string(LEAP_DAY, pattern), "");
        EXPECT_EQ(log.lines_with_level(), std::vector<std::string>{text + "<<<" + pattern + ">>>"});
    }
}

TEST_F(calendar, takes_a_text_that_just_fits) {
    EXPECT_EQ(time_as_string(LEAP_DAY, std::string(127, 'x')), std::string(127, 'x'));
}

TEST_F(calendar, survives_a_broken_pattern) {
    for (const char* pattern : {"%", "%Q", "%5", "%%", "%E"}) {
        const std::optional<std::tm> time = utc_calendar(LEAP_DAY);
        ASSERT_TRUE(time);
        EXPECT_LT(format_calendar(*time, pattern, 16).size(), 16u) << pattern;
    }
}

TEST_F(calendar, gives_the_present_in_the_long_form_of_the_us) {
    const std::regex form(R"(\w+day, \w+ \d{1,2}, \d{4} (at )?\d{1,2}:\d{2}:\d{2}\s*[AP]M .*)");
    std::string text = get_us_datetime();
    for (const char* narrow_blank : {"\u202f", "\u00a0"}) {
        for (std::size_t at; (at = text.find(narrow_blank)) != std::string::npos;) {
            text.replace(at, std::string(narrow_blank).size(), " ");
        }
    }
    EXPECT_TRUE(std::regex_match(text, form)) << text;
}

}  // namespace
