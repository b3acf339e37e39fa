#include "vork2d/v2/Window.h"

#include "vork2d/early/GenerationTest.h"
#include "vork2d/v2/PlayField.h"

namespace {

using test::Lines;
using vork2d::v2::MOTION;
using vork2d::v2::playStats;

class WindowV2 : public test::GenerationWindow<vork2d::v2::Window> {};

TEST_F(WindowV2, has_a_title_and_an_identity_of_its_own) {
    EXPECT_EQ(window.windowTitle(), QStringLiteral("vork2D/v2"));
    EXPECT_EQ(window.get_object_name(), QStringLiteral("WinChat2_0"));
}

TEST_F(WindowV2, has_its_three_buttons) {
    EXPECT_EQ(buttons(), (Lines{"start", "test 2", "stop"}));
}

TEST_F(WindowV2, the_two_start_buttons_fly_in_the_two_motions) {
    press("start");
    EXPECT_EQ(window.playField->motion, MOTION::CONTINUOUS);
    press("test 2");
    EXPECT_EQ(window.playField->motion, MOTION::STEP);
    EXPECT_TRUE(window.playField->is_flying());
}

TEST_F(WindowV2, start_flies_over_the_top_and_past_a_paddle_that_is_away) {
    press("start");
    window.playField->paddleRight.pos.y = -160;
    for (int frame = 0; frame < 1000 && window.playField->is_flying(); ++frame) {
        window.playField->next_frame_ext(0.016f);
    }
    ASSERT_FALSE(window.playField->is_flying());
    EXPECT_EQ(
        test::without_the_clock(test::lines_from(log.lines(), "BALL ON")),
        (Lines{ze::str::xprintF(0, "BALL ON RIGHT SIDE, ball.pos:$", window.playField->ball.pos),
               "", "PlayStats", "    hits top:1", "    hits bottom:0", "    hits pad left:0",
               "    hits pad right:0", "    all hits:1", "    tmTravel:5.00 sec",
               "    tmRefresh:16 ms",
               ze::str::xprintF(0, "    travelDistance:$", playStats.travelDistance), ""}));
}

TEST_F(WindowV2, test_2_flies_the_same_way_step_by_step) {
    press("test 2");
    window.playField->paddleRight.pos.y = -160;
    ASSERT_TRUE(fly_until([this] { return !window.playField->is_flying(); }));
    EXPECT_EQ(test::count_lines(log.lines(), "BALL ON RIGHT SIDE"), 1);
    EXPECT_EQ(playStats.hitsTop, 1U);
    EXPECT_EQ(playStats.all_hits(), 1U);
}

TEST_F(WindowV2, stop_ends_a_flight_and_shows_the_record) {
    press("start");
    press("stop");
    EXPECT_FALSE(window.playField->is_flying());
    EXPECT_EQ(test::lines_from(log.lines(), "STOPPED").at(2), "PlayStats");
}

TEST_F(WindowV2, the_two_numbers_set_the_timer_and_the_speed) {
    spin("refresh delay")->setValue(40);
    spin("timer devider speed")->setValue(1000);
    EXPECT_EQ(window.playField->timer.interval(), 40);
    EXPECT_EQ(window.playField->ball.velocity, 800.0f);
}

}  // namespace
