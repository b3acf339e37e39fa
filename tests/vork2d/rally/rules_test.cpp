#include "vork2d/rally/rules.h"

#include <bit>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace rules = vork2d::rally::rules;

struct Row {
    std::string name;
    float value;
    std::uint32_t bits;
};

TEST(rules, the_constants_are_these_very_floats) {
    const Row rows[] = {
        {"EPS", rules::EPS, 0x34000000},
        {"DEAD_ZONE", rules::DEAD_ZONE, 0x3D4CCCCD},
        {"LIVE_RANGE", rules::LIVE_RANGE, 0x3F733333},
        {"DEFLECTION", rules::DEFLECTION, 0x3F59999A},
        {"FIELD_WIDTH", rules::FIELD_WIDTH, 0x44480000},
        {"FIELD_HEIGHT", rules::FIELD_HEIGHT, 0x43C80000},
        {"BALL_DIR.x", rules::BALL_DIR.x, 0x3F785B43},
        {"BALL_DIR.y", rules::BALL_DIR.y, 0x3E785B43},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(std::bit_cast<std::uint32_t>(row.value), row.bits) << row.name;
    }
}

TEST(rules, a_frame_holds_eight_sub_steps) {
    EXPECT_EQ(rules::GUARD_LIMIT, 9U);
}

}  // namespace
