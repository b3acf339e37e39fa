#include "vork2d/v3/Window.h"

#include "vork2d/early/GenerationTest.h"
#include "vork2d/v3/PlayField.h"

#include <cmath>

namespace {

using test::Lines;
using vork2d::v3::playStats;

class WindowV3 : public test::GenerationWindow<vork2d::v3::Window> {};

TEST_F(WindowV3, has_a_title_and_an_identity_of_its_own) {
    EXPECT_EQ(window.windowTitle(), QStringLiteral("vork2D/v3"));
    EXPECT_EQ(window.get_object_name(), QStringLiteral("WinChat2_0"));
}

TEST_F(WindowV3, has_its_four_buttons) {
    EXPECT_EQ(buttons(), (Lines{"mouse", "start", "test 2", "stop"}));
}

TEST_F(WindowV3, start_and_test_2_are_the_two_serves) {
    press("start");
    EXPECT_EQ(window.playField->ball.pos, glm::vec2(-370 + 0.1f, 0));
    press("test 2");
    EXPECT_EQ(window.playField->ball.pos, glm::vec2(-370, 0));
}

TEST_F(WindowV3, a_serve_past_a_paddle_that_is_away_ends_at_the_edge) {
    press("test 2");
    window.playField->paddleRight.pos.y = -160;
    ASSERT_TRUE(fly_until([this] { return !window.playField->is_flying(); }));
    // 775 across, from the paddle's face to where the ball has just left.
    const float way = 775 * std::sqrt(740.0f * 740.0f + 390.0f * 390.0f) / 740;
    EXPECT_NEAR(playStats.travelDistance, way, 0.1f);
    Lines end = test::without_the_clock(test::lines_from(log.lines(), "BALL ON"));
    EXPECT_TRUE(end.at(1).starts_with("BALL EXIT, ptExit:405.00, ")) << end.at(1);
    end.erase(end.begin() + 1);
    EXPECT_EQ(
        end,
        (Lines{ze::str::xprintF(0, "BALL ON RIGHT SIDE, ball.pos:$", window.playField->ball.pos),
               "", "PlayStats, v3", "    hits top:1", "    hits bottom:0", "    hits pad left:0",
               "    hits pad right:0", "    all hits:1", "    tmTravel:5.00 sec",
               "    tmRefresh:16 ms",
               ze::str::xprintF(0, "    travelDistance:$", playStats.travelDistance), ""}));
}

TEST_F(WindowV3, the_switch_takes_the_mouse_from_the_paddles) {
    press("mouse");
    window.playField->on_move_paddle({0, 50});
    EXPECT_EQ(window.playField->paddleRight.pos.y, 0.0f);
    press("mouse");
    window.playField->on_move_paddle({0, 50});
    EXPECT_EQ(window.playField->paddleRight.pos.y, 50.0f);
}

TEST_F(WindowV3, stop_ends_a_flight_and_shows_the_record) {
    press("start");
    press("stop");
    EXPECT_FALSE(window.playField->is_flying());
    EXPECT_EQ(test::lines_from(log.lines(), "STOPPED").at(2), "PlayStats, v3");
}

TEST_F(WindowV3, the_two_numbers_set_the_timer_and_the_speed) {
    spin("refresh delay")->setValue(40);
    spin("timer devider speed")->setValue(1000);
    EXPECT_EQ(window.playField->timer.interval(), 40);
    EXPECT_EQ(window.playField->ball.velocity, 800.0f);
}

}  // namespace
