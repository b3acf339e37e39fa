// The frame step of the master and of its follower: walls, paddles, errors.
#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PlayStats.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <glm/geometric.hpp>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
using vork2d::v5::playStats;
using vork2d::v5::PlayStats;

constexpr float TOLERANCE = 0.01f;  // field units, for what is no more than float rounding

class NextFrame : public test::FieldTest {
protected:
    NextFrame() { playStats = PlayStats{}; }
};

// What is skipped

TEST_F(NextFrame, a_time_of_0_is_reported_and_skipped) {
    fly({0, 0}, {1, 0}, 100);
    log.expect_error("PlayField::next_frame, invalid dt:0.00");
    field.next_frame(0);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
}

TEST_F(NextFrame, a_negative_time_is_reported_and_skipped) {
    fly({0, 0}, {1, 0}, 100);
    log.expect_error("PlayField::next_frame, invalid dt:-0.50");
    field.next_frame(-0.5f);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(field.ball.travelDistance, 0.0f);
}

TEST_F(NextFrame, a_step_below_epsilon_is_skipped_without_a_word) {
    fly({0, 0}, {1, 0}, 1e-7f);
    field.next_frame(1);
    EXPECT_EQ(field.ball.travelDistance, 0.0f);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(log.lines(), std::vector<std::string>());
}

TEST_F(NextFrame, a_ball_without_speed_stands_still) {
    fly({10, 20}, {1, 0}, 0);
    field.next_frame(1);
    EXPECT_EQ(field.ball.pos, glm::vec2(10, 20));
}

TEST_F(NextFrame, a_paddle_upside_down_is_reported_wherever_the_ball_is) {
    field.paddleRight.size.height = -20;
    fly({0, 0}, {1, 0}, 100);
    log.expect_error("HitInfo::hit_vertical invalid params: yMin:5.00 > yMax:-5.00");
    field.next_frame(0.25f);
    EXPECT_EQ(field.ball.pos, glm::vec2(25, 0));
}

// Free flight

TEST_F(NextFrame, a_ball_in_the_open_flies_straight_on) {
    fly({0, 0}, {0.75f, -0.5f}, 100);
    field.next_frame(0.5f);
    EXPECT_EQ(field.ball.pos, glm::vec2(37.5f, -25));
    EXPECT_EQ(field.ball.dir, glm::vec2(0.75f, -0.5f));
    EXPECT_EQ(field.ball.travelDistance, 50.0f);
    EXPECT_EQ(log.lines(), std::vector<std::string>());
}

// Walls

TEST_F(NextFrame, the_top_wall_turns_the_ball_down_for_the_rest_of_the_frame) {
    fly({0, 175}, {0.6f, 0.8f}, 100);
    field.next_frame(0.5f);  // 25 up to the wall's line at 195, 25 down again
    EXPECT_NEAR(field.ball.pos.x, 30, TOLERANCE);
    EXPECT_NEAR(field.ball.pos.y, 175, TOLERANCE);
    EXPECT_EQ(field.ball.dir, glm::vec2(0.6f, -0.8f));
    EXPECT_EQ(playStats.hitsTop, 1U);
    EXPECT_EQ(playStats.all_hits(), 1U);
    EXPECT_EQ(log.lines_with_level(),
              (std::vector<std::string>{
                  "DEB PlayField::next_frame, HIT HIT_TOP, ball: {pos:15.00, 195.00, dir:0.60, "
                  "0.80, velocity:100.00}",
                  "DEB     PlayField::next_frame, vRemain:15.00, -20.00",
              }));
}

TEST_F(NextFrame, the_bottom_wall_turns_the_ball_up) {
    fly({0, -175}, {-0.6f, -0.8f}, 100);
    field.next_frame(0.5f);
    EXPECT_NEAR(field.ball.pos.x, -30, TOLERANCE);
    EXPECT_NEAR(field.ball.pos.y, -175, TOLERANCE);
    EXPECT_EQ(field.ball.dir, glm::vec2(-0.6f, 0.8f));
    EXPECT_EQ(playStats.hitsBottom, 1U);
    EXPECT_EQ(playStats.all_hits(), 1U);
}

TEST_F(NextFrame, a_wall_does_not_make_the_direction_a_unit_vector_again) {
    fly({0, 190}, {0.6f, 3.0f}, 10);
    field.next_frame(1);
    EXPECT_EQ(field.ball.dir, glm::vec2(0.6f, -3.0f));
}

TEST_F(NextFrame, a_wall_that_the_motion_does_not_face_is_not_met) {
    fly({0, 197}, {0.6f, -0.8f}, 100);
    field.next_frame(0.1f);
    EXPECT_EQ(playStats.all_hits(), 0U);
    EXPECT_NEAR(field.ball.pos.y, 189, TOLERANCE);
}

// Paddles

TEST_F(NextFrame, the_middle_of_a_paddle_is_a_mirror) {
    fly({360, 1}, {1, 0}, 100);
    field.next_frame(0.3f);  // 10 to the line at 370, 20 back
    EXPECT_NEAR(field.ball.pos.x, 350, TOLERANCE);
    EXPECT_EQ(field.ball.pos.y, 1.0f);
    EXPECT_EQ(field.ball.dir, glm::vec2(-1, 0));
    EXPECT_EQ(playStats.hitsPaddleRight, 1U);
    EXPECT_EQ(
        log.lines_with_level(),
        (std::vector<std::string>{
            "DEB PlayField::next_frame, HIT RIGHT, ball.pos:370.00, 1.00, rel:0.03",
            "DEB PlayField::next_frame, cGuard:1, after calc, ball:pos:370.00, 1.00, dir:-1.00, "
            "0.00, velocity:100.00",
            "DEB     PlayField::next_frame, vRemain:-20.00, 0.00",
        }));
}

TEST_F(NextFrame, the_left_paddle_sends_the_ball_to_the_right) {
    fly({-360, 0}, {-0.8f, 0.0f}, 100);
    field.next_frame(0.25f);
    EXPECT_GT(field.ball.dir.x, 0.0f);
    EXPECT_EQ(playStats.hitsPaddleLeft, 1U);
    EXPECT_EQ(playStats.all_hits(), 1U);
}

TEST_F(NextFrame, a_rel_of_exactly_the_dead_zone_is_still_a_mirror) {
    fly({360, -3}, {2, 1}, 40);  // meets the line at (370, 2), and 2 of 40 is 0.05
    field.next_frame(0.25f);
    EXPECT_EQ(playStats.hitsPaddleRight, 1U);
    EXPECT_EQ(field.ball.dir, glm::vec2(-2, 1)) << "not made a unit vector either";
}

TEST_F(NextFrame, beyond_the_dead_zone_the_direction_takes_the_place_of_the_hit) {
    fly({360, 21}, {1, 0}, 100);  // rel 0.525, half of the live range
    field.next_frame(0.2f);
    EXPECT_LT(field.ball.dir.x, 0.0f);
    EXPECT_NEAR(field.ball.dir.y / -field.ball.dir.x, 0.425f, 1e-5f);
    EXPECT_NEAR(glm::length(field.ball.dir), 1, 1e-6f);
}

TEST_F(NextFrame, the_lower_half_of_a_paddle_deflects_downward) {
    fly({360, -21}, {1, 0}, 100);
    field.next_frame(0.2f);
    EXPECT_NEAR(field.ball.dir.y / -field.ball.dir.x, -0.425f, 1e-5f);
}

TEST_F(NextFrame, a_hit_past_the_end_counts_as_at_the_end) {
    fly({360, 44}, {1, 0}, 100);  // the paddle ends at 40, the ball's radius is 5
    field.next_frame(0.2f);
    EXPECT_NEAR(field.ball.dir.y / -field.ball.dir.x, 0.85f, 1e-6f);
}

TEST_F(NextFrame, deflections_in_one_sense_add_up) {
    fly({360, 21}, {0.8f, 0.6f}, 10);
    field.paddleRight.pos.y = 7.5f;  // the ball comes at 28.5
    field.next_frame(2);
    EXPECT_NEAR(field.ball.dir.y / -field.ball.dir.x, (0.425f + 0.6f) / 0.8f, 1e-4f);
}

TEST_F(NextFrame, the_rest_of_a_frame_keeps_its_length_after_a_deflection) {
    fly({360, 40}, {1, 0}, 100);
    field.next_frame(0.5f);
    EXPECT_NEAR(glm::length(field.ball.pos - glm::vec2(370, 40)), 40, TOLERANCE);
}

TEST_F(NextFrame, a_ball_past_the_front_of_a_paddle_passes) {
    fly({371, 0}, {1, 0}, 100);
    field.next_frame(0.2f);
    EXPECT_EQ(playStats.all_hits(), 0U);
    EXPECT_EQ(field.ball.pos, glm::vec2(391, 0));
}

TEST_F(NextFrame, a_ball_from_behind_a_paddle_passes) {
    fly({390, 0}, {-1, 0}, 100);
    field.next_frame(0.5f);
    EXPECT_EQ(playStats.all_hits(), 0U);
    EXPECT_EQ(field.ball.pos, glm::vec2(340, 0));
}

TEST_F(NextFrame, a_ball_that_misses_a_paddle_passes) {
    fly({360, 46}, {1, 0}, 100);
    field.next_frame(0.2f);
    EXPECT_EQ(playStats.all_hits(), 0U);
    EXPECT_EQ(field.ball.pos, glm::vec2(380, 46));
}

TEST_F(NextFrame, a_fast_ball_cannot_pass_through_a_paddle) {
    fly({0, 0}, {1, 0}, 800000);
    field.next_frame(0.001f);  // 800 units
    EXPECT_EQ(playStats.hitsPaddleRight, 1U);
    EXPECT_NEAR(field.ball.pos.x, -60, TOLERANCE);
}

TEST_F(NextFrame, a_hit_changes_no_speed) {
    fly({360, 30}, {0.8f, 0.6f}, 123);
    field.next_frame(1);
    EXPECT_EQ(field.ball.velocity, 123.0f);
}

// A whole rally

TEST_F(NextFrame, a_serve_meets_the_top_and_then_the_middle_of_the_other_paddle) {
    field.on_play(ORIENT2D::LEFT, 5000);
    const glm::vec2 dir = field.ball.dir;
    log.clear();
    while (playStats.hitsPaddleRight == 0) {
        field.next_frame(0.016f);
    }
    const std::vector<std::string> hits = lines_from("PlayField::next_frame, HIT");
    ASSERT_EQ(hits.size(), 2U);
    EXPECT_EQ(hits[0].substr(0, 42), "PlayField::next_frame, HIT HIT_TOP, ball: ");
    EXPECT_EQ(hits[1].substr(0, 34), "PlayField::next_frame, HIT RIGHT, ");
    EXPECT_EQ(hits[1].substr(hits[1].rfind("rel:")).find_first_not_of("rel:-0."),
              std::string::npos);
    EXPECT_EQ(field.ball.dir, glm::vec2(-dir.x, -dir.y));
}

TEST_F(NextFrame, one_long_frame_ends_where_many_short_ones_do) {
    field.on_play(ORIENT2D::LEFT, 5000);
    field.next_frame(10.0f);  // 1600 units: top, right, bottom
    const glm::vec2 posLong = field.ball.pos;
    const PlayStats statsLong = playStats;
    field.on_play(ORIENT2D::LEFT, 5000);
    for (int i = 0; i < 1000; ++i) {
        field.next_frame(0.01f);
    }
    EXPECT_NEAR(posLong.x, field.ball.pos.x, 0.05f);
    EXPECT_NEAR(posLong.y, field.ball.pos.y, 0.05f);
    EXPECT_EQ(statsLong.hitsTop, 1U);
    EXPECT_EQ(statsLong.hitsBottom, 1U);
    EXPECT_EQ(statsLong.hitsPaddleRight, 1U);
    EXPECT_EQ(statsLong.all_hits(), playStats.all_hits());
}

// What goes wrong

TEST_F(NextFrame, a_wall_and_a_paddle_at_the_same_time_leave_the_ball_standing) {
    field.paddleRight.pos.y = 160;
    fly({360, 185}, {1, 1}, 16);  // both lines after 10 of 16 in x and y
    const std::string stuck =
        "PlayField::next_frame, zero-length hit step, type:HIT_PADDLE_RIGHT, t:0.00, "
        "ball.pos:370.00, 195.00, ptHit:370.00, 195.00";
    log.expect_error(stuck);
    field.next_frame(1);
    EXPECT_EQ(field.ball.pos, glm::vec2(370, 195));
    EXPECT_EQ(field.ball.dir, glm::vec2(1, -1));
    EXPECT_EQ(playStats.hitsTop, 1U);
    EXPECT_EQ(playStats.hitsPaddleRight, 0U);

    log.expect_error(stuck);
    field.next_frame(1);
    EXPECT_EQ(field.ball.pos, glm::vec2(370, 195));
    EXPECT_EQ(field.ball.dir, glm::vec2(1, -1));
    EXPECT_EQ(playStats.all_hits(), 1U);
    EXPECT_EQ(field.ball.travelDistance, 32.0f);
}

TEST_F(NextFrame, the_ninth_sub_step_is_not_flown) {
    fly({0, 0}, {0, 1}, 10000);
    log.expect_error(
        "PlayField::next_frame, guard break, cGuard:9, ball.pos:0.00, -195.00, "
        "vRemain:0.00, 7075.00");
    field.next_frame(1);  // 195 and then seven times 390
    EXPECT_NEAR(field.ball.pos.y, -195, TOLERANCE);
    EXPECT_EQ(playStats.hitsTop, 4U);
    EXPECT_EQ(playStats.hitsBottom, 4U);
}

TEST_F(NextFrame, eight_sub_steps_without_a_ninth_leave_no_error) {
    fly({0, 0}, {0, 1}, 195 + 6 * 390 + 100);
    field.next_frame(1);
    EXPECT_EQ(playStats.all_hits(), 7U);
    EXPECT_NEAR(field.ball.pos.y, 95, TOLERANCE);
}

struct WildRow {
    std::string name;
    glm::vec2 pos, dir;
    float velocity;
};

TEST_F(NextFrame, numbers_beyond_all_measure_end_the_frame) {
    constexpr float HUGE_F = std::numeric_limits<float>::max();
    constexpr float INF_F = std::numeric_limits<float>::infinity();
    constexpr float NAN_F = std::numeric_limits<float>::quiet_NaN();
    const WildRow rows[] = {
        {"speed infinite", {0, 0}, {0.6f, 0.8f}, INF_F},
        {"speed at the limit", {0, 0}, {0.6f, 0.8f}, HUGE_F},
        {"direction at the limit", {0, 0}, {HUGE_F, -HUGE_F}, HUGE_F},
        {"place at the limit", {HUGE_F, HUGE_F}, {-1, -1}, 160},
        {"place infinite", {INF_F, 0}, {1, 0}, 160},
        {"all of them nan", {NAN_F, NAN_F}, {NAN_F, NAN_F}, NAN_F},
        {"negative speed", {0, 0}, {1, 0}, -160},
    };
    log.ignore("PlayField");
    for (const WildRow& row : rows) {
        SCOPED_TRACE(row.name);
        ze::log::set_log_level(ze::log::ERROR);
        ze::log::remove_log_appender(&log);  // which errors come is not the matter here
        fly(row.pos, row.dir, row.velocity);
        playStats = PlayStats{};
        for (int i = 0; i < 100; ++i) {
            field.next_frame(0.016f);
        }
        EXPECT_LE(playStats.all_hits(), 800U);
    }
}

// What is told to the other client

TEST_F(NextFrame, offline_no_hit_is_told) {
    int told = 0;
    field.listenerBallHit += [&told] {
        ++told;
    };
    fly({0, 190}, {0.6f, 0.8f}, 100);
    field.next_frame(0.5f);
    EXPECT_EQ(playStats.hitsTop, 1U);
    EXPECT_EQ(told, 0);
    EXPECT_EQ(lines_from("ONE HIT"), std::vector<std::string>());
}

TEST_F(NextFrame, connected_a_frame_with_hits_is_told_once_with_the_ball_at_its_end) {
    connection.flagConnected = true;
    std::vector<glm::vec2> told;
    field.listenerBallHit += [this, &told] {
        told.push_back(field.ball.pos);
    };
    fly({0, 0}, {0, 1}, 195 + 390 + 95);
    field.next_frame(1);
    EXPECT_EQ(playStats.all_hits(), 2U);
    EXPECT_EQ(told, std::vector<glm::vec2>{field.ball.pos});
    EXPECT_EQ(lines_from("ONE HIT"),
              std::vector<std::string>{
                  "ONE HIT, ball:pos:0.00, -100.00, dir:0.00, 1.00, velocity:680.00"});
}

TEST_F(NextFrame, connected_a_frame_without_a_hit_is_not_told) {
    connection.flagConnected = true;
    int told = 0;
    field.listenerBallHit += [&told] {
        ++told;
    };
    fly({0, 0}, {1, 0}, 100);
    field.next_frame(0.5f);
    EXPECT_EQ(told, 0);
}

// The follower

TEST_F(NextFrame, a_follower_flies_through_walls_and_paddles) {
    make_follower();
    fly({350, 190}, {0.6f, 0.8f}, 100);
    field.paddleRight.pos.y = 160;
    field.next_frame(1);
    EXPECT_EQ(field.ball.pos, glm::vec2(410, 270));
    EXPECT_EQ(field.ball.dir, glm::vec2(0.6f, 0.8f));
    EXPECT_EQ(field.ball.travelDistance, 100.0f);
    EXPECT_EQ(playStats.all_hits(), 0U);
    EXPECT_EQ(log.lines(), std::vector<std::string>());
}

TEST_F(NextFrame, a_follower_ends_no_rally) {
    make_follower();
    int exits = 0;
    field.listenerBallExit += [&exits](ORIENT2D::Type) {
        ++exits;
    };
    fly({350, 0}, {1, 0}, 1000);
    field.next_frame(1);
    EXPECT_TRUE(field.is_state_PLAY());
    EXPECT_EQ(exits, 0);
}

}  // namespace
