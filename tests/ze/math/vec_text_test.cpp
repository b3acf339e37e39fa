#include "ze/math/vec_text.h"

#include "ze/tools/format.h"

#include <limits>
#include <locale>
#include <vector>

#include <gtest/gtest.h>

namespace {

using glm::vec2;
using glm::vec3;
using ze::math::from_string;
using ze::math::to_string;

const vec2 FALLBACK(7, 8);

TEST(vec_text, has_a_comma_no_blank_and_six_digits) {
    EXPECT_EQ(to_string(vec2(1.5f, -2)), "1.5,-2");
    EXPECT_EQ(to_string(vec2(1.0f / 3.0f, 1234567)), "0.333333,1.23457e+06");
    EXPECT_EQ(to_string(vec3(1, 2, 3.25f)), "1,2,3.25");
}

TEST(vec_text, differs_from_the_form_in_the_log) {
    EXPECT_EQ(ze::str::xprintF(0, "$", vec2(1, 2)), "1.00, 2.00");
    EXPECT_EQ(to_string(vec2(1, 2)), "1,2");
}

struct Row {
    const char* name;
    const char* text;
    vec2 value;
};

TEST(vec_text, reads_what_it_writes) {
    const std::vector<Row> rows = {
        {"plain", "1.5,-2", {1.5f, -2}},
        {"exponent", "1e3,2E-2", {1000, 0.02f}},
        {"a sign in front", "+1,-0", {1, 0}},
        {"the log's form", "1.00, 2.00", {1, 2}},
        {"blanks around", " 1 , 2 ", {1, 2}},
        {"text behind", "1,2;3", {1, 2}},
        {"too small for a float", "1e-60,1", {0, 1}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(from_string(row.text, FALLBACK), row.value) << row.name;
    }
}

TEST(vec_text, gives_the_fallback_for_what_it_cannot_read) {
    const std::vector<Row> rows = {
        {"empty", "", FALLBACK},
        {"one number", "1", FALLBACK},
        {"one number and the comma", "1,", FALLBACK},
        {"no first number", ",2", FALLBACK},
        {"semicolon", "1;2", FALLBACK},
        {"blank", "1 2", FALLBACK},
        {"two commas", "1,,2", FALLBACK},
        {"word", "left,right", FALLBACK},
        {"infinity", "inf,1", FALLBACK},
        {"not a number", "1,nan", FALLBACK},
        {"too large for a float", "1e39,1", FALLBACK},
        {"too large and negative", "1,-1e99", FALLBACK},
        {"hexadecimal", "0x10,1", FALLBACK},
        {"broken exponent", "1e,2", FALLBACK},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(from_string(row.text, FALLBACK), row.value) << row.name;
    }
}

TEST(vec_text, stops_at_a_nul) {
    EXPECT_EQ(from_string(std::string("1\0,2", 4), FALLBACK), FALLBACK);
}

TEST(vec_text, never_reads_a_value_that_is_not_finite_though_it_writes_it) {
    const float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(to_string(vec2(infinity, 0)), "inf,0");
    EXPECT_EQ(from_string(to_string(vec2(infinity, 0)), FALLBACK), FALLBACK);
}

TEST(vec_text, reads_three_components_or_none) {
    const vec3 fallback(7, 8, 9);
    EXPECT_EQ(from_string("1,2,3", fallback), vec3(1, 2, 3));
    EXPECT_EQ(from_string("1,2", fallback), fallback);
    EXPECT_EQ(from_string("1,2;3", fallback), fallback);
}

struct CommaDecimals : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST(vec_text, does_not_follow_the_locale) {
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new CommaDecimals));
    const std::string text = to_string(vec2(1.5f, 2));
    const vec2 value = from_string("1.5,2", FALLBACK);
    std::locale::global(before);
    EXPECT_EQ(text, "1.5,2");
    EXPECT_EQ(value, vec2(1.5f, 2));
}

}  // namespace
