#include "vork2d/rally/serve.h"

#include <limits>

#include <glm/geometric.hpp>
#include <gtest/gtest.h>

namespace {

using namespace vork2d::rally;

TEST(Serve, leaves_the_face_of_the_left_paddle_for_the_mirrored_middle_of_the_right_one) {
    Court court;
    court.paddleLeft.pos.y = -30;
    court.paddleRight.pos.y = 50;
    Ball ball;
    ball.velocity = 123;
    const Serve line = serve(ball, court, SIDE::LEFT);
    EXPECT_EQ(line.ptStart, glm::vec2(-370, -30));
    EXPECT_EQ(line.ptTarget, glm::vec2(370, 50));
    EXPECT_EQ(line.yTopBall, 195.0f);
    EXPECT_EQ(line.ptTargetMirror, glm::vec2(370, 340));
    EXPECT_EQ(ball.pos, line.ptStart);
    EXPECT_FLOAT_EQ(glm::length(ball.dir), 1.0f);
    EXPECT_FLOAT_EQ(ball.dir.y / ball.dir.x, 370.0f / 740.0f);
    EXPECT_EQ(ball.velocity, 123.0f);
}

TEST(Serve, from_the_right_flies_to_the_left) {
    const Court court;
    Ball ball;
    const Serve line = serve(ball, court, SIDE::RIGHT);
    EXPECT_EQ(line.ptStart, glm::vec2(370, 0));
    EXPECT_EQ(line.ptTarget, glm::vec2(-370, 0));
    EXPECT_TRUE(ball.is_dir_left());
    EXPECT_TRUE(ball.is_dir_up());
}

TEST(TravelTime, comes_from_milliseconds_and_0_counts_as_1) {
    EXPECT_EQ(tm_travel_from_ms(5000), 5.0f);
    EXPECT_EQ(tm_travel_from_ms(1), 0.001f);
    EXPECT_EQ(tm_travel_from_ms(0), 0.001f);
}

TEST(TravelTime, is_shown_between_1_and_10000_milliseconds) {
    EXPECT_EQ(ms_travel(5.0f), 5000U);
    EXPECT_EQ(ms_travel(0.0004f), 1U);
    EXPECT_EQ(ms_travel(11.0f), 10'000U);
    EXPECT_EQ(ms_travel(std::numeric_limits<float>::infinity()), 10'000U);
    EXPECT_EQ(ms_travel(std::numeric_limits<float>::quiet_NaN()), 10'000U);
}

}  // namespace
