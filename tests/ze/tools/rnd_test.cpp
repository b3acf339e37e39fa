#include "ze/tools/rnd.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <random>
#include <set>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace rnd = ze::rnd;

constexpr int DRAWS = 5000;

template <typename Draw>
std::set<char> drawn(Draw draw) {
    std::set<char> chars;
    for (int i = 0; i < DRAWS; ++i) {
        chars.insert(draw());
    }
    return chars;
}

std::set<char> range(char first, char last) {
    std::set<char> chars;
    for (char c = first; c <= last; ++c) {
        chars.insert(c);
    }
    return chars;
}

TEST(rnd, repeats_its_sequence_from_the_seed_on) {
    rnd::ini_seed();
    const std::string first = rnd::next_string(8, true, 3);
    rnd::ini_seed();
    EXPECT_EQ(rnd::next_string(8, true, 3), first);
}

TEST(rnd, is_the_64_bit_twister_seeded_with_1000) {
    rnd::ini_seed();
    std::mt19937_64 engine(1000);
    EXPECT_EQ(rnd::number(true), engine());
    EXPECT_EQ(rnd::number(false), engine());
}

// In a program of its own, since it is the very first draw that counts.
TEST(rnd_DeathTest, starts_with_the_seed_of_the_standard_library) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto draw_first = [] {
        std::cerr << "first draw:" << rnd::number(true) << '\n';
        std::exit(0);
    };
    const std::string expected = "first draw:" + std::to_string(std::mt19937_64(5489)());
    EXPECT_EXIT(draw_first(), testing::ExitedWithCode(0), expected);
}

TEST(rnd, gives_the_same_listener_key_in_every_run) {
    rnd::ini_seed();
    EXPECT_EQ(rnd::next_string(8, true, 1), "DZVLJCRG");
}

TEST(rnd, draws_every_character_of_its_ranges_and_no_other) {
    EXPECT_EQ(drawn(rnd::letter), range('A', 'Z'));
    EXPECT_EQ(drawn(rnd::letter_lowercase), range('a', 'z'));
    EXPECT_EQ(drawn(rnd::digit), range('0', '9'));
}

TEST(rnd, draws_a_colon_but_never_a_zero_among_letters_and_digits) {
    std::set<char> expected = range('A', 'Z');
    expected.merge(range('1', '9'));
    expected.insert(':');
    EXPECT_EQ(drawn(rnd::alnum), expected);
}

TEST(rnd, draws_both_ends_of_a_range_given_in_either_order) {
    std::set<unsigned long long> numbers;
    for (int i = 0; i < DRAWS; ++i) {
        numbers.insert(rnd::number_range(7, 5, true));
    }
    EXPECT_EQ(numbers, (std::set<unsigned long long>{5, 6, 7}));
    EXPECT_EQ(rnd::number_range(9, 9, false), 9u);
}

TEST(rnd, draws_from_the_whole_range_as_the_engine_does) {
    rnd::ini_seed();
    const unsigned long long first = rnd::number(true);
    rnd::ini_seed();
    EXPECT_EQ(rnd::number_range(0, std::numeric_limits<unsigned long long>::max(), true), first);
}

// What the first call binds lasts for the life of the program, so each binding has one of its own.
template <typename Check>
void in_a_program_of_its_own(Check check) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(check() ? 0 : 1), testing::ExitedWithCode(0), "");
}

template <typename Number, typename Draw>
std::pair<Number, Number> ends_of(Draw draw) {
    std::vector<Number> numbers;
    for (int i = 0; i < DRAWS; ++i) {
        numbers.push_back(draw());
    }
    const auto [lowest, highest] = std::minmax_element(numbers.begin(), numbers.end());
    return {*lowest, *highest};
}

TEST(rnd_DeathTest, binds_next_int_to_the_limit_of_its_first_call) {
    in_a_program_of_its_own([] {
        const int first = rnd::next_int(3);
        const auto ends = ends_of<int>([] { return rnd::next_int(1000); });
        return first <= 3 && ends == std::pair(0, 3);
    });
}

TEST(rnd_DeathTest, takes_a_first_limit_below_zero_as_zero) {
    in_a_program_of_its_own([] {
        return rnd::next_int(-5) == 0 &&
               ends_of<int>([] { return rnd::next_int(9); }) == std::pair(0, 0);
    });
}

TEST(rnd_DeathTest, binds_next_double_to_the_ends_of_its_first_call) {
    in_a_program_of_its_own([] {
        const double first = rnd::next_double(-1, 2);
        const auto [lowest, highest] = ends_of<double>([] { return rnd::next_double(1000, 2000); });
        return first < 2 && lowest >= -1 && lowest < -0.9 && highest < 2 && highest > 1.9;
    });
}

TEST(rnd_DeathTest, gives_the_low_end_where_there_is_no_range) {
    in_a_program_of_its_own([] { return rnd::next_double(5, 1) == 5; });
    in_a_program_of_its_own([] { return rnd::next_double(5, INFINITY) == 5; });
    in_a_program_of_its_own([] { return rnd::next_double(NAN, 1) == 0; });
}

TEST(rnd, joins_runs_of_letters_by_a_blank) {
    const std::string upper = rnd::next_string(3, true, 2);
    ASSERT_EQ(upper.size(), 7u);
    EXPECT_EQ(upper[3], ' ');
    EXPECT_TRUE(
        std::all_of(upper.begin(), upper.begin() + 3, [](char c) { return c >= 'A' && c <= 'Z'; }));
    const std::string lower = rnd::next_string(5, false, 1);
    ASSERT_EQ(lower.size(), 5u);
    EXPECT_TRUE(
        std::all_of(lower.begin(), lower.end(), [](char c) { return c >= 'a' && c <= 'z'; }));
}

TEST(rnd, gives_an_empty_text_for_no_words_or_no_letters) {
    EXPECT_EQ(rnd::next_string(8, true, 0), "");
    EXPECT_EQ(rnd::next_string(0, true, 1), "");
    EXPECT_EQ(rnd::next_string(0, true, 3), "  ");
}

TEST(rnd, gives_one_run_as_a_qstring) {
    rnd::ini_seed();
    const std::string text = rnd::next_string(8, false, 1);
    rnd::ini_seed();
    EXPECT_EQ(rnd::next_QString(8, false), QString::fromStdString(text));
}

}  // namespace
