#include "ze/tools/GTime.h"

#include "ze/tools/clock.h"

#include "support/TimeZone.h"

#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using ze::time::GTime;

constexpr unsigned long long LEAP_DAY = 1'709'210'096'012'345;  // 2024-02-29 12:34:56.012345 UTC

class GTimeTest : public testing::Test {
    const test::TimeZone zone{"CET-1"};  // one hour ahead of UTC, without summer time
};

TEST_F(GTimeTest, holds_1970_or_the_present_or_a_value) {
    EXPECT_EQ(GTime(false).getMicroseconds(), 0u);
    const unsigned long long before = ze::time::get_micro_seconds();
    EXPECT_GE(GTime(true).getMicroseconds(), before);
    EXPECT_EQ(GTime(LEAP_DAY).getMicroseconds(), LEAP_DAY);
}

TEST_F(GTimeTest, copies_the_value_and_not_the_place) {
    GTime a(5ULL);
    GTime b(a);
    EXPECT_EQ(a.compare(b), 0);
    b.from_mc(6);
    EXPECT_EQ(a.getMicroseconds(), 5u);
    a = b;
    b.from_mc(7);
    EXPECT_EQ(a.getMicroseconds(), 6u);
    const GTime& self = a;
    a = self;
    EXPECT_EQ(a.getMicroseconds(), 6u);
}

TEST_F(GTimeTest, keeps_its_value_when_it_is_moved_from) {
    GTime a(5ULL);
    const GTime b(std::move(a));
    EXPECT_EQ(a.getMicroseconds(), 5u);  // NOLINT(bugprone-use-after-move): a move is a copy here
    EXPECT_EQ(b.getMicroseconds(), 5u);
}

TEST_F(GTimeTest, formats_of_a_second_have_fixed_numbers) {
    EXPECT_EQ(unsigned{GTime::NO_FRACTION}, 0u);
    EXPECT_EQ(unsigned{GTime::MILLISECONDS}, 1u);
    EXPECT_EQ(unsigned{GTime::MICROSECONDS}, 2u);
}

TEST_F(GTimeTest, can_be_a_base_class) {
    EXPECT_TRUE(std::has_virtual_destructor_v<GTime>);
}

TEST_F(GTimeTest, is_set_from_now_on) {
    GTime time(false);
    const unsigned long long before = ze::time::get_micro_seconds();
    time.from_now(ze::time::YEAR);
    const unsigned long long after = ze::time::get_micro_seconds();
    EXPECT_GE(time.getMicroseconds(), before + ze::time::YEAR);
    EXPECT_LE(time.getMicroseconds(), after + ze::time::YEAR);
}

TEST_F(GTimeTest, is_set_from_a_local_calendar_time) {
    GTime time(1ULL);
    std::tm calendar{};
    calendar.tm_year = 124;
    calendar.tm_mon = 1;
    calendar.tm_mday = 29;
    calendar.tm_hour = 13;
    calendar.tm_min = 34;
    calendar.tm_sec = 56;
    time.from_tm(calendar);
    EXPECT_EQ(time.getMicroseconds(), 1'709'210'096'000'000u);
    time.set_time(2024, 2, 29, 13, 34, 57);
    EXPECT_EQ(time.getMicroseconds(), 1'709'210'097'000'000u);
}

TEST_F(GTimeTest, carries_calendar_fields_over_and_sets_1970_beyond_all_years) {
    GTime time(1ULL);
    time.set_time(2024, 1, 60, 13, 34, 56);
    EXPECT_EQ(time.getMicroseconds(), 1'709'210'096'000'000u);
    std::tm calendar{};
    calendar.tm_year = 2'147'483'647;
    calendar.tm_mon = 2'147'483'647;
    time.from_tm(calendar);
    EXPECT_EQ(time.getMicroseconds(), 0u);
}

TEST_F(GTimeTest, sets_1970_for_a_year_whose_microseconds_cannot_be_counted) {
    for (const int year : {300'000, -300'000, 2'000'000'000, -2'000'000'000}) {
        GTime time(1ULL);
        std::tm calendar{};
        calendar.tm_year = year;
        calendar.tm_mday = 1;
        time.from_tm(calendar);
        EXPECT_EQ(time.getMicroseconds(), 0u) << year;
    }
    GTime time(false);
    time.set_time(290'000, 1, 1, 1, 0, 0);
    EXPECT_EQ(time.tm_year(), 290'000);
}

TEST_F(GTimeTest, knows_the_second_before_1970_from_a_failure) {
    GTime time(1ULL);
    time.set_time(1970, 1, 1, 0, 59, 59);
    EXPECT_EQ(time.getMicroseconds(), static_cast<unsigned long long>(-1'000'000LL));
}

TEST_F(GTimeTest, adds_seconds_and_microseconds_in_64_bits) {
    GTime time(LEAP_DAY);
    time.add(10'000'000);
    EXPECT_EQ(time.getMicroseconds(), LEAP_DAY + 10'000'000'000'000);
    time.add(-10'000'000);
    EXPECT_EQ(time.getMicroseconds(), LEAP_DAY);
    time.add_microseconds(10'000'000'001);
    EXPECT_EQ(time.getMicroseconds(), LEAP_DAY + 10'000'000'001);
}

struct Sum {
    const char* name;
    void (GTime::*add)(long);
    unsigned long long start;
    long count;
    long long expected;
};

TEST_F(GTimeTest, adds_units_in_32_bits_in_the_place_of_the_whole_value) {
    const std::vector<Sum> rows = {
        {"seconds", &GTime::add_seconds, 5, 2, 2'000'005},
        {"seconds back", &GTime::add_seconds, 5'000'000, -2, 3'000'000},
        {"seconds below zero", &GTime::add_seconds, 0, -1, -1'000'000},
        {"seconds from 2^31 on", &GTime::add_seconds, 0, 2148, 2'148'000'000LL - (1LL << 32)},
        {"seconds lose the high half", &GTime::add_seconds, (1ULL << 32) + 7, 0, 7},
        {"minutes", &GTime::add_minutes, 0, 35, 2'100'000'000},
        {"hours", &GTime::add_hours, 0, 1, 3'600'000'000LL - (1LL << 32)},
        {"days", &GTime::add_days, 0, 1, 500'654'080},
        {"weeks", &GTime::add_weeks, 0, 1, -790'388'736},
        {"months", &GTime::add_months, 0, 1, 1'133'412'352},
        {"years", &GTime::add_years, 0, 1, -1'944'854'528},
    };
    for (const Sum& row : rows) {
        GTime time(row.start);
        (time.*row.add)(row.count);
        EXPECT_EQ(static_cast<long long>(time.getMicroseconds()), row.expected) << row.name;
    }
}

TEST_F(GTimeTest, subtracts_microseconds_in_32_bits) {
    GTime time((1ULL << 32) + 7);
    time.minus_microseconds(2);
    EXPECT_EQ(time.getMicroseconds(), 5u);
    time.minus_microseconds(6);
    EXPECT_EQ(time.getMicroseconds(), static_cast<unsigned long long>(-1LL));
}

TEST_F(GTimeTest, counts_in_the_units_of_the_names_but_for_one) {
    const GTime time(LEAP_DAY);
    EXPECT_EQ(time.getSeconds(), LEAP_DAY / 1'000'000);
    EXPECT_EQ(time.getMilliseconds(), LEAP_DAY / 1000);
    EXPECT_EQ(time.getNanoseconds(), LEAP_DAY);
    EXPECT_EQ(time.getRelativeMilliseconds(), 12u);
}

TEST_F(GTimeTest, has_the_fields_of_the_local_calendar) {
    const GTime time(LEAP_DAY);
    EXPECT_EQ(time.tm_year(), 2024);
    EXPECT_EQ(time.tm_month(), 2);
    EXPECT_EQ(time.tm_day(), 29);
    EXPECT_EQ(time.tm_hour(), 13);
    EXPECT_EQ(time.tm_min(), 34);
    EXPECT_EQ(time.tm_sec(), 56);
    EXPECT_EQ(time.tm_day_of_week(), 4);
    EXPECT_EQ(time.tm_yearDay(), 60);
}

TEST_F(GTimeTest, names_the_weekday_in_three_languages) {
    const std::vector<std::string> german = {"Sonntag",    "Montag",  "Dienstag", "Mittwoch",
                                             "Donnerstag", "Freitag", "Samstag"};
    const std::vector<std::string> russian = {"Воскресенье", "Монтаг",  "Вторник", "Среда",
                                              "Четверг",     "Пятница", "Суббота"};
    const std::vector<std::string> english = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                              "Thursday", "Friday", "Saturday"};
    for (unsigned day = 0; day < 7; ++day) {
        GTime time(false);
        time.set_time(2024, 2, 25 + day, 12, 0, 0);  // a Sunday and the days behind it
        EXPECT_EQ(time.day_of_week("de"), german[day]);
        EXPECT_EQ(time.day_of_week("ru"), russian[day]);
        EXPECT_EQ(time.day_of_week("en"), english[day]);
        EXPECT_EQ(time.day_of_week("fr"), english[day]);
    }
}

TEST_F(GTimeTest, shows_the_fraction_that_is_asked_for) {
    const GTime time(LEAP_DAY);
    EXPECT_EQ(time.getTheTimeString("%H:%M:%S", GTime::MILLISECONDS), "13:34:56,012");
    EXPECT_EQ(time.getTheTimeString("%H:%M:%S", GTime::MICROSECONDS), "13:34:56,012345");
    EXPECT_EQ(time.getTheTimeString("%H:%M:%S", GTime::NO_FRACTION), "13:34:56");
    EXPECT_EQ(time.getTheTimeString("%H:%M:%S", static_cast<GTime::FORMAT_SECOND>(3)), "13:34:56");
}

TEST_F(GTimeTest, shows_the_fraction_that_the_log_bits_ask_for) {
    const GTime time(LEAP_DAY);
    EXPECT_EQ(time.getTimeString(0), "13:34:56");
    EXPECT_EQ(time.getTimeString(128), "13:34:56,012");
    EXPECT_EQ(time.getTimeString(256), "13:34:56,012345");
    EXPECT_EQ(time.getTimeString(256 | 128), "13:34:56,012345");
    EXPECT_EQ(time.getTimeString(~(256u | 128u)), "13:34:56");
}

TEST_F(GTimeTest, shows_fractions_upward_before_1970) {
    const GTime time(static_cast<unsigned long long>(-1LL));
    EXPECT_EQ(time.getTheTimeString("%Y-%m-%d %H:%M:%S", GTime::MICROSECONDS),
              "1970-01-01 00:59:59,999999");
    EXPECT_EQ(time.getRelativeMilliseconds(), 999u);
}

TEST_F(GTimeTest, formats_by_a_pattern_up_to_511_bytes) {
    const GTime time(LEAP_DAY);
    EXPECT_EQ(time.toString("%d.%m.%y"), "29.02.24");
    EXPECT_EQ(time.toString_year_month_day(), "2024-02-29");
    EXPECT_EQ(time.create_file_name("log-%H%M.txt"), "log-1334.txt");
    EXPECT_EQ(time.toString(std::string(511, 'x')), std::string(511, 'x'));
    EXPECT_EQ(time.toString(std::string(512, 'x')), "");
}

TEST_F(GTimeTest, writes_header_dates_in_gmt_and_mail_dates_behind_a_day) {
    const GTime time(LEAP_DAY);
    EXPECT_EQ(time.create_GMT_time(), "Thu, 29 Feb 2024 12:34:56 GMT");
    EXPECT_EQ(time.create_Mail_time("Thu, "), "Thu, 29 Feb 2024 13:34:56");
    EXPECT_EQ(time.create_Mail_time("100%d "), "100%d 29 Feb 2024 13:34:56");
}

TEST_F(GTimeTest, shows_the_present_moment) {
    const GTime before(true);
    const std::string name = GTime::create_second_file_name();
    const std::string text = GTime::get_the_time("%Y-%m-%d", GTime::NO_FRACTION);
    const GTime after(true);
    EXPECT_LE(before.create_file_name("%Y-%m-%d---%H-%M-%S"), name);
    EXPECT_LE(name, after.create_file_name("%Y-%m-%d---%H-%M-%S"));
    EXPECT_LE(before.toString_year_month_day(), text);
    EXPECT_LE(text, after.toString_year_month_day());
}

TEST_F(GTimeTest, compares_points_in_time) {
    const GTime early(static_cast<unsigned long long>(-1LL));
    const GTime late(1ULL);
    EXPECT_EQ(early.compare(late), -1);
    EXPECT_EQ(late.compare(early), 1);
    EXPECT_EQ(late.compare(GTime(late)), 0);
    EXPECT_TRUE(early < late && early <= late && late > early && late >= early && early != late);
    EXPECT_TRUE(late == GTime(1ULL) && late <= GTime(1ULL) && late >= GTime(1ULL));
    EXPECT_FALSE(late < GTime(1ULL) || late > GTime(1ULL) || late != GTime(1ULL));
}

}  // namespace
