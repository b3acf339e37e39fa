#include "vork2d/rally/HitInfo.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using vork2d::rally::HIT_NONE;
using vork2d::rally::HIT_PADDLE_LEFT;
using vork2d::rally::HIT_PADDLE_RIGHT;
using vork2d::rally::HitInfo;

// The line of the right paddle in the middle of the field.
HitInfo hit(glm::vec2 from, glm::vec2 to) {
    return HitInfo::hit_vertical(HIT_PADDLE_RIGHT, from, to, 370, -45, 45);
}

void expect_fresh(const HitInfo& info) {
    EXPECT_EQ(info.type, HIT_NONE);
    EXPECT_EQ(info.t, 2.0f);
    EXPECT_EQ(info.pt, glm::vec2(0, 0));
}

TEST(HitInfo, a_fresh_one_is_later_than_any_hit) {
    expect_fresh(HitInfo{});
}

TEST(HitInfo, a_motion_across_the_line_hits_it_on_the_way) {
    const HitInfo info = hit({360, 10}, {380, 30});
    EXPECT_EQ(info.type, HIT_PADDLE_RIGHT);
    EXPECT_EQ(info.t, 0.5f);
    EXPECT_EQ(info.pt, glm::vec2(370, 20));
}

TEST(HitInfo, both_ends_of_the_motion_count) {
    EXPECT_EQ(hit({370, 0}, {380, 0}).t, 0.0f);
    EXPECT_EQ(hit({360, 0}, {370, 0}).t, 1.0f);
}

TEST(HitInfo, both_ends_of_the_line_count) {
    EXPECT_EQ(hit({360, 45}, {380, 45}).pt, glm::vec2(370, 45));
    EXPECT_EQ(hit({360, -45}, {380, -45}).pt, glm::vec2(370, -45));
}

struct MissRow {
    std::string name;
    glm::vec2 from, to;
};

TEST(HitInfo, what_misses_the_line_gives_a_fresh_value) {
    const MissRow rows[] = {
        {"too short", {350, 0}, {369, 0}},
        {"past the line", {371, 0}, {390, 0}},
        {"above the end", {360, 45.01f}, {380, 45.01f}},
        {"below the end", {360, -45.01f}, {380, -45.01f}},
        {"upright", {370, -10}, {370, 10}},
        {"no motion", {370, 0}, {370, 0}},
    };
    for (const MissRow& row : rows) {
        SCOPED_TRACE(row.name);
        expect_fresh(hit(row.from, row.to));
    }
}

TEST(HitInfo, a_motion_below_epsilon_in_x_does_not_count) {
    expect_fresh(HitInfo::hit_vertical(HIT_PADDLE_LEFT, {0, 0}, {1.1e-7f, 0}, 0, -1, 1));
    EXPECT_EQ(HitInfo::hit_vertical(HIT_PADDLE_LEFT, {0, 0}, {1.2e-7f, 0}, 0, -1, 1).type,
              HIT_PADDLE_LEFT);
}

TEST(HitInfo, a_line_upside_down_is_not_hit) {
    expect_fresh(HitInfo::hit_vertical(HIT_PADDLE_LEFT, {-10, 1.5f}, {10, 1.5f}, 0, 2, 1));
}

}  // namespace
