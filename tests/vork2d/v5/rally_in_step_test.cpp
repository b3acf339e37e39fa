// Two clients keep one rally in step over a line with a delay.
#include "vork2d/v5/Duel.h"
#include "vork2d/v5/PlayStats.h"

#include <algorithm>
#include <string>
#include <vector>

#include <glm/geometric.hpp>

namespace {

using test::Duel;
using Words = std::vector<std::string>;

constexpr float FRAME = 1.6f;        // field units that the ball flies in a frame at the start
constexpr float SIX_DIGITS = 1e-3f;  // field units: what the text of a vector can lose

class RallyInStep : public testing::TestWithParam<unsigned long long> {
protected:
    test::LogCapture log;
    Duel duel{GetParam()};

    RallyInStep() { ze::log::set_log_level(ze::log::ERROR); }

    [[nodiscard]] bool run_to_the_end() {
        return duel.run_until([this] {
            return !duel.a.field.is_state_PLAY() && !duel.b.field.is_state_PLAY() &&
                   duel.a.line.empty() && duel.b.line.empty();
        });
    }

    /// Both have heard of the start.
    [[nodiscard]] bool run_to_the_serve() {
        return duel.run_until([this] { return duel.b.field.is_state_PLAY(); });
    }
};

INSTANTIATE_TEST_SUITE_P(delay, RallyInStep, testing::Values(0, 50, 200),
                         [](const auto& row) { return std::to_string(row.param) + "_ms"; });

TEST_P(RallyInStep, the_starter_is_master_and_the_other_one_follows) {
    duel.a.press_start();
    ASSERT_TRUE(run_to_the_serve());
    EXPECT_TRUE(duel.a.field.is_master());
    EXPECT_FALSE(duel.b.field.is_master());
}

TEST_P(RallyInStep, both_compute_the_same_serve) {
    duel.a.press_start();
    const glm::vec2 posA = duel.a.field.ball.pos;
    const glm::vec2 dirA = duel.a.field.ball.dir;
    ASSERT_TRUE(run_to_the_serve());
    const vork2d::v5::Ball& ballB = duel.b.field.ball;
    EXPECT_EQ(ballB.dir, dirA);
    EXPECT_EQ(ballB.velocity, duel.a.field.ball.velocity);
    // B has made its first frame already.
    EXPECT_LT(glm::length(ballB.pos - posA), 1.7f);
}

TEST_P(RallyInStep, the_follower_stays_one_delay_behind_until_the_first_wall) {
    duel.a.press_start();
    ASSERT_TRUE(run_to_the_serve());
    for (int i = 0; i < 50; ++i) {
        duel.step();
    }
    const float behind = glm::length(duel.a.field.ball.pos - duel.b.field.ball.pos);
    EXPECT_NEAR(behind, 160.0f * static_cast<float>(GetParam()) / 1000.0f, FRAME + 0.05f);
}

TEST_P(RallyInStep, at_the_wall_the_follower_overshoots_and_is_set_right) {
    duel.a.press_start();
    ASSERT_TRUE(duel.run_until([this] { return duel.a.field.ball.is_dir_down(); }));
    const glm::vec2 posA = duel.a.field.ball.pos;
    const glm::vec2 dirA = duel.a.field.ball.dir;
    EXPECT_EQ(duel.a.words.back(), "setBall");
    float yHighest = 0;
    ASSERT_TRUE(duel.run_until([this, &yHighest] {
        yHighest = std::max(yHighest, duel.b.field.ball.pos.y);
        return duel.b.field.ball.is_dir_down();
    }));
    // Set right and then one frame on.
    EXPECT_LT(glm::length(duel.b.field.ball.pos - (posA + dirA * FRAME)), SIX_DIGITS);
    EXPECT_LT(glm::length(duel.b.field.ball.dir - dirA), 1e-5f);
    EXPECT_LE(yHighest, 195.0f + 1.0f);
}

TEST_P(RallyInStep, a_paddle_hit_crosses_too) {
    duel.a.press_start();
    ASSERT_TRUE(duel.run_until([this] { return duel.a.field.ball.is_dir_left(); }));
    ASSERT_TRUE(duel.run_until([this] { return duel.b.field.ball.is_dir_left(); }));
    EXPECT_EQ(duel.a.words, (Words{"start", "setBall", "setBall"}));
    EXPECT_LT(glm::length(duel.b.field.ball.dir - duel.a.field.ball.dir), 1e-5f);
}

TEST_P(RallyInStep, a_moved_paddle_stands_alike_on_both_clients) {
    duel.a.move_paddle(40);
    duel.b.move_paddle(-70.5f);
    duel.settle();
    EXPECT_EQ(duel.a.field.paddleLeft.pos, duel.b.field.paddleLeft.pos);
    EXPECT_EQ(duel.a.field.paddleRight.pos, duel.b.field.paddleRight.pos);
    EXPECT_EQ(duel.a.field.paddleLeft.pos.y, 40.0f);
    EXPECT_EQ(duel.b.field.paddleRight.pos.y, -70.5f);
}

TEST_P(RallyInStep, a_ball_past_the_right_paddle_is_a_point_for_the_left) {
    duel.b.move_paddle(-160);
    duel.settle();
    duel.a.press_start();
    duel.b.move_paddle(160);
    ASSERT_TRUE(run_to_the_serve());
    ASSERT_TRUE(run_to_the_end());
    EXPECT_EQ(duel.a.points, 1U);
    EXPECT_EQ(duel.a.pointsOpponent, 0U);
    EXPECT_EQ(duel.b.points, 0U);
    EXPECT_EQ(duel.b.pointsOpponent, 1U);
    EXPECT_EQ(duel.a.words.back(), "out_of_field");
    EXPECT_EQ(std::count(duel.b.words.begin(), duel.b.words.end(), "out_of_field"), 0);
}

TEST_P(RallyInStep, a_ball_past_the_left_paddle_is_a_point_for_the_right) {
    duel.a.press_start();
    ASSERT_TRUE(run_to_the_serve());
    duel.a.move_paddle(160);
    ASSERT_TRUE(run_to_the_end());
    EXPECT_EQ(duel.b.points, 1U);
    EXPECT_EQ(duel.b.pointsOpponent, 0U);
    EXPECT_EQ(duel.a.points, 0U);
    EXPECT_EQ(duel.a.pointsOpponent, 1U);
    // The wall on the way there, the right paddle, the wall on the way back.
    EXPECT_EQ(duel.a.words,
              (Words{"start", "setPos", "setBall", "setBall", "setBall", "out_of_field"}));
}

TEST_P(RallyInStep, the_other_player_may_start_the_next_rally_and_is_its_master) {
    duel.a.press_start();
    ASSERT_TRUE(run_to_the_serve());
    duel.a.move_paddle(160);
    ASSERT_TRUE(run_to_the_end());
    duel.b.press_start();
    ASSERT_TRUE(duel.run_until([this] { return duel.a.field.is_state_PLAY(); }));
    EXPECT_FALSE(duel.a.field.is_master());
    EXPECT_TRUE(duel.b.field.is_master());
    ASSERT_TRUE(run_to_the_end());
    EXPECT_EQ(duel.b.words.back(), "out_of_field");
    EXPECT_EQ(duel.a.points, duel.b.pointsOpponent);
    EXPECT_EQ(duel.b.points, duel.a.pointsOpponent);
    EXPECT_EQ(duel.a.points + duel.b.points, 2U);
}

TEST_P(RallyInStep, the_master_decides_by_the_paddle_as_it_last_heard_of_it) {
    duel.a.press_start();
    ASSERT_TRUE(duel.run_until([this] { return duel.a.field.ball.pos.x > 368; }));
    duel.b.move_paddle(160);  // too late for a line with a delay
    ASSERT_TRUE(duel.run_until(
        [this] { return !duel.a.field.is_state_PLAY() || duel.a.field.ball.is_dir_left(); }));
    EXPECT_EQ(duel.a.field.ball.is_dir_left(), GetParam() >= 50);
}

TEST_P(RallyInStep, two_starts_at_the_same_moment_leave_no_master) {
    duel.a.press_start();
    duel.b.press_start();
    duel.settle();
    EXPECT_FALSE(duel.a.field.is_master());
    EXPECT_FALSE(duel.b.field.is_master());
    // Each serves from the other's side, and the ball flies out of both fields.
    EXPECT_TRUE(duel.a.field.ball.is_dir_left());
    EXPECT_TRUE(duel.b.field.ball.is_dir_right());
    EXPECT_TRUE(duel.run_until(
        [this] { return duel.a.field.is_out_of_field() && duel.b.field.is_out_of_field(); }));
    EXPECT_TRUE(duel.a.field.is_state_PLAY());
    EXPECT_TRUE(duel.b.field.is_state_PLAY());
    EXPECT_EQ(duel.a.words, Words{"start"});
    EXPECT_EQ(duel.b.words, Words{"start"});
    // Until somebody presses stop.
    duel.a.press_stop();
    duel.settle();
    EXPECT_FALSE(duel.a.field.is_state_PLAY());
    EXPECT_FALSE(duel.b.field.is_state_PLAY());
    EXPECT_EQ(duel.a.points + duel.b.points, 0U);
}

TEST_P(RallyInStep, a_stop_ends_the_rally_on_both_clients_without_a_point) {
    duel.a.press_start();
    ASSERT_TRUE(run_to_the_serve());
    duel.b.press_stop();
    duel.settle();
    EXPECT_FALSE(duel.a.field.is_state_PLAY());
    EXPECT_FALSE(duel.b.field.is_state_PLAY());
    EXPECT_FALSE(duel.a.field.is_master());
    EXPECT_EQ(duel.a.points + duel.b.points, 0U);
}

TEST_P(RallyInStep, a_bounce_while_the_socket_is_down_sends_nothing_and_the_game_goes_on) {
    duel.a.press_start();
    ASSERT_TRUE(run_to_the_serve());
    duel.a.connection.flagConnected = false;
    ASSERT_TRUE(duel.run_until([this] { return duel.a.field.ball.is_dir_left(); }));
    EXPECT_EQ(duel.a.words, Words{"start"});
    EXPECT_TRUE(duel.a.field.is_state_PLAY());
}

}  // namespace
