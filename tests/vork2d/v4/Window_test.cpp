#include "vork2d/v4/Window.h"

#include "vork2d/early/GenerationTest.h"
#include "vork2d/v4/PlayField.h"

#include <QTest>

namespace {

using test::Lines;
using vork2d::v4::playStats;
namespace ORIENT2D = ze::math::ORIENT2D;

class WindowV4 : public test::GenerationWindow<vork2d::v4::Window> {
protected:
    WindowV4() { window.playField->flagSound = false; }
};

TEST_F(WindowV4, has_a_title_and_an_identity_of_its_own) {
    EXPECT_EQ(window.windowTitle(), QStringLiteral("vork2D/v4"));
    EXPECT_EQ(window.get_object_name(), QStringLiteral("WinChat2_0"));
}

TEST_F(WindowV4, has_its_five_buttons) {
    EXPECT_EQ(buttons(), (Lines{"swap", "start", "offline", "no focus", "sound"}));
}

TEST_F(WindowV4, start_serves_and_the_rally_ends_with_a_point) {
    press("start");
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("stop"));
    window.playField->paddleRight.pos.y = -160;
    ASSERT_TRUE(fly_until([this] { return !window.playField->is_state_RUN(); }));
    Lines end = test::without_the_clock(test::lines_from(log.lines(), "BALL ON"));
    EXPECT_TRUE(end.at(1).starts_with("BALL EXIT, ptExit:405.00, ")) << end.at(1);
    end.erase(end.begin() + 1);
    EXPECT_EQ(
        end,
        (Lines{ze::str::xprintF(0, "BALL ON RIGHT SIDE, ball.pos:$", window.playField->ball.pos),
               "", "PlayStats, v4", "    hits top:1", "    hits bottom:0", "    hits pad left:0",
               "    hits pad right:0", "    all hits:1", "    tmTravel:5.00 sec",
               "    tmRefresh:16 ms",
               ze::str::xprintF(0, "    travelDistance:$", playStats.travelDistance), "",
               "Window::ini, * ball out of field:RIGHT", "*CONFIRMED*. ball out of field:RIGHT",
               "STATE CHANGED, states {}", "point for me"}));
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("start"));
    EXPECT_EQ(window.playField->textLeft, QStringLiteral("1"));
}

TEST_F(WindowV4, a_ball_lost_on_the_own_side_is_the_point_of_the_opponent) {
    window.on_out_of_field(ORIENT2D::LEFT);
    EXPECT_EQ(log.lines(), (Lines{"*CONFIRMED*. ball out of field:LEFT", "point for opponent"}));
    EXPECT_EQ(window.opponent.countPoints, 1U);
    EXPECT_EQ(window.playField->textRight, QStringLiteral("1"));
}

TEST_F(WindowV4, a_point_makes_no_sound) {
    window.playField->flagSound = true;
    window.on_out_of_field(ORIENT2D::RIGHT);
    window.on_out_of_field(ORIENT2D::LEFT);
    EXPECT_EQ(test::count_lines(log.lines(), "PlayField::play_sound"), 0);
}

TEST_F(WindowV4, start_during_a_rally_stops_it) {
    press("start");
    press("start");  // found by its first text
    EXPECT_FALSE(window.playField->is_state_RUN());
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("start"));
}

TEST_F(WindowV4, alone_on_the_server_start_does_nothing) {
    window.playField->set_state_CONNECTED1(true);
    EXPECT_FALSE(window.buttonStart->isEnabled());
    window.on_start_stop();
    EXPECT_FALSE(window.playField->is_state_RUN());
    window.playField->set_state_CONNECTED2(true);
    EXPECT_TRUE(window.buttonStart->isEnabled());
}

TEST_F(WindowV4, swap_changes_the_side_and_the_labels) {
    window.me.countPoints = 2;
    press("swap");
    EXPECT_EQ(window.playField->side, ORIENT2D::RIGHT);
    EXPECT_EQ(window.opponent.orient, ORIENT2D::LEFT);
    EXPECT_EQ(window.playField->textRight, QStringLiteral("2"));
}

TEST_F(WindowV4, swap_during_a_rally_does_nothing) {
    press("start");
    press("swap");
    EXPECT_EQ(window.playField->side, ORIENT2D::LEFT);
}

TEST_F(WindowV4, the_switch_turns_the_sound_on_and_off) {
    auto* const sound = window.find_widget<ze::qt::GButton>(QStringLiteral("sound"));
    EXPECT_TRUE(sound->isChecked());
    press("sound");
    EXPECT_FALSE(window.playField->flagSound);
    press("sound");
    EXPECT_TRUE(window.playField->flagSound);
}

TEST_F(WindowV4, no_focus_takes_the_keys_from_the_numbers) {
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    spin("refresh delay")->setFocus();
    ASSERT_TRUE(spin("refresh delay")->hasFocus());
    press("no focus");
    EXPECT_FALSE(spin("refresh delay")->hasFocus());
}

TEST_F(WindowV4, the_arrow_keys_move_both_paddles_of_one_player) {
    window.send_key_event(QKeyEvent(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier));
    window.send_key_event(QKeyEvent(QEvent::KeyPress, Qt::Key_Down, Qt::ControlModifier));
    EXPECT_EQ(window.playField->paddleLeft.pos.y, 25.0f);
    EXPECT_EQ(window.playField->paddleRight.pos.y, -25.0f);
}

TEST_F(WindowV4, the_mouse_moves_a_paddle_through_a_message) {
    window.playField->on_move_paddle({0, 50});
    EXPECT_EQ(window.playField->paddleLeft.pos.y, 50.0f);
}

TEST_F(WindowV4, the_two_numbers_set_the_timer_and_the_speed) {
    spin("refresh delay")->setValue(40);
    spin("timer devider speed")->setValue(1000);
    EXPECT_EQ(window.playField->timer.interval(), 40);
    EXPECT_EQ(window.playField->ball.velocity, 800.0f);
}

TEST_F(WindowV4, a_travel_time_of_the_other_client_shows_in_the_number) {
    ze::net::GPlay play;
    play.set_travel(2000);
    window.playField->on_play_message(play, ze::net::REMOTE);
    EXPECT_EQ(spin("timer devider speed")->value(), 2000);
}

}  // namespace
