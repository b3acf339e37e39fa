#include "ze/math/ORIENT2D.h"

#include "support/LogCapture.h"

#include <vector>

#include <gtest/gtest.h>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;

struct Row {
    ORIENT2D::Type type;
    unsigned number;
    const char* text;
    ORIENT2D::Type opposite;
};

const std::vector<Row> ROWS = {
    {ORIENT2D::LEFT, 0, "LEFT", ORIENT2D::RIGHT},
    {ORIENT2D::RIGHT, 1, "RIGHT", ORIENT2D::LEFT},
    {ORIENT2D::UP, 2, "UP", ORIENT2D::DOWN},
    {ORIENT2D::DOWN, 3, "DOWN", ORIENT2D::UP},
};

TEST(ORIENT2D, each_value_has_its_number_text_and_opposite) {
    for (const Row& row : ROWS) {
        EXPECT_EQ(row.type, row.number);
        EXPECT_EQ(ORIENT2D::to_string(row.number), row.text);
        EXPECT_EQ(ORIENT2D::from_string(row.text), row.type);
        EXPECT_EQ(ORIENT2D::get_opposite(row.number), row.opposite);
    }
}

TEST(ORIENT2D, each_test_holds_for_its_own_value_only) {
    for (unsigned type = 0; type < 5; ++type) {
        EXPECT_EQ(ORIENT2D::is_left(type), type == 0);
        EXPECT_EQ(ORIENT2D::is_right(type), type == 1);
        EXPECT_EQ(ORIENT2D::is_up(type), type == 2);
        EXPECT_EQ(ORIENT2D::is_down(type), type == 3);
    }
}

TEST(ORIENT2D, a_number_above_the_table_shows_in_its_text) {
    EXPECT_EQ(ORIENT2D::to_string(4), "ORIENT2D-type-unknown:4");
    EXPECT_EQ(ORIENT2D::to_string(4294967295u), "ORIENT2D-type-unknown:4294967295");
}

TEST(ORIENT2D, a_word_that_is_not_exact_is_logged_and_gives_left) {
    for (const char* word : {"right", "RIGHT ", "", "RIGH", "LEFTRIGHT"}) {
        test::LogCapture log;
        const std::string line =
            std::string("ORIENT2D::from_string, cannot parse <<<") + word + ">>>";
        log.expect_error(line);
        EXPECT_EQ(ORIENT2D::from_string(word), ORIENT2D::LEFT);
        EXPECT_EQ(log.lines_with_level(), std::vector<std::string>{"ERR " + line});
    }
}

TEST(ORIENT2D, the_opposite_of_an_unknown_number_is_logged_and_left) {
    test::LogCapture log;
    log.expect_error("ORIENT2D::get_opposite, type:4 is unknown, return LEFT (default)");
    EXPECT_EQ(ORIENT2D::get_opposite(4), ORIENT2D::LEFT);
}

}  // namespace
