// The step is that of the first generation; here stands what the second one brings.
#include "vork2d/v2/PlayField.h"

#include "ze/tools/clock.h"

#include "vork2d/early/GenerationTest.h"

#include <glm/geometric.hpp>

namespace {

using test::Lines;
using vork2d::v2::MOTION;
using vork2d::v2::PlayField;
using vork2d::v2::playStats;

constexpr float TOLERANCE = 0.01f;  // field units, for what is no more than float rounding

class FieldV2 : public testing::Test {
protected:
    FieldV2() {
        log.ignore("Listener::~Listener@");
        field.timer.stop();
        playStats = {};
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

TEST_F(FieldV2, the_move_over_the_top_starts_the_record) {
    playStats.hitsTop = 7;
    field.set_tm_travel(2000);
    field.on_move_top1(MOTION::STEP);
    EXPECT_EQ(field.state, 2U);
    EXPECT_EQ(field.ball.pos, glm::vec2(-370, 0));
    EXPECT_EQ(field.ball.dir, glm::normalize(glm::vec2(370, 195)));
    EXPECT_EQ(playStats.hitsTop, 0U);
    EXPECT_EQ(playStats.tmTravel, 2.0f);
    EXPECT_EQ(playStats.tmRefresh, 16);
}

TEST_F(FieldV2, the_reading_of_the_time_of_travel_is_limited) {
    field.set_tm_travel(20000);
    EXPECT_EQ(field.tmTravel, 20.0f);
    EXPECT_EQ(field.tm_travel(), 10000U);
    field.set_tm_travel(0);
    EXPECT_EQ(field.tm_travel(), 1U);
    EXPECT_EQ(log.lines(),
              (Lines{"PlayField::set_tm_travel, ms:20000", "PlayField::set_tm_travel, ms:0"}));
}

TEST_F(FieldV2, the_timer_flies_in_the_motion_of_the_flight) {
    for (const MOTION motion : {MOTION::STEP, MOTION::CONTINUOUS}) {
        field.on_move_top1(motion);
        field.on_timer(ze::time::get_milli_seconds() + 1000);
        fly({355, 0}, {1, 0}, 1000);
        field.on_timer(ze::time::get_milli_seconds() + 2000);
        // In a second the step is far beyond the field, the continuous ball at the other edge.
        EXPECT_EQ(field.ball.pos.x > 400, motion == MOTION::STEP);
    }
}

// The step

TEST_F(FieldV2, the_step_counts_its_hits_in_the_record) {
    fly({0, 180}, {0.6f, 0.8f}, 100);
    field.next_frame(0.5f);
    fly({0, -180}, {0.6f, -0.8f}, 100);
    field.next_frame(0.5f);
    fly({-360, 0}, {-1, 0}, 100);
    field.next_frame(0.125f);
    fly({360, 0}, {1, 0}, 100);
    field.next_frame(0.125f);
    EXPECT_EQ(playStats.hitsTop, 1U);
    EXPECT_EQ(playStats.hitsBottom, 1U);
    EXPECT_EQ(playStats.hitsPaddleLeft, 1U);
    EXPECT_EQ(playStats.hitsPaddleRight, 1U);
    EXPECT_EQ(field.ball.travelDistance, 125.0f);
}

// The continuous motion

TEST_F(FieldV2, a_time_that_is_not_above_0_is_reported_and_skipped) {
    fly({0, 0}, {1, 0}, 100);
    log.expect_error("PlayField::next_frame, invalid dt:0.00");
    log.expect_error("PlayField::next_frame_ext, invalid dt:0.00");
    field.next_frame(0);
    field.next_frame_ext(0);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(field.ball.travelDistance, 0.0f);
}

TEST_F(FieldV2, next_frame_ext_flies_straight_on_in_the_open) {
    fly({0, 0}, {0.75f, -0.5f}, 100);
    field.next_frame_ext(0.5f);
    EXPECT_EQ(field.ball.pos, glm::vec2(37.5f, -25));
    EXPECT_EQ(field.ball.travelDistance, 50.0f);
}

TEST_F(FieldV2, next_frame_ext_flies_the_rest_of_the_frame_after_a_bounce) {
    fly({0, 175}, {0.6f, 0.8f}, 100);
    field.next_frame_ext(0.5f);  // 25 up to the wall's line at 195, 25 down again
    EXPECT_NEAR(field.ball.pos.x, 30, TOLERANCE);
    EXPECT_NEAR(field.ball.pos.y, 175, TOLERANCE);
    EXPECT_EQ(field.ball.dir, glm::vec2(0.6f, -0.8f));
}

TEST_F(FieldV2, next_frame_ext_finds_the_earliest_hit) {
    struct Row {
        const char* name;
        glm::vec2 pos;
        const char* first;
        const char* second;
    };
    // Both ways meet the top line at 195 and the paddle's line at 370.
    for (const Row& row : {Row{"wall before paddle", {340, 185}, "HIT_TOP", "HIT_PADDLE_RIGHT"},
                           Row{"paddle before wall", {360, 165}, "HIT_PADDLE_RIGHT", "HIT_TOP"}}) {
        field.paddleRight.pos.y = 160;
        fly(row.pos, {0.8f, 0.6f}, 100);
        log.clear();
        field.next_frame_ext(0.75f);
        const Lines lines = log.lines();
        ASSERT_EQ(lines.size(), 2U) << row.name;
        EXPECT_TRUE(lines[0].starts_with(std::string("PlayField::next_frame, HIT ") + row.first))
            << row.name << ": " << lines[0];
        EXPECT_TRUE(lines[1].starts_with(std::string("PlayField::next_frame, HIT ") + row.second))
            << row.name << ": " << lines[1];
        EXPECT_EQ(field.ball.dir, glm::vec2(-0.8f, -0.6f)) << row.name;
    }
}

TEST_F(FieldV2, next_frame_ext_holds_several_bounces_in_one_frame) {
    fly({0, 0}, {0, 1}, 1000);
    field.next_frame_ext(1);  // 195 up, 390 down, 390 up, 25 down
    EXPECT_EQ(playStats.hitsTop, 2U);
    EXPECT_EQ(playStats.hitsBottom, 1U);
    EXPECT_NEAR(field.ball.pos.y, 170, TOLERANCE);
}

TEST_F(FieldV2, next_frame_ext_ends_a_way_that_no_crossing_shortens) {
    field.set_tm_travel(1);
    fly({0, 0}, {0.6f, 0.8f}, field.ball.velocity);
    field.next_frame_ext(1e7f);
    EXPECT_TRUE(field.is_flying());
    EXPECT_NEAR(field.ball.pos.y, 195, TOLERANCE);
    field.next_frame_ext(0.0001f);
    EXPECT_NEAR(field.ball.pos.y, 131, TOLERANCE) << "it has turned back into the field";
}

TEST_F(FieldV2, next_frame_ext_passes_beside_a_paddle) {
    fly({360, 46}, {1, 0}, 100);
    field.next_frame_ext(0.25f);
    EXPECT_EQ(playStats.all_hits(), 0U);
    EXPECT_EQ(field.ball.pos, glm::vec2(385, 46));
}

TEST_F(FieldV2, next_frame_ext_hits_with_the_rim_of_the_ball) {
    fly({360, 45}, {1, 0}, 100);
    field.next_frame_ext(0.25f);
    EXPECT_EQ(playStats.hitsPaddleRight, 1U);
    EXPECT_EQ(field.ball.dir, glm::vec2(-1, 0));
}

TEST_F(FieldV2, the_end_of_a_flight_shows_the_record) {
    fly({-400, 100}, {-1, 0}, 100);
    field.next_frame_ext(0.0625f);
    EXPECT_EQ(field.state, 0U);
    EXPECT_EQ(
        test::without_the_clock(log.lines()),
        (Lines{"BALL ON LEFT SIDE, ball.pos:-406.25, 100.00", "", "PlayStats", "    hits top:0",
               "    hits bottom:0", "    hits pad left:0", "    hits pad right:0", "    all hits:0",
               "    tmTravel:0.00 sec", "    tmRefresh:0 ms", "    travelDistance:6.25", ""}));
}

TEST_F(FieldV2, each_picture_is_counted) {
    field.resize(800, 400);
    const unsigned before = playStats.frames;
    const QPixmap first = field.grab();
    const QPixmap second = field.grab();
    EXPECT_EQ(playStats.frames, before + 2);
}

}  // namespace
