#include "vork2d/rally/Rally.h"

#include <gtest/gtest.h>

namespace {

using namespace vork2d::rally;

class Silent final : public StepWatcher {};

class RallyTest : public testing::Test {
protected:
    Rally rally;
    Silent silent;
};

TEST_F(RallyTest, begins_with_the_paddles_in_their_places_and_the_usual_speed) {
    EXPECT_EQ(rally.court.paddleLeft.pos, glm::vec2(-380, 0));
    EXPECT_EQ(rally.court.paddleRight.pos, glm::vec2(380, 0));
    EXPECT_EQ(rally.ball.velocity, 160.0f);
}

TEST_F(RallyTest, a_start_serves_with_the_speed_of_its_time_of_travel_and_counts_anew) {
    rally.hits.hitsTop = 3;
    rally.ball.travelDistance = 99;
    rally.start(SIDE::LEFT, 2000);
    EXPECT_EQ(rally.ball.velocity, 400.0f);
    EXPECT_EQ(rally.tmTravel, 2.0f);
    EXPECT_EQ(rally.ball.travelDistance, 0.0f);
    EXPECT_EQ(rally.hits.all_hits(), 0U);
    EXPECT_TRUE(rally.ball.is_dir_right());
}

TEST_F(RallyTest, a_ball_that_nobody_meets_leaves_and_its_distance_ends_at_the_edge) {
    rally.ball.pos = {300, 0};
    rally.ball.dir = {1, 0};
    rally.ball.velocity = 100;
    rally.move_paddle(SIDE::RIGHT, 150);
    EXPECT_FALSE(rally.advance(1, silent));
    const std::optional<Exit> exit = rally.advance(0.25f, silent);
    ASSERT_TRUE(exit);
    EXPECT_EQ(exit->side, SIDE::RIGHT);
    EXPECT_EQ(rally.ball.pos, glm::vec2(425, 0));
    EXPECT_EQ(rally.ball.travelDistance, 105.0f);
}

TEST_F(RallyTest, a_follower_flies_through_everything) {
    rally.ball.pos = {300, 0};
    rally.ball.dir = {1, 0};
    rally.ball.velocity = 100;
    rally.follow(2, silent);
    EXPECT_EQ(rally.ball.pos, glm::vec2(500, 0));
    EXPECT_EQ(rally.hits.all_hits(), 0U);
}

TEST_F(RallyTest, a_paddle_stays_inside_the_field) {
    rally.move_paddle(SIDE::LEFT, 1000);
    EXPECT_EQ(rally.court.paddleLeft.pos, glm::vec2(-380, 160));
    rally.move_paddle(SIDE::LEFT, -1000);
    EXPECT_EQ(rally.court.paddleLeft.pos, glm::vec2(-380, -160));
    rally.move_paddle(SIDE::RIGHT, 12.5f);
    EXPECT_EQ(rally.court.paddleRight.pos, glm::vec2(380, 12.5f));
}

TEST_F(RallyTest, in_a_field_lower_than_its_paddle_the_lower_end_is_inside) {
    EXPECT_EQ(inside_field(rally.court.paddleLeft, 60, 0), 10.0f);
    EXPECT_EQ(inside_field(rally.court.paddleLeft, 60, 50), -10.0f);
}

}  // namespace
