// The frame step: guard, deflection, and who tells that the ball is out.
#include "FieldV4.h"

#include <cmath>
#include <vector>

namespace {

using test::Lines;
using vork2d::v4::playStats;
namespace ORIENT2D = ze::math::ORIENT2D;

constexpr float TOLERANCE = 0.01f;  // field units, for what is no more than float rounding

class NextFrameV4 : public test::FieldV4 {
protected:
    NextFrameV4() {
        field.listenerBallExit += [this](ORIENT2D::Type side) {
            exits.push_back(side);
        };
    }

    std::vector<ORIENT2D::Type> exits;
};

TEST_F(NextFrameV4, a_time_that_is_not_above_0_is_reported_and_skipped) {
    fly({0, 0}, {1, 0}, 100);
    log.expect_error("PlayField::next_frame, invalid dt:0.00");
    field.next_frame(0);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
}

TEST_F(NextFrameV4, a_step_below_epsilon_is_skipped_without_a_word) {
    fly({0, 0}, {1, 0}, 1e-7f);
    field.next_frame(1);
    EXPECT_EQ(field.ball.travelDistance, 0.0f);
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(NextFrameV4, a_wall_turns_the_ball_for_the_rest_of_the_frame) {
    fly({0, 175}, {0.6f, 0.8f}, 100);
    field.next_frame(0.5f);
    EXPECT_NEAR(field.ball.pos.x, 30, TOLERANCE);
    EXPECT_NEAR(field.ball.pos.y, 175, TOLERANCE);
    EXPECT_EQ(playStats.hitsTop, 1U);
    EXPECT_EQ(log.lines(),
              (Lines{"PlayField::next_frame, HIT HIT_TOP, ball: {pos:15.00, 195.00, dir:0.60, "
                     "0.80, velocity:100.00}",
                     "    PlayField::next_frame, vRemain:15.00, -20.00"}));
}

TEST_F(NextFrameV4, a_paddle_deflects_by_where_it_is_hit) {
    struct Row {
        float y;
        float slope;  // dir.y over the size of dir.x, after a level shot
    };
    for (const Row& row : {Row{0, 0}, Row{2, 0}, Row{20, 0.45f / 0.95f * 0.85f},
                           Row{-20, -0.45f / 0.95f * 0.85f}, Row{44, 0.85f}, Row{-44, -0.85f}}) {
        fly({360, row.y}, {1, 0}, 100);
        field.next_frame(0.25f);
        EXPECT_LT(field.ball.dir.x, 0) << row.y;
        EXPECT_NEAR(field.ball.dir.y / -field.ball.dir.x, row.slope, 1e-6f) << row.y;
        EXPECT_NEAR(std::hypot(field.ball.dir.x, field.ball.dir.y), 1, 1e-6f) << row.y;
    }
    EXPECT_EQ(playStats.hitsPaddleRight, 6U);
}

TEST_F(NextFrameV4, the_guard_drops_the_rest_of_a_frame_with_too_many_hits) {
    fly({0, 0}, {0, 1}, 1000);
    log.expect_error(
        "PlayField::next_frame, guard break, cGuard:9, ball.pos:0.00, -195.00, "
        "vRemain:0.00, 36075.00");
    field.next_frame(39);
    EXPECT_EQ(playStats.all_hits(), 8U);
    EXPECT_EQ(field.ball.pos.y, -195.0f);
}

TEST_F(NextFrameV4, wall_and_paddle_at_the_same_place_stop_the_ball) {
    field.paddleRight.pos.y = 160;
    fly({360, 185}, {0.75f, 0.75f}, 100);
    log.expect_error(
        "PlayField::next_frame, zero-length hit step, type:HIT_PADDLE_RIGHT, t:0.00, "
        "ball.pos:370.00, 195.00, ptHit:370.00, 195.00");
    field.next_frame(0.25f);
    EXPECT_EQ(field.ball.pos, glm::vec2(370, 195));
}

// The exit

TEST_F(NextFrameV4, without_a_socket_a_ball_out_on_either_side_is_told) {
    fly({390, 100}, {1, 0}, 100);
    field.next_frame(0.25f);
    fly({-390, 100}, {-1, 0}, 100);
    field.next_frame(0.25f);
    EXPECT_EQ(exits, (std::vector<ORIENT2D::Type>{ORIENT2D::RIGHT, ORIENT2D::LEFT}));
}

TEST_F(NextFrameV4, the_end_of_a_rally_is_cut_at_the_edge_and_shown) {
    fly({390, 100}, {1, 0}, 100);
    field.next_frame(0.25f);
    EXPECT_FALSE(field.is_state_RUN());
    EXPECT_NEAR(playStats.travelDistance, 15, TOLERANCE);
    const Lines lines = log.lines();
    ASSERT_GE(lines.size(), 5U);
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 5),
              (Lines{"", "BALL ON RIGHT SIDE, ball.pos:415.00, 100.00",
                     "BALL EXIT, ptExit:405.00, 100.00", "", "PlayStats, v4"}));
}

TEST_F(NextFrameV4, with_a_socket_only_a_ball_lost_on_the_own_side_is_told) {
    connection.flagConnected = true;
    struct Row {
        ORIENT2D::Type side;
        float dx;
        bool told;
    };
    for (const Row& row : {Row{ORIENT2D::LEFT, -1, true}, Row{ORIENT2D::LEFT, 1, false},
                           Row{ORIENT2D::RIGHT, 1, true}, Row{ORIENT2D::RIGHT, -1, false}}) {
        exits.clear();
        field.side = row.side;
        fly({390 * row.dx, 100}, {row.dx, 0}, 100);
        field.next_frame(0.25f);
        EXPECT_EQ(exits.size(), row.told ? 1U : 0U) << row.side << ' ' << row.dx;
        EXPECT_EQ(field.is_state_RUN(), !row.told) << "the rally lives until the other one tells";
        EXPECT_EQ(log.lines().empty(), !row.told);
    }
}

TEST_F(NextFrameV4, a_ball_that_the_other_one_lost_flies_on_in_silence) {
    connection.flagConnected = true;
    fly({390, 100}, {1, 0}, 100);
    field.next_frame(0.25f);
    field.next_frame(0.25f);
    EXPECT_EQ(field.ball.pos, glm::vec2(440, 100));
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(NextFrameV4, a_ball_that_was_out_before_has_no_cut) {
    fly({420, 100}, {1, 0}, 100);
    log.expect_error(
        "PlayField::next_frame, BALL EXIT but no vertical cut found, posBefore:420.00, 100.00, "
        "ball.pos:432.50, 100.00, xHit:405.00");
    field.next_frame(0.125f);
    EXPECT_EQ(playStats.travelDistance, 12.5f);
    EXPECT_EQ(exits.size(), 1U);
}

}  // namespace
