#include "Reason.h"

#include <set>
#include <string_view>

#include <gtest/gtest.h>

namespace {

TEST(Reason, every_reason_has_its_own_word_and_code_and_fits_into_a_close_frame) {
    constexpr std::size_t CLOSE_FRAME = 123;
    std::set<std::string_view> words;
    for (int i = 0; i < static_cast<int>(relay::Reason::COUNT); ++i) {
        const relay::ReasonInfo& row = relay::info(static_cast<relay::Reason>(i));
        EXPECT_EQ(row.code, i + 1);
        EXPECT_TRUE(words.insert(row.word).second) << row.word;
        EXPECT_LE(row.text.size(), CLOSE_FRAME) << row.word;
    }
}

}  // namespace
