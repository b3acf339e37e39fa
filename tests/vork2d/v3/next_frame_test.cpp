// The continuous frame step, and the place where a ball leaves the field.
#include "FieldV3.h"

#include <glm/geometric.hpp>

namespace {

using test::Lines;
using vork2d::v3::playStats;

constexpr float TOLERANCE = 0.01f;  // field units, for what is no more than float rounding

class NextFrameV3 : public test::FieldV3 {};

TEST_F(NextFrameV3, a_time_that_is_not_above_0_is_reported_and_skipped) {
    fly({0, 0}, {1, 0}, 100);
    log.expect_error("PlayField::next_frame, invalid dt:0.00");
    field.next_frame(0);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(field.ball.travelDistance, 0.0f);
}

TEST_F(NextFrameV3, a_ball_in_the_open_flies_straight_on) {
    fly({0, 0}, {0.75f, -0.5f}, 100);
    field.next_frame(0.5f);
    EXPECT_EQ(field.ball.pos, glm::vec2(37.5f, -25));
    EXPECT_EQ(field.ball.travelDistance, 50.0f);
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(NextFrameV3, a_wall_turns_the_ball_for_the_rest_of_the_frame) {
    fly({0, -175}, {0.6f, -0.8f}, 100);
    field.next_frame(0.5f);
    EXPECT_NEAR(field.ball.pos.x, 30, TOLERANCE);
    EXPECT_NEAR(field.ball.pos.y, -175, TOLERANCE);
    EXPECT_EQ(field.ball.dir, glm::vec2(0.6f, 0.8f));
    EXPECT_EQ(playStats.hitsBottom, 1U);
    EXPECT_EQ(log.lines(), Lines{"PlayField::next_frame, HIT HIT_BOTTOM, ball: {pos:15.00, "
                                 "-195.00, dir:0.60, -0.80, velocity:100.00}"});
}

TEST_F(NextFrameV3, each_paddle_is_a_mirror_at_any_height) {
    for (const float y : {0.0f, 30.0f, -44.0f}) {
        playStats = {};
        fly({-360, y}, {-0.8f, 0}, 100);
        field.next_frame(0.25f);
        EXPECT_EQ(field.ball.dir, glm::vec2(0.8f, 0)) << y;
        fly({360, y}, {0.8f, 0}, 100);
        field.next_frame(0.25f);
        EXPECT_EQ(field.ball.dir, glm::vec2(-0.8f, 0)) << y;
        EXPECT_EQ(playStats.hitsPaddleLeft, 1U);
        EXPECT_EQ(playStats.hitsPaddleRight, 1U);
    }
}

TEST_F(NextFrameV3, a_corner_of_wall_and_paddle_turns_the_ball_back) {
    field.paddleRight.pos.y = 160;
    fly({360, 185}, {0.75f, 0.75f}, 100);
    field.next_frame(0.25f);
    EXPECT_EQ(field.ball.dir, glm::vec2(-0.75f, -0.75f));
    EXPECT_EQ(playStats.all_hits(), 2U);
}

TEST_F(NextFrameV3, a_very_long_frame_is_flown_to_its_end) {
    fly({0, 0}, {0, 1}, 1000);
    field.next_frame(39);  // a hundred times from wall to wall
    EXPECT_EQ(playStats.all_hits(), 100U);
    EXPECT_NEAR(field.ball.pos.y, 0, 1);
}

TEST_F(NextFrameV3, a_way_that_no_crossing_shortens_ends_at_its_first_hit) {
    field.set_tm_travel(1);
    fly({0, 0}, {0.6f, 0.8f}, field.ball.velocity);
    field.next_frame(1e7f);
    EXPECT_TRUE(field.is_flying());
    EXPECT_EQ(field.ball.pos.y, 195.0f);
    field.next_frame(0.0001f);
    EXPECT_NEAR(field.ball.pos.y, 131, TOLERANCE) << "it has turned back into the field";
}

TEST_F(NextFrameV3, a_frame_across_the_field_ends_where_small_frames_end) {
    field.on_play_symmetric();
    field.next_frame(7);
    const glm::vec2 big = field.ball.pos;
    const unsigned hits = playStats.all_hits();
    field.on_play_symmetric();
    for (int i = 0; i < 7000; ++i) {
        field.next_frame(0.001f);
    }
    EXPECT_EQ(playStats.all_hits(), hits);
    EXPECT_NEAR(glm::length(field.ball.pos - big), 0, 0.5f);
}

TEST_F(NextFrameV3, the_distance_of_a_flight_ends_at_the_edge) {
    fly({390, 100}, {1, 0}, 100);
    field.next_frame(0.25f);  // 25 on, of which the last 10 lie beyond the edge
    EXPECT_EQ(field.state, 0U);
    EXPECT_EQ(field.ball.pos, glm::vec2(415, 100));
    EXPECT_NEAR(playStats.travelDistance, 15, TOLERANCE);
    const Lines lines = log.lines();
    ASSERT_GE(lines.size(), 4U);
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 4),
              (Lines{"BALL ON RIGHT SIDE, ball.pos:415.00, 100.00",
                     "BALL EXIT, ptExit:405.00, 100.00", "", "PlayStats, v3"}));
}

TEST_F(NextFrameV3, a_ball_that_leaves_at_the_left_is_cut_at_the_left_edge) {
    fly({-390, 100}, {-1, 0}, 100);
    field.next_frame(0.25f);
    EXPECT_EQ(Lines(test::lines_from(log.lines(), "BALL ON")).at(1),
              "BALL EXIT, ptExit:-405.00, 100.00");
}

TEST_F(NextFrameV3, a_ball_that_was_out_before_has_no_cut) {
    fly({420, 100}, {1, 0}, 100);
    log.expect_error("BALL EXIT, no cut found");
    field.next_frame(0.125f);
    EXPECT_EQ(field.state, 0U);
    EXPECT_EQ(playStats.travelDistance, 12.5f);
}

}  // namespace
