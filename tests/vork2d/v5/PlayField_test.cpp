// The field as a whole: its start values, the time of travel, start and end of a rally, its state.
#include "vork2d/v5/PlayField.h"

#include "ze/tools/clock.h"

#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PLAY_STATE.h"
#include "vork2d/v5/PlayStats.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
namespace PLAY_STATE = vork2d::v5::PLAY_STATE;
using vork2d::v5::PlayField;
using vork2d::v5::playStats;

class PlayFieldTest : public test::FieldTest {};

TEST_F(PlayFieldTest, starts_with_the_ball_in_the_middle_and_a_paddle_at_each_edge) {
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(field.ball.velocity, 160.0f);
    EXPECT_EQ(field.paddleLeft.pos, glm::vec2(-380, 0));
    EXPECT_EQ(field.paddleLeft.name, "LEFT");
    EXPECT_EQ(field.paddleRight.pos, glm::vec2(380, 0));
    EXPECT_EQ(field.paddleRight.name, "RIGHT");
}

TEST_F(PlayFieldTest, starts_offline_as_master_on_the_left) {
    EXPECT_TRUE(field.is_master());
    EXPECT_TRUE(field.is_left_side());
    EXPECT_TRUE(field.is_state_offline());
    EXPECT_EQ(field.state, 0U);
    EXPECT_EQ(field.stateLast, 0U);
}

TEST_F(PlayFieldTest, starts_with_labels_0_and_a_black_ground) {
    EXPECT_EQ(field.textLeft, QStringLiteral("0"));
    EXPECT_EQ(field.textRight, QStringLiteral("0"));
    EXPECT_TRUE(field.textInfo.isEmpty());
    EXPECT_EQ(field.fontSize, 16);
    EXPECT_EQ(field.colorBackground, QColor(Qt::black));
}

TEST_F(PlayFieldTest, is_cartesian_and_its_timer_ticks_from_the_start) {
    test::ConnectionStub other;
    const PlayField fresh(800, 400, other);
    EXPECT_TRUE(fresh.is_coord_CARTESIAN());
    EXPECT_EQ(fresh.get_view_size(), ze::math::Size(800, 400));
    EXPECT_TRUE(fresh.timer.isActive());
    EXPECT_EQ(fresh.timer.interval(), 16);
    EXPECT_TRUE(fresh.flagSound);
}

TEST_F(PlayFieldTest, edges_are_those_of_the_view) {
    EXPECT_EQ(field.left(), -400.0f);
    EXPECT_EQ(field.right(), 400.0f);
    EXPECT_EQ(field.top(), 200.0f);
    EXPECT_EQ(field.bottom(), -200.0f);
}

struct OutRow {
    float x;
    bool left, right;
};

TEST_F(PlayFieldTest, the_ball_is_out_when_the_whole_of_it_is_past_the_edge) {
    const OutRow rows[] = {{0, false, false},
                           {-405, false, false},
                           {-405.01f, true, false},
                           {405, false, false},
                           {405.01f, false, true}};
    for (const OutRow& row : rows) {
        field.ball.pos.x = row.x;
        EXPECT_EQ(field.is_ball_beyond_left(), row.left) << row.x;
        EXPECT_EQ(field.is_ball_beyond_right(), row.right) << row.x;
        EXPECT_EQ(field.is_out_of_field(), row.left || row.right) << row.x;
    }
}

TEST_F(PlayFieldTest, the_bits_answer_one_question_each) {
    field.state = PLAY_STATE::CONNECTED1;
    EXPECT_TRUE(field.is_state_CONNECTED1());
    EXPECT_FALSE(field.is_state_CONNECTED2());
    EXPECT_FALSE(field.is_state_2_players());
    EXPECT_FALSE(field.is_state_offline());
    EXPECT_FALSE(field.is_state_PLAY());
    field.state = PLAY_STATE::CONNECTED2;
    EXPECT_FALSE(field.is_state_2_players());
    EXPECT_TRUE(field.is_state_offline());
    field.state = PLAY_STATE::CONNECTED1 | PLAY_STATE::CONNECTED2 | PLAY_STATE::PLAY;
    EXPECT_TRUE(field.is_state_2_players());
    EXPECT_TRUE(field.is_state_PLAY());
}

// Time of travel

TEST_F(PlayFieldTest, the_time_of_travel_sets_the_speed_at_once) {
    field.set_tm_travel(2500);
    EXPECT_EQ(field.tmTravel, 2.5f);
    EXPECT_EQ(field.ball.velocity, 320.0f);
    EXPECT_EQ(log.lines_with_level(),
              std::vector<std::string>{"DEB PlayField::set_tm_travel, ms:2500"});
}

struct TravelRow {
    unsigned long long written;
    unsigned read;
};

TEST_F(PlayFieldTest, the_time_of_travel_reads_back_limited) {
    const TravelRow rows[] = {
        {0, 1},         {1, 1},
        {990, 990},     {5000, 5000},
        {10000, 10000}, {10001, 10000},
        {20000, 10000}, {std::numeric_limits<unsigned long long>::max(), 10000},
    };
    for (const TravelRow& row : rows) {
        field.set_tm_travel(row.written);
        EXPECT_EQ(field.tm_travel(), row.read) << row.written;
    }
}

TEST_F(PlayFieldTest, a_time_of_travel_above_the_limit_is_used_all_the_same) {
    field.set_tm_travel(20000);
    EXPECT_EQ(field.tmTravel, 20.0f);
    EXPECT_EQ(field.ball.velocity, 40.0f);
}

// Start of a rally

TEST_F(PlayFieldTest, a_serve_goes_through_the_top_wall_to_the_middle_of_the_other_paddle) {
    field.on_play(ORIENT2D::LEFT, 5000);
    EXPECT_EQ(field.ball.pos, glm::vec2(-370, 0));
    EXPECT_NEAR(field.ball.dir.x, 0.8846f, 1e-4f);
    EXPECT_NEAR(field.ball.dir.y, 0.4662f, 1e-4f);
    EXPECT_EQ(field.ball.velocity, 160.0f);
    EXPECT_EQ(log.lines_with_level(), (std::vector<std::string>{
                                          "DEB PlayField::set_tm_travel, ms:5000",
                                          "INF PLAY START LEFT SIDE",
                                          "DEB ptStart:-370.00, 0.00",
                                          "DEB ptTarget:370.00, 0.00",
                                          "DEB yTopBall:195.00",
                                          "DEB ptTargetMirror:370.00, 390.00",
                                          "DEB ball:pos:-370.00, 0.00, dir:0.88, 0.47, "
                                          "velocity:160.00",
                                      }));
}

TEST_F(PlayFieldTest, a_serve_from_any_other_side_leaves_the_right_paddle) {
    for (const ORIENT2D::Type side : {ORIENT2D::RIGHT, ORIENT2D::UP, ORIENT2D::DOWN}) {
        field.on_play(side, 5000);
        EXPECT_EQ(field.ball.pos, glm::vec2(370, 0)) << side;
        EXPECT_NEAR(field.ball.dir.x, -0.8846f, 1e-4f) << side;
    }
}

TEST_F(PlayFieldTest, a_serve_takes_the_paddles_where_they_are) {
    field.paddleLeft.pos.y = 100;
    field.paddleRight.pos.y = -50;
    field.on_play(ORIENT2D::LEFT, 5000);
    // From (-370, 100) to (370, 440), the mirror of (370, -50) in y = 195.
    const float len = std::sqrt(740.0f * 740 + 340.0f * 340);
    EXPECT_EQ(field.ball.pos, glm::vec2(-370, 100));
    EXPECT_FLOAT_EQ(field.ball.dir.x, 740 / len);
    EXPECT_FLOAT_EQ(field.ball.dir.y, 340 / len);
}

TEST_F(PlayFieldTest, a_start_zeroes_the_statistics) {
    playStats.hitsTop = 7;
    playStats.frames = 9;
    playStats.msEnd = 1;
    field.ball.travelDistance = 77;
    const unsigned long long before = ze::time::get_steady_milli_seconds();
    field.on_play(ORIENT2D::LEFT, 2000);
    EXPECT_EQ(playStats.all_hits(), 0U);
    EXPECT_EQ(playStats.frames, 0U);
    EXPECT_EQ(playStats.msEnd, 0U);
    EXPECT_GE(playStats.msStart, before);
    EXPECT_EQ(playStats.tmTravel, 2.0f);
    EXPECT_EQ(playStats.tmRefresh, 16);
    EXPECT_EQ(field.ball.travelDistance, 0.0f);
}

TEST_F(PlayFieldTest, a_start_sets_the_play_bit_and_reports_it) {
    int reports = 0;
    field.listenerState += [&reports] {
        ++reports;
    };
    field.on_play(ORIENT2D::LEFT, 5000);
    EXPECT_TRUE(field.is_state_PLAY());
    EXPECT_EQ(field.stateLast, 8U);
    EXPECT_EQ(reports, 1);
}

TEST_F(PlayFieldTest, a_start_with_no_time_is_over_in_a_frame_or_two) {
    field.on_play(ORIENT2D::LEFT, 0);
    EXPECT_EQ(field.tmTravel, 0.001f);
    EXPECT_FLOAT_EQ(field.ball.velocity, 800000.0f);
    field.paddleRight.pos.y = -160;
    field.next_frame(0.0008f);
    field.next_frame(0.0005f);
    EXPECT_FALSE(field.is_state_PLAY());
}

TEST_F(PlayFieldTest, a_start_during_a_rally_serves_anew) {
    field.on_play(ORIENT2D::LEFT, 5000);
    field.next_frame(0.5f);
    field.on_play(ORIENT2D::RIGHT, 2500);
    EXPECT_EQ(field.ball.pos, glm::vec2(370, 0));
    EXPECT_EQ(field.ball.velocity, 320.0f);
    EXPECT_EQ(field.ball.travelDistance, 0.0f);
}

// End of a rally

TEST_F(PlayFieldTest, a_stop_shows_the_statistics_and_leaves_the_ball) {
    field.on_play(ORIENT2D::LEFT, 5000);
    field.next_frame(0.5f);
    const glm::vec2 pos = field.ball.pos;
    log.clear();
    field.on_stop();
    EXPECT_FALSE(field.is_state_PLAY());
    EXPECT_EQ(field.ball.pos, pos);
    EXPECT_FLOAT_EQ(playStats.travelDistance, 80.0f);
    EXPECT_GE(playStats.msEnd, playStats.msStart);
    const std::vector<std::string> lines = log.lines_with_level();
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines[0], "DEB STOPPED by user");
    EXPECT_EQ(lines[1], "DEB ");
    EXPECT_EQ(lines[2], "DEB PlayStats, v5");
}

// State reports

TEST_F(PlayFieldTest, a_state_is_reported_once_and_before_it_counts_as_reported) {
    std::vector<unsigned> lastAtReport;
    field.listenerState += [this, &lastAtReport] {
        lastAtReport.push_back(field.stateLast);
    };
    field.state = PLAY_STATE::CONNECTED1;
    field.report_state();
    field.report_state();
    EXPECT_EQ(lastAtReport, std::vector<unsigned>{0});
    EXPECT_EQ(field.stateLast, 2U);
}

TEST_F(PlayFieldTest, set_state_RUN_touches_the_play_bit_alone) {
    field.state = PLAY_STATE::CONNECTED1 | PLAY_STATE::CONNECTED2;
    field.set_state_RUN(true);
    EXPECT_EQ(field.state, 14U);
    field.set_state_RUN(false);
    EXPECT_EQ(field.state, 6U);
}

TEST_F(PlayFieldTest, set_state_RUN_without_a_change_reports_nothing) {
    int reports = 0;
    field.listenerState += [&reports] {
        ++reports;
    };
    field.set_state_RUN(false);
    EXPECT_EQ(reports, 0);
}

// The widget

TEST_F(PlayFieldTest, showing_the_field_says_so_and_resizes_it_to_its_own_size) {
    field.show();
    EXPECT_EQ(log.lines_with_level().front(), "DEB PlayField::showEvent");
    const QSize size = field.size();
    EXPECT_FALSE(field.testAttribute(Qt::WA_Resized)) << "nobody has resized it yet";
    EXPECT_TRUE(QTest::qWaitFor([this] { return field.testAttribute(Qt::WA_Resized); }));
    EXPECT_EQ(field.size(), size);
}

TEST_F(PlayFieldTest, a_large_screen_leaves_the_width_alone) {
    field.setFixedWidth(300);
    field.check_set_size();
    EXPECT_EQ(field.minimumWidth(), 300);
    EXPECT_EQ(field.maximumWidth(), 300);
}

}  // namespace
