// What tells the generations apart, side by side: the same shot at the same paddle.
#include "ze/net/IConnectionState.h"

#include "vork2d/early/GenerationTest.h"
#include "vork2d/v1/PlayField.h"
#include "vork2d/v2/PlayField.h"
#include "vork2d/v3/PlayField.h"
#include "vork2d/v4/PlayField.h"

#include <gtest/gtest.h>

namespace {

using vork2d::early::FIELD_HEIGHT;
using vork2d::early::FIELD_WIDTH;

class NoConnection final : public ze::net::IConnectionState {
public:
    [[nodiscard]] bool is_connected() const override { return false; }
};

class Generations : public testing::Test {
protected:
    Generations() { log.ignore("Listener::~Listener@"); }

    /// One frame of 50 field units at the middle of the right paddle, whose face is 15 away.
    template <typename PlayField>
    static void shoot(PlayField& field) {
        field.timer.stop();
        field.ball.pos = {355, 0};
        field.ball.dir = {1, 0};
        field.ball.velocity = 1000;
    }

    test::LogCapture log;
};

TEST_F(Generations, a_fast_ball_tunnels_through_a_paddle_in_v1) {
    vork2d::v1::PlayField field(FIELD_WIDTH, FIELD_HEIGHT);
    shoot(field);
    field.next_frame(0.05f);
    EXPECT_EQ(field.ball.pos, glm::vec2(405, 0));
    EXPECT_EQ(field.ball.dir, glm::vec2(1, 0));
    EXPECT_EQ(field.hitsRight, 0U);
}

TEST_F(Generations, a_fast_ball_tunnels_through_a_paddle_in_the_step_of_v2) {
    vork2d::v2::PlayField field(FIELD_WIDTH, FIELD_HEIGHT);
    shoot(field);
    field.next_frame(0.05f);
    EXPECT_EQ(field.ball.pos, glm::vec2(405, 0));
    EXPECT_EQ(field.ball.dir, glm::vec2(1, 0));
}

TEST_F(Generations, a_fast_ball_bounces_in_the_continuous_motion_of_v2) {
    vork2d::v2::PlayField field(FIELD_WIDTH, FIELD_HEIGHT);
    shoot(field);
    field.next_frame_ext(0.05f);
    EXPECT_EQ(field.ball.pos, glm::vec2(335, 0));
    EXPECT_EQ(field.ball.dir, glm::vec2(-1, 0));
}

TEST_F(Generations, a_fast_ball_does_not_tunnel_through_a_paddle_in_v3) {
    vork2d::v3::PlayField field(FIELD_WIDTH, FIELD_HEIGHT);
    shoot(field);
    field.next_frame(0.05f);
    EXPECT_EQ(field.ball.pos, glm::vec2(335, 0));
    EXPECT_EQ(field.ball.dir, glm::vec2(-1, 0));
}

TEST_F(Generations, a_fast_ball_does_not_tunnel_through_a_paddle_in_v4) {
    NoConnection none;
    vork2d::v4::PlayField field(FIELD_WIDTH, FIELD_HEIGHT, none);
    field.flagSound = false;
    shoot(field);
    field.next_frame(0.05f);
    EXPECT_EQ(field.ball.pos, glm::vec2(335, 0));
    EXPECT_EQ(field.ball.dir, glm::vec2(-1, 0));
}

TEST_F(Generations, v3_reflects_like_a_mirror_where_v4_deflects) {
    vork2d::v3::PlayField three(FIELD_WIDTH, FIELD_HEIGHT);
    shoot(three);
    three.ball.pos.y = 30;
    three.next_frame(0.05f);
    EXPECT_EQ(three.ball.dir, glm::vec2(-1, 0));

    NoConnection none;
    vork2d::v4::PlayField four(FIELD_WIDTH, FIELD_HEIGHT, none);
    four.flagSound = false;
    shoot(four);
    four.ball.pos.y = 30;  // rel 0.75, without the dead zone 0.7 of 0.95, times 0.85
    four.next_frame(0.05f);
    EXPECT_NEAR(four.ball.dir.y / -four.ball.dir.x, 0.7f / 0.95f * 0.85f, 1e-6f);
}

}  // namespace
