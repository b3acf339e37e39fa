// What a frame step tells its watcher, and what it comes to.
#include "vork2d/rally/frame_step.h"

#include <limits>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace vork2d::rally;

std::string text(glm::vec2 v) {
    std::ostringstream out;
    out << v.x << "," << v.y;
    return out.str();
}

/// Writes down each call, with the ball's place and direction as they are then.
class Record final : public StepWatcher {
public:
    explicit Record(const Ball& theBall) : ball(theBall) {}

    void on_wall_hit(const HitInfo& hit) override { add("wall " + std::to_string(hit.type)); }
    void on_paddle_hit(const HitInfo& hit, float rel) override {
        add("paddle " + std::to_string(hit.type) + " at " + text(hit.pt) + " rel " +
            text({rel, 0}));
    }
    void on_deflected(unsigned cGuard) override { add("deflected " + std::to_string(cGuard)); }
    void on_turned(glm::vec2 vRemain) override { add("turned " + text(vRemain)); }
    void on_invalid_dt(float dt) override { add("invalid dt " + std::to_string(dt)); }
    void on_paddle_upside_down(float yMin, float yMax) override {
        add("upside down " + text({yMin, yMax}));
    }
    void on_guard_break(unsigned cGuard, glm::vec2) override {
        add("guard break " + std::to_string(cGuard));
    }
    void on_invalid_hit(const HitInfo&, glm::vec2, glm::vec2) override { add("invalid hit"); }
    void on_zero_length_hit(const HitInfo& hit) override {
        add("zero length " + std::to_string(hit.type));
    }

    std::vector<std::string> calls;

private:
    void add(const std::string& what) {
        calls.push_back(what + ", pos " + text(ball.pos) + " dir " + text(ball.dir));
    }

    const Ball& ball;
};

class FrameStepTest : public testing::Test {
protected:
    Ball ball;
    Hits hits;
    Court court;
    Record record{ball};

    void put(glm::vec2 pos, glm::vec2 dir, float velocity) {
        ball.pos = pos;
        ball.dir = dir;
        ball.velocity = velocity;
    }
    /// Whether anything was flown.
    bool fly_from(glm::vec2 pos, glm::vec2 dir, float velocity, float dt) {
        put(pos, dir, velocity);
        FrameStep frame(ball, hits, court, record);
        const bool flagFlown = frame.fly(dt);
        oneHit = frame.one_hit();
        ptLastPart = frame.pt_last_part();
        return flagFlown;
    }

    bool oneHit = false;
    glm::vec2 ptLastPart{0, 0};
};

using Calls = std::vector<std::string>;

TEST_F(FrameStepTest, free_flight_calls_nothing) {
    EXPECT_TRUE(fly_from({10, 0}, {0.75f, -0.5f}, 100, 0.5f));
    EXPECT_FALSE(oneHit);
    EXPECT_EQ(ptLastPart, glm::vec2(10, 0));
    EXPECT_EQ(ball.pos, glm::vec2(47.5f, -25));
    EXPECT_EQ(ball.travelDistance, 50.0f);
    EXPECT_EQ(record.calls, Calls());
}

TEST_F(FrameStepTest, a_wall_is_told_before_the_ball_turns) {
    EXPECT_TRUE(fly_from({0, 185}, {0, 1}, 100, 0.25f));
    EXPECT_EQ(record.calls,
              (Calls{"wall 1, pos 0,195 dir 0,1", "turned 0,-15, pos 0,195 dir 0,-1"}));
    EXPECT_EQ(ball.pos, glm::vec2(0, 180));
    EXPECT_EQ(hits.hitsTop, 1U);
    EXPECT_EQ(hits.all_hits(), 1U);
    EXPECT_TRUE(oneHit);
    EXPECT_EQ(ptLastPart, glm::vec2(0, 195));
}

TEST_F(FrameStepTest, the_bottom_wall_is_counted_apart) {
    EXPECT_TRUE(fly_from({0, -185}, {0, -1}, 100, 0.25f));
    EXPECT_EQ(record.calls.front(), "wall 2, pos 0,-195 dir 0,-1");
    EXPECT_EQ(hits.hitsBottom, 1U);
    EXPECT_EQ(hits.all_hits(), 1U);
}

TEST_F(FrameStepTest, a_paddle_is_told_with_the_place_of_the_hit_and_the_new_direction) {
    EXPECT_TRUE(fly_from({360, 0}, {1, 0}, 100, 0.25f));
    EXPECT_EQ(record.calls,
              (Calls{"paddle 4 at 370,0 rel 0,0, pos 370,0 dir 1,0",
                     "deflected 1, pos 370,0 dir -1,0", "turned -15,0, pos 370,0 dir -1,0"}));
    EXPECT_EQ(hits.hitsPaddleRight, 1U);
}

TEST_F(FrameStepTest, a_hit_past_the_paddles_end_counts_as_at_the_end) {
    EXPECT_TRUE(fly_from({-360, 44}, {-1, 0}, 100, 0.25f));
    EXPECT_EQ(record.calls.front(), "paddle 3 at -370,44 rel 1,0, pos -370,44 dir -1,0");
    EXPECT_FLOAT_EQ(ball.dir.y / ball.dir.x, 0.85f);
    EXPECT_EQ(hits.hitsPaddleLeft, 1U);
}

TEST_F(FrameStepTest, a_wall_and_a_paddle_at_one_place_are_the_wall_and_then_stand_still) {
    court.paddleRight.pos.y = 160;
    EXPECT_TRUE(fly_from({360, 185}, {1, 1}, 100, 1));
    EXPECT_EQ(record.calls,
              (Calls{"wall 1, pos 370,195 dir 1,1", "turned 90,-90, pos 370,195 dir 1,-1",
                     "zero length 4, pos 370,195 dir 1,-1"}));
    EXPECT_EQ(ball.pos, glm::vec2(370, 195));
}

TEST_F(FrameStepTest, a_frame_holds_eight_hits_and_no_more) {
    EXPECT_TRUE(fly_from({0, 0}, {0, 1}, 100'000, 1));
    EXPECT_EQ(hits.all_hits(), 8U);
    EXPECT_EQ(record.calls.back().substr(0, 13), "guard break 9");
}

TEST_F(FrameStepTest, a_time_that_is_not_above_0_is_told_and_flies_nothing) {
    EXPECT_FALSE(fly_from({1, 2}, {1, 0}, 100, 0));
    EXPECT_FALSE(fly_from({1, 2}, {1, 0}, 100, -1));
    EXPECT_EQ(record.calls, (Calls{"invalid dt 0.000000, pos 1,2 dir 1,0",
                                   "invalid dt -1.000000, pos 1,2 dir 1,0"}));
    EXPECT_EQ(ball.pos, glm::vec2(1, 2));
    EXPECT_EQ(ball.travelDistance, 0.0f);
}

TEST_F(FrameStepTest, a_way_too_short_to_count_flies_nothing_and_is_not_told) {
    EXPECT_FALSE(fly_from({1, 2}, {1, 0}, 1e-7f, 1));
    EXPECT_EQ(record.calls, Calls());
    EXPECT_EQ(ball.travelDistance, 0.0f);
}

TEST_F(FrameStepTest, a_way_that_its_direction_makes_too_short_is_counted_but_not_flown) {
    EXPECT_TRUE(fly_from({0, 0}, {1e-9f, 0}, 100, 0.25f));
    EXPECT_EQ(ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(ball.travelDistance, 25.0f);
}

TEST_F(FrameStepTest, a_paddle_upside_down_is_told_wherever_the_ball_is) {
    court.paddleRight.size.height = -20;
    EXPECT_TRUE(fly_from({0, 0}, {1, 0}, 100, 0.25f));
    EXPECT_EQ(record.calls, Calls{"upside down 5,-5, pos 0,0 dir 1,0"});
}

TEST_F(FrameStepTest, a_paddle_upside_down_is_told_and_not_met) {
    court.paddleRight.size.height = -20;
    EXPECT_TRUE(fly_from({360, 0}, {1, 0}, 100, 0.25f));
    EXPECT_EQ(record.calls, Calls{"upside down 5,-5, pos 360,0 dir 1,0"});
    EXPECT_EQ(ball.pos, glm::vec2(385, 0));
}

// The follower

TEST_F(FrameStepTest, straight_flight_passes_walls_and_paddles) {
    ball.pos = {360, 190};
    ball.dir = {1, 1};
    ball.velocity = 100;
    fly_straight(ball, 0.5f, record);
    EXPECT_EQ(ball.pos, glm::vec2(410, 240));
    EXPECT_EQ(ball.travelDistance, 50.0f);
    EXPECT_EQ(record.calls, Calls());
}

TEST_F(FrameStepTest, straight_flight_skips_what_does_not_count) {
    ball.pos = {1, 2};
    ball.dir = {std::numeric_limits<float>::infinity(), 0};
    ball.velocity = 100;
    fly_straight(ball, 0, record);
    EXPECT_EQ(ball.pos, glm::vec2(1, 2));
    EXPECT_EQ(record.calls, Calls{"invalid dt 0.000000, pos 1,2 dir inf,0"});
}

// The exit

TEST_F(FrameStepTest, a_ball_is_out_when_all_of_it_is) {
    const std::pair<float, bool> rows[] = {
        {405, false}, {-405, false}, {405.1f, true}, {-405.1f, true}};
    for (const auto& [x, flagOut] : rows) {
        ball.pos = {x, 0};
        EXPECT_EQ(is_out(ball, 800), flagOut) << x;
    }
    EXPECT_TRUE(is_beyond_left(ball, 800));
    EXPECT_FALSE(is_beyond_right(ball, 800));
}

TEST_F(FrameStepTest, the_exit_is_where_the_ball_was_just_out) {
    ball.pos = {415, 30};
    const Exit right = exit_of(ball, 800, {395, 10});
    EXPECT_EQ(right.side, SIDE::RIGHT);
    EXPECT_EQ(right.xEdge, 405.0f);
    EXPECT_EQ(right.pt, std::optional(glm::vec2(405, 20)));
    EXPECT_FLOAT_EQ(distance_beyond(right, ball), 14.142136f);
    ball.pos = {-415, 30};
    const Exit left = exit_of(ball, 800, {-395, 30});
    EXPECT_EQ(left.side, SIDE::LEFT);
    EXPECT_EQ(left.pt, std::optional(glm::vec2(-405, 30)));
}

TEST_F(FrameStepTest, a_ball_that_was_out_before_its_last_part_has_no_exit_point) {
    ball.pos = {-430, 0};
    for (const glm::vec2 from : {glm::vec2(-410, 0), glm::vec2(-430, -20)}) {
        const Exit exit = exit_of(ball, 800, from);
        EXPECT_FALSE(exit.pt);
        EXPECT_EQ(distance_beyond(exit, ball), 0.0f);
    }
}

}  // namespace
