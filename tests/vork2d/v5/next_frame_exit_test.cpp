// How the master sees the ball leave the field and ends the rally.
#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PlayStats.h"

#include <string>
#include <vector>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
using vork2d::v5::playStats;
using vork2d::v5::PlayStats;

class NextFrameExit : public test::FieldTest {
protected:
    std::vector<ORIENT2D::Type> exits;

    NextFrameExit() {
        playStats = PlayStats{};
        field.listenerBallExit += [this](ORIENT2D::Type side) {
            exits.push_back(side);
        };
        field.paddleLeft.pos.y = 160;
        field.paddleRight.pos.y = 160;
    }
};

TEST_F(NextFrameExit, half_a_ball_inside_is_inside) {
    fly({395, 0}, {1, 0}, 10);
    field.next_frame(1);
    EXPECT_EQ(field.ball.pos, glm::vec2(405, 0));
    EXPECT_TRUE(field.is_state_PLAY());
    EXPECT_EQ(exits, std::vector<ORIENT2D::Type>());
}

TEST_F(NextFrameExit, a_ball_past_the_right_edge_ends_the_rally) {
    fly({395, 0}, {1, 0}, 40);
    field.next_frame(1);
    EXPECT_EQ(exits, std::vector<ORIENT2D::Type>{ORIENT2D::RIGHT});
    EXPECT_FALSE(field.is_state_PLAY());
    EXPECT_EQ(field.ball.pos, glm::vec2(435, 0));
}

TEST_F(NextFrameExit, a_ball_past_the_left_edge_ends_the_rally) {
    fly({-395, 0}, {-1, 0}, 40);
    field.next_frame(1);
    EXPECT_EQ(exits, std::vector<ORIENT2D::Type>{ORIENT2D::LEFT});
    EXPECT_FALSE(field.is_state_PLAY());
    EXPECT_EQ(field.ball.pos, glm::vec2(-435, 0));
}

TEST_F(NextFrameExit, the_distance_ends_at_the_edge) {
    fly({375, 0}, {0.6f, 0.8f}, 100);
    field.next_frame(1);  // out at (405, 40) after 50 of 100
    EXPECT_FLOAT_EQ(field.ball.travelDistance, 50.0f);
    EXPECT_EQ(playStats.travelDistance, field.ball.travelDistance);
    EXPECT_GT(playStats.msEnd, 0U);
}

TEST_F(NextFrameExit, the_edge_is_cut_on_the_last_leg_of_a_frame) {
    fly({375, 175}, {0.6f, 0.8f}, 100);
    field.next_frame(1);  // the wall at (390, 195), out at (405, 175)
    EXPECT_NEAR(field.ball.travelDistance, 50, 1e-3);
    EXPECT_EQ(lines_from("BALL EXIT"),
              std::vector<std::string>{"BALL EXIT, ptExit:405.00, 175.00"});
}

TEST_F(NextFrameExit, the_log_tells_side_and_place_and_shows_the_statistics) {
    fly({375, 0}, {0.6f, 0.8f}, 100);
    playStats.msStart = 1;
    field.next_frame(1);
    std::vector<std::string> lines = log.lines_with_level();
    ASSERT_GE(lines.size(), 6U);
    lines.resize(6);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "DEB ",
                         "DEB MASTER:true",
                         "DEB BALL ON RIGHT SIDE, ball.pos:435.00, 80.00",
                         "DEB BALL EXIT, ptExit:405.00, 40.00",
                         "DEB ",
                         "DEB PlayStats, v5",
                     }));
}

TEST_F(NextFrameExit, a_ball_that_was_out_already_has_no_cut) {
    fly({-500, 0}, {-1, 0}, 40);
    const std::string noCut =
        "PlayField::next_frame, BALL EXIT but no vertical cut found, posBefore:-500.00, 0.00, "
        "ball.pos:-540.00, 0.00, xHit:-405.00";
    log.expect_error(noCut);
    field.next_frame(1);
    std::vector<std::string> lines = log.lines_with_level();
    ASSERT_GE(lines.size(), 4U);
    lines.resize(4);
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "DEB ",
                         "DEB BALL ON LEFT SIDE, ball.pos:-540.00, 0.00",
                         "ERR " + noCut,
                         "DEB ",
                     }));
    EXPECT_EQ(field.ball.travelDistance, 40.0f);
    EXPECT_EQ(exits, std::vector<ORIENT2D::Type>{ORIENT2D::LEFT});
    EXPECT_FALSE(field.is_state_PLAY());
}

TEST_F(NextFrameExit, an_upright_motion_outside_has_no_cut) {
    fly({500, 0}, {0, 1}, 40);
    log.expect_error(
        "PlayField::next_frame, BALL EXIT but no vertical cut found, posBefore:500.00, 0.00, "
        "ball.pos:500.00, 40.00, xHit:405.00");
    field.next_frame(1);
    EXPECT_EQ(exits, std::vector<ORIENT2D::Type>{ORIENT2D::RIGHT});
}

TEST_F(NextFrameExit, the_test_runs_after_a_guard_break_too) {
    fly({500, 0}, {0, 1}, 10000);
    log.expect_error(
        "PlayField::next_frame, guard break, cGuard:9, ball.pos:500.00, -195.00, "
        "vRemain:0.00, 7075.00");
    log.expect_error(
        "PlayField::next_frame, BALL EXIT but no vertical cut found, posBefore:500.00, 195.00, "
        "ball.pos:500.00, -195.00, xHit:405.00");
    field.next_frame(1);
    EXPECT_EQ(exits, std::vector<ORIENT2D::Type>{ORIENT2D::RIGHT});
}

TEST_F(NextFrameExit, the_test_runs_after_a_zero_length_hit_step_too) {
    fly({500, 195}, {0, 1}, 40);
    log.expect_error(
        "PlayField::next_frame, zero-length hit step, type:HIT_TOP, t:0.00, ball.pos:500.00, "
        "195.00, ptHit:500.00, 195.00");
    log.expect_error(
        "PlayField::next_frame, BALL EXIT but no vertical cut found, posBefore:500.00, 195.00, "
        "ball.pos:500.00, 195.00, xHit:405.00");
    field.next_frame(1);
    EXPECT_EQ(field.ball.pos, glm::vec2(500, 195));
    EXPECT_EQ(field.ball.dir, glm::vec2(0, 1));
    EXPECT_EQ(exits, std::vector<ORIENT2D::Type>{ORIENT2D::RIGHT});
    EXPECT_FALSE(field.is_state_PLAY());
}

TEST_F(NextFrameExit, the_end_of_the_rally_is_reported_after_the_exit) {
    fly({395, 0}, {1, 0}, 40);
    std::vector<std::string> order;
    field.listenerBallExit += [&order](ORIENT2D::Type) {
        order.emplace_back("exit");
    };
    field.listenerState += [&order] {
        order.emplace_back("state");
    };
    field.next_frame(1);
    EXPECT_EQ(order, (std::vector<std::string>{"exit", "state"}));
}

TEST_F(NextFrameExit, a_handler_that_ends_the_rally_itself_leaves_one_report) {
    fly({395, 0}, {1, 0}, 40);
    int reports = 0;
    field.listenerState += [&reports] {
        ++reports;
    };
    field.listenerBallExit.set("only", [this](ORIENT2D::Type) { field.set_state_RUN(false); });
    field.next_frame(1);
    EXPECT_EQ(reports, 1);
}

TEST_F(NextFrameExit, the_exit_may_re_enter_the_door_for_messages) {
    fly({395, 0}, {1, 0}, 40);
    std::vector<ORIENT2D::Type> confirmed;
    field.listenerBallExit += [this](ORIENT2D::Type side) {
        ze::net::GPlay play = test::play_message({});
        play.set_ball_out_of_field(side);
        field.on_play_message(play, ze::net::LOCAL);
    };
    field.listenerOutOfField += [this, &confirmed](ORIENT2D::Type side) {
        confirmed.push_back(side);
        field.set_state_RUN(false);
    };
    field.next_frame(1);
    EXPECT_EQ(confirmed, std::vector<ORIENT2D::Type>{ORIENT2D::RIGHT});
    EXPECT_FALSE(field.is_state_PLAY());
}

}  // namespace
