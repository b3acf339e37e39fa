#include "vork2d/v3/PlayField.h"

#include "ze/tools/clock.h"

#include "FieldV3.h"

#include <cmath>

#include <glm/geometric.hpp>

namespace {

using test::FieldV3;
using test::Lines;
using vork2d::v3::playStats;

TEST_F(FieldV3, on_play_serves_a_tenth_clear_of_the_left_paddle) {
    field.on_play();
    EXPECT_EQ(field.ball.pos, glm::vec2(-370 + 0.1f, 0));
    EXPECT_EQ(field.state, 2U);
    EXPECT_EQ(log.lines().front(), "PlayField::on_play");
}

TEST_F(FieldV3, on_play_symmetric_serves_from_the_face_of_the_left_paddle) {
    field.on_play_symmetric();
    EXPECT_EQ(field.ball.pos, glm::vec2(-370, 0));
    EXPECT_EQ(log.lines(),
              (Lines{"PlayField::on_play_symmetric", "ptStart:-370.00, 0.00",
                     "ptTarget:370.00, 0.00", "yTopBall:195.00", "ptTargetMirror:370.00, 390.00",
                     "ball:pos:-370.00, 0.00, dir:0.88, 0.47, velocity:160.00"}));
}

TEST_F(FieldV3, both_serves_meet_the_middle_of_the_other_paddle_wherever_it_stands) {
    for (const bool symmetric : {false, true}) {
        field.paddleLeft.pos.y = -100;
        field.paddleRight.pos.y = 60;
        symmetric ? field.on_play_symmetric() : field.on_play();
        while (playStats.hitsPaddleRight == 0 && field.is_flying()) {
            const glm::vec2 before = field.ball.pos;
            field.next_frame(0.001f);
            ASSERT_NE(field.ball.pos, before);
        }
        EXPECT_EQ(playStats.hitsTop, 1U);
        EXPECT_EQ(playStats.hitsPaddleRight, 1U);
        EXPECT_NEAR(field.ball.pos.y, 60, 0.5f);
    }
}

TEST_F(FieldV3, a_symmetric_serve_comes_back_to_where_it_left) {
    field.on_play_symmetric();
    const float way = 2 * std::sqrt(740.0f * 740.0f + 390.0f * 390.0f);
    field.next_frame(way / field.ball.velocity);
    EXPECT_EQ(playStats.hitsPaddleRight, 1U);
    EXPECT_NEAR(field.ball.pos.x, -370, 0.01f);
    EXPECT_NEAR(field.ball.pos.y, 0, 0.01f);
}

TEST_F(FieldV3, a_serve_starts_the_record) {
    playStats.hitsTop = 7;
    field.set_tm_travel(2000);
    field.on_play();
    EXPECT_EQ(playStats.hitsTop, 0U);
    EXPECT_EQ(playStats.tmTravel, 2.0f);
    EXPECT_EQ(playStats.tmRefresh, 16);
    EXPECT_EQ(field.ball.travelDistance, 0.0f);
}

TEST_F(FieldV3, the_mouse_moves_the_paddle_that_the_ball_flies_to) {
    field.ball.dir = {1, 0};
    field.on_move_paddle({0, 1000});
    EXPECT_EQ(field.paddleRight.pos, glm::vec2(380, 160));
    field.ball.dir = {-1, 0};
    field.on_move_paddle({0, -1000});
    EXPECT_EQ(field.paddleLeft.pos, glm::vec2(-380, -160));
}

TEST_F(FieldV3, a_mouse_that_is_switched_off_moves_nothing) {
    field.flagMouse = false;
    field.on_move_paddle({0, 50});
    EXPECT_EQ(field.paddleLeft.pos.y, 0.0f);
    EXPECT_EQ(field.paddleRight.pos.y, 0.0f);
}

TEST_F(FieldV3, the_timer_moves_the_ball_by_the_time_that_has_passed) {
    field.on_play();
    const unsigned long long now = ze::time::get_milli_seconds();
    field.on_timer(now + 1000);
    const glm::vec2 before = field.ball.pos;
    field.on_timer(now + 1100);
    EXPECT_NEAR(glm::length(field.ball.pos - before), 16, 1e-3);
}

}  // namespace
