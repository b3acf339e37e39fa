#include "utf8.h"

#include <string_view>

#include <gtest/gtest.h>

namespace {

TEST(Utf8, code_points_are_taken_one_by_one) {
    std::string_view text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8F\x93";
    EXPECT_EQ(relay::count_code_points(text), 4U);
    for (const char32_t point : {U'a', U'\u00E9', U'\u20AC', U'\U0001F3D3'}) {
        EXPECT_EQ(relay::take_code_point(text), point);
    }
    EXPECT_TRUE(text.empty());
}

TEST(Utf8, a_broken_end_is_taken_too) {
    std::string_view text = "\xF0\x9F";
    static_cast<void>(relay::take_code_point(text));
    EXPECT_TRUE(text.empty());
}

}  // namespace
