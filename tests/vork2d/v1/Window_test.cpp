#include "vork2d/v1/Window.h"

#include "vork2d/early/GenerationTest.h"
#include "vork2d/v1/PlayField.h"

#include <QTest>

namespace {

using test::Lines;
using vork2d::v1::PlayField;

class WindowV1 : public test::GenerationWindow<vork2d::v1::Window> {
protected:
    [[nodiscard]] bool fly_to_the_end() {
        return fly_until([this] { return !window.playField->is_flying(); });
    }
};

TEST_F(WindowV1, has_a_title_and_an_identity_of_its_own) {
    EXPECT_EQ(window.windowTitle(), QStringLiteral("vork2D/v1"));
    EXPECT_EQ(window.get_object_name(), QStringLiteral("WinChat_0"));
}

TEST_F(WindowV1, has_its_three_buttons) {
    EXPECT_EQ(buttons(), (Lines{"test 1", "test 2", "stop"}));
}

TEST_F(WindowV1, test_1_flies_past_the_right_paddle) {
    press("test 1");
    ASSERT_TRUE(fly_to_the_end());
    EXPECT_EQ(
        log.lines(),
        (Lines{"DrawTestObject::on_simple_move1",
               "DrawTestObject::start_flight, ball:pos:0.00, 0.00, dir:0.97, 0.24, "
               "velocity:160.00",
               ze::str::xprintF(0, "BALL ON RIGHT SIDE, ball.pos:$", window.playField->ball.pos),
               "hits left paddle:0, hits right paddle:0"}));
}

TEST_F(WindowV1, test_2_goes_over_the_top_comes_back_by_the_bottom_and_leaves_at_the_left) {
    press("test 2");
    ASSERT_TRUE(fly_until([this] { return window.playField->hitsRight == 1; }));
    window.playField->paddleLeft.pos.y = -160;
    ASSERT_TRUE(fly_to_the_end());
    EXPECT_EQ(test::count_lines(log.lines(), "DrawTestObject::next_frame, HIT HIT_TOP"), 1);
    EXPECT_EQ(test::count_lines(log.lines(), "DrawTestObject::next_frame, HIT HIT_BOTTOM"), 1);
    EXPECT_EQ(
        test::lines_from(log.lines(), "BALL ON"),
        (Lines{ze::str::xprintF(0, "BALL ON LEFT SIDE, ball.pos:$", window.playField->ball.pos),
               "hits left paddle:0, hits right paddle:1"}));
}

TEST_F(WindowV1, stop_ends_a_flight) {
    press("test 1");
    press("stop");
    EXPECT_FALSE(window.playField->is_flying());
    EXPECT_EQ(test::lines_from(log.lines(), "STOPPED"),
              (Lines{"STOPPED by user", "hits left paddle:0, hits right paddle:0"}));
}

TEST_F(WindowV1, the_two_numbers_set_the_timer_and_the_speed) {
    EXPECT_EQ(spin("refresh delay")->value(), 16);
    EXPECT_EQ(spin("timer devider speed")->value(), 5000);
    spin("refresh delay")->setValue(40);
    spin("timer devider speed")->setValue(1000);
    EXPECT_EQ(window.playField->timer.interval(), 40);
    EXPECT_EQ(window.playField->ball.velocity, 800.0f);
}

TEST_F(WindowV1, the_mouse_on_the_field_moves_a_paddle) {
    PlayField* const field = window.playField;
    const QPoint upper(field->width() / 2, field->height() / 4);
    QTest::mousePress(field, Qt::LeftButton, Qt::NoModifier, upper);
    EXPECT_EQ(field->paddleRight.pos.y,
              field->convert_to_coord_system(glm::vec2(upper.x(), upper.y())).y);
}

}  // namespace
