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
        if (static_cast<relay::Reason>(i) != relay::Reason::NAME_TAKEN) {
            EXPECT_EQ(row.code, i + 1);
        }
        EXPECT_TRUE(words.insert(row.word).second) << row.word;
        EXPECT_LE(row.text.size(), CLOSE_FRAME) << row.word;
    }
}

TEST(Reason, a_client_is_told_the_same_of_a_taken_name_as_of_a_wrong_password) {
    const relay::ReasonInfo& taken = relay::info(relay::Reason::NAME_TAKEN);
    const relay::ReasonInfo& wrong = relay::info(relay::Reason::WRONG_PASSWORD);
    EXPECT_EQ(taken.code, wrong.code);
    EXPECT_EQ(taken.text, wrong.text);
    EXPECT_EQ(taken.close, wrong.close);
    EXPECT_NE(taken.word, wrong.word);
}

}  // namespace
