// The rules without a screen, a clock or a log, by the numbers that every client has to agree on.
#include "vork2d/rally/Rally.h"
#include "vork2d/rally/scripted_rally.h"

#include <gtest/gtest.h>

namespace {

using vork2d::rally::Rally;
using vork2d::rally::SIDE;
namespace rules = vork2d::rally::rules;

class Silent final : public vork2d::rally::StepWatcher {};

class BareGame {
public:
    vork2d::rally::Ball& ball() { return rally.ball; }
    vork2d::rally::Paddle& paddle(SIDE side) { return rally.paddle(side); }
    void start(SIDE side, unsigned long long msTravel) {
        rally.start(side, msTravel);
        flagPlaying = true;
    }
    [[nodiscard]] bool is_playing() const { return flagPlaying; }
    void step_left_paddle(bool up) {
        const float step = up ? rules::PADDLE_STEP : -rules::PADDLE_STEP;
        rally.move_paddle(SIDE::LEFT, rally.court.paddleLeft.pos.y + step);
    }
    void frame(float dt) {
        if (rally.advance(dt, silent)) {
            flagPlaying = false;
        }
    }
    [[nodiscard]] unsigned all_hits() const { return rally.hits.all_hits(); }

private:
    Rally rally;
    Silent silent;
    bool flagPlaying = false;
};

TEST(Golden, a_thousand_steps_end_where_they_always_did) {
    BareGame game;
    const test::RallyTrace trace = test::play_golden(game);
    // The steps are worth pinning: there is enough to see in them.
    EXPECT_GT(trace.hits, 30U);
    EXPECT_GT(trace.serves, 4U);
    EXPECT_EQ(trace.hash.hash, test::GOLDEN_HASH);
}

TEST(Golden, a_hundred_thousand_random_frames_end_where_they_always_did) {
    BareGame game;
    const test::RallyTrace trace = test::play_random(game);
    EXPECT_GT(trace.hits, 1000U);
    EXPECT_GT(trace.serves, 500U);
    EXPECT_EQ(trace.hash.hash, test::RANDOM_HASH);
}

}  // namespace
