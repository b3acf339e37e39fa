#include "vork2d/v5/PLAY_STATE.h"

#include <gtest/gtest.h>

namespace {

namespace PLAY_STATE = vork2d::v5::PLAY_STATE;

TEST(PLAY_STATE, bits_have_their_values) {
    EXPECT_EQ(PLAY_STATE::CONNECTED1, 2U);
    EXPECT_EQ(PLAY_STATE::CONNECTED2, 4U);
    EXPECT_EQ(PLAY_STATE::PLAY, 8U);
}

struct Row {
    unsigned state;
    const char* text;
};

TEST(PLAY_STATE, text_joins_the_words_of_the_bits_that_are_set) {
    const Row rows[] = {
        {0, ""},
        {1, ""},
        {2, "CONNECTED1"},
        {4, "CONNECTED2"},
        {8, "PLAY"},
        {10, "CONNECTED1 | PLAY"},
        {14, "CONNECTED1 | CONNECTED2 | PLAY"},
        {0xFFFFFFF9, "PLAY"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PLAY_STATE::to_string(row.state), row.text) << row.state;
    }
}

}  // namespace
