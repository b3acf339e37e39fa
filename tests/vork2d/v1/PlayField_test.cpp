#include "vork2d/v1/PlayField.h"

#include "ze/tools/clock.h"

#include "vork2d/early/GenerationTest.h"

#include <QImage>
#include <QMouseEvent>

#include <limits>

#include <glm/geometric.hpp>

namespace {

using test::Lines;
using vork2d::v1::PlayField;

class FieldV1 : public testing::Test {
protected:
    FieldV1() {
        log.ignore("Listener::~Listener@");
        field.timer.stop();
        log.clear();
    }

    void fly(glm::vec2 pos, glm::vec2 dir, float velocity) {
        field.ball.pos = pos;
        field.ball.dir = dir;
        field.ball.velocity = velocity;
        field.state = PlayField::STATE_FLYING;
    }

    test::LogCapture log;
    PlayField field{800, 400};
};

TEST_F(FieldV1, starts_at_rest_with_a_paddle_on_each_side) {
    EXPECT_EQ(field.state, 0U);
    EXPECT_EQ(field.paddleLeft.pos, glm::vec2(-380, 0));
    EXPECT_EQ(field.paddleRight.pos, glm::vec2(380, 0));
    EXPECT_EQ(field.ball.velocity, 160.0f);
    EXPECT_EQ(field.timer.interval(), 16);
}

TEST_F(FieldV1, ticks_from_the_start) {
    const PlayField fresh(800, 400);
    EXPECT_TRUE(fresh.timer.isActive());
}

TEST_F(FieldV1, the_time_of_travel_sets_the_speed_at_once) {
    field.set_tm_travel(2000);
    EXPECT_EQ(field.ball.velocity, 400.0f);
    EXPECT_EQ(log.lines(), Lines{"DrawTestObject::set_tm_travel, ms:2000"});
}

TEST_F(FieldV1, the_time_of_travel_has_no_upper_bound) {
    struct Row {
        unsigned long long set;
        unsigned read;
    };
    for (const Row& row : {Row{0, 1}, Row{1, 1}, Row{10001, 10001}, Row{3600000, 3600000},
                           Row{1ULL << 40, std::numeric_limits<unsigned>::max()}}) {
        field.set_tm_travel(row.set);
        EXPECT_EQ(field.tm_travel(), row.read) << row.set;
    }
}

TEST_F(FieldV1, the_simple_move_leaves_the_middle_to_the_right) {
    field.ball.pos = {100, 100};
    field.on_simple_move1();
    EXPECT_EQ(field.state, 2U);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(field.ball.dir, glm::vec2(0.97014254f, 0.24253564f));
    EXPECT_EQ(log.lines().front(), "DrawTestObject::on_simple_move1");
}

TEST_F(FieldV1, the_move_over_the_top_leaves_the_left_paddle_for_the_middle_of_the_wall) {
    field.paddleLeft.pos.y = -50;
    field.on_move_top1();
    EXPECT_EQ(field.state, 2U);
    EXPECT_EQ(field.ball.pos, glm::vec2(-370, -50));
    EXPECT_EQ(field.ball.dir, glm::normalize(glm::vec2(370, 245)));
    EXPECT_EQ(log.lines().front(), "DrawTestObject::on_move_top1");
}

// The step

TEST_F(FieldV1, a_frame_is_one_step) {
    fly({0, 0}, {0.75f, -0.5f}, 100);
    field.next_frame(0.5f);
    EXPECT_EQ(field.ball.pos, glm::vec2(37.5f, -25));
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(FieldV1, a_time_that_is_not_above_0_is_reported_and_skipped) {
    fly({0, 0}, {1, 0}, 100);
    log.expect_error("DrawTestObject::next_frame, invalid dt:0.00");
    log.expect_error("DrawTestObject::next_frame, invalid dt:-0.50");
    field.next_frame(0);
    field.next_frame(-0.5f);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
}

TEST_F(FieldV1, a_wall_turns_the_ball_and_holds_it_inside) {
    fly({0, 180}, {0.5f, 0.75f}, 64);
    field.next_frame(0.5f);
    EXPECT_EQ(field.ball.pos, glm::vec2(16, 195));
    EXPECT_EQ(field.ball.dir, glm::vec2(0.5f, -0.75f));
    fly({0, -180}, {0.5f, -0.75f}, 64);
    field.next_frame(0.5f);
    EXPECT_EQ(field.ball.pos, glm::vec2(16, -195));
    EXPECT_EQ(field.ball.dir, glm::vec2(0.5f, 0.75f));
    EXPECT_EQ(log.lines(),
              (Lines{"DrawTestObject::next_frame, HIT HIT_TOP, ball: {pos:16.00, 195.00, dir:0.50, "
                     "0.75, velocity:64.00}",
                     "DrawTestObject::next_frame, HIT HIT_BOTTOM, ball: {pos:16.00, -195.00, "
                     "dir:0.50, -0.75, velocity:64.00}"}));
}

TEST_F(FieldV1, a_paddle_turns_the_ball_and_puts_it_at_its_face) {
    fly({-360, 0}, {-1, 0}, 100);
    field.next_frame(0.125f);
    EXPECT_EQ(field.ball.pos, glm::vec2(-370, 0));
    EXPECT_EQ(field.ball.dir, glm::vec2(1, 0));
    fly({360, 0}, {1, 0}, 100);
    field.next_frame(0.125f);
    EXPECT_EQ(field.ball.pos, glm::vec2(370, 0));
    EXPECT_EQ(field.ball.dir, glm::vec2(-1, 0));
    EXPECT_EQ(field.hitsLeft, 1U);
    EXPECT_EQ(field.hitsRight, 1U);
    EXPECT_EQ(log.lines(), (Lines{"DrawTestObject::next_frame, HIT LEFT, ball.pos:-370.00, 0.00",
                                  "DrawTestObject::next_frame, HIT RIGHT, ball.pos:370.00, 0.00"}));
}

TEST_F(FieldV1, a_paddle_mirrors_wherever_it_is_hit) {
    fly({360, 35}, {0.8f, 0.6f}, 100);
    field.next_frame(0.125f);
    EXPECT_EQ(field.ball.dir, glm::vec2(-0.8f, 0.6f));
}

TEST_F(FieldV1, a_paddle_that_the_ball_flies_away_from_is_not_met) {
    fly({-370, 0}, {1, 0}, 10);
    field.next_frame(0.1f);
    EXPECT_EQ(field.ball.dir, glm::vec2(1, 0));
    EXPECT_EQ(field.hitsLeft, 0U);
}

TEST_F(FieldV1, a_ball_beyond_the_edge_ends_the_flight) {
    fly({-400, 100}, {-1, 0}, 100);
    field.next_frame(0.0625f);
    EXPECT_EQ(field.state, 0U);
    EXPECT_EQ(log.lines(), (Lines{"BALL ON LEFT SIDE, ball.pos:-406.25, 100.00",
                                  "hits left paddle:0, hits right paddle:0"}));
}

TEST_F(FieldV1, a_ball_that_touches_the_edge_still_flies) {
    fly({404, 100}, {1, 0}, 100);
    field.next_frame(0.0078125f);
    EXPECT_EQ(field.state, 2U);
}

// The timer

TEST_F(FieldV1, the_timer_moves_the_ball_by_the_time_that_has_passed) {
    field.on_simple_move1();
    const unsigned long long now = ze::time::get_milli_seconds();
    field.on_timer(now + 1000);
    const glm::vec2 before = field.ball.pos;
    field.on_timer(now + 1000);
    EXPECT_EQ(field.ball.pos, before) << "no time has passed";
    field.on_timer(now + 1100);
    EXPECT_NEAR(glm::length(field.ball.pos - before), 16, 1e-3);
}

TEST_F(FieldV1, the_timer_does_nothing_at_rest) {
    field.on_timer(1000);
    field.on_timer(2000);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
}

TEST_F(FieldV1, a_stop_leaves_the_ball_where_it_is) {
    field.on_simple_move1();
    field.next_frame(1);
    const glm::vec2 pos = field.ball.pos;
    log.clear();
    field.on_stop();
    EXPECT_EQ(field.state, 0U);
    EXPECT_EQ(field.ball.pos, pos);
    EXPECT_EQ(log.lines(), (Lines{"STOPPED by user", "hits left paddle:0, hits right paddle:0"}));
}

// Mouse and picture

TEST_F(FieldV1, the_mouse_moves_the_paddle_that_the_ball_flies_to) {
    field.ball.dir = {1, 0};
    field.on_move_paddle({0, 50});
    EXPECT_EQ(field.paddleRight.pos, glm::vec2(380, 50));
    field.ball.dir = {-1, 0};
    field.on_move_paddle({0, 1000});
    EXPECT_EQ(field.paddleLeft.pos, glm::vec2(-380, 160));
    field.on_move_paddle({0, -1000});
    EXPECT_EQ(field.paddleLeft.pos, glm::vec2(-380, -160));
}

TEST_F(FieldV1, a_press_and_a_drag_move_the_paddle_to_the_mouse) {
    field.resize(800, 400);
    const QMouseEvent up(QEvent::MouseButtonPress, QPointF(400, 100), QPointF(400, 100),
                         Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    field.on_mouse_press(&up);
    EXPECT_EQ(field.paddleRight.pos.y, 100.0f);
    const QMouseEvent down(QEvent::MouseMove, QPointF(400, 300), QPointF(400, 300), Qt::NoButton,
                           Qt::LeftButton, Qt::NoModifier);
    field.on_mouse_drag(&down);
    EXPECT_EQ(field.paddleRight.pos.y, -100.0f);
}

TEST_F(FieldV1, the_picture_shows_ball_paddles_and_ground) {
    field.resize(800, 400);
    field.ball.pos = {100, -50};
    const QImage image = field.grab().toImage();
    EXPECT_EQ(image.pixelColor(500, 250), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(20, 180), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(780, 180), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(600, 100), QColor(Qt::black));
}

}  // namespace
