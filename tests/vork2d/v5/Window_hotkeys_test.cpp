#include "WindowFixture.h"

namespace {

class WindowHotkeysTest : public test::WindowFixture {
protected:
    WindowHotkeysTest() { log.ignore("WIN ACTIVATED:"); }

    /// A key to the active window: shortcuts work in no other.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &window; }));
        QTest::keyClick(&window, key, modifiers);
    }
};

TEST_F(WindowHotkeysTest, up_and_down_move_the_own_paddle_offline_and_send_nothing) {
    press(Qt::Key_Up);
    EXPECT_EQ(window.playField->paddleLeft.pos.y, 25.0F);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(window.playField->paddleLeft.pos.y, -25.0F);
    EXPECT_EQ(window.playField->paddleRight.pos.y, 0.0F);
    EXPECT_TRUE(has_line("Up"));
    EXPECT_TRUE(has_line("Down"));
    EXPECT_TRUE(relay.frames.empty());
}

TEST_F(WindowHotkeysTest, with_ctrl_the_arrows_move_the_other_paddle_offline) {
    press(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(window.playField->paddleRight.pos.y, 25.0F);
    press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(window.playField->paddleRight.pos.y, 0.0F);
    EXPECT_EQ(window.playField->paddleLeft.pos.y, 0.0F);
    EXPECT_TRUE(has_line("Ctrl+Up"));
    EXPECT_TRUE(has_line("Ctrl+Down"));
}

TEST_F(WindowHotkeysTest, with_ctrl_the_arrows_do_nothing_while_connected) {
    connect_paired();
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.diaConn.isNull(); }));
    log.clear();
    press(Qt::Key_Up, Qt::ControlModifier);
    press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(log.lines(), std::vector<std::string>());
    EXPECT_EQ(window.playField->paddleRight.pos.y, 0.0F);
}

TEST_F(WindowHotkeysTest, an_arrow_while_connected_goes_out) {
    connect_paired();
    press(Qt::Key_Up);
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(relay.frames[0][QStringLiteral("payload")].toObject(),
              (QJsonObject{{QStringLiteral("cmd"), QStringLiteral("keyPressed")},
                           {QStringLiteral("keySequence"), QStringLiteral("Up")}}));
}

TEST_F(WindowHotkeysTest, space_starts_and_stops) {
    press(Qt::Key_Space);
    EXPECT_TRUE(window.playField->is_state_PLAY());
    press(Qt::Key_Space);
    EXPECT_FALSE(window.playField->is_state_PLAY());
    EXPECT_TRUE(has_line("Space"));
}

TEST_F(WindowHotkeysTest, space_in_the_chat_field_types_a_blank_and_a_click_gives_the_keys_back) {
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &window; }));
    window.panChat->set_visible(true);
    window.editChat->setEnabled(true);
    window.editChat->setFocus();
    QTest::keyClick(window.editChat, Qt::Key_Space);
    EXPECT_EQ(window.editChat->text(), QStringLiteral(" "));
    EXPECT_FALSE(window.playField->is_state_PLAY());
    QTest::mouseClick(window.playField, Qt::LeftButton);
    EXPECT_TRUE(window.playField->hasFocus());
    QTest::keyClick(window.playField, Qt::Key_Space);
    EXPECT_TRUE(window.playField->is_state_PLAY());
}

TEST_F(WindowHotkeysTest, f11_fills_the_screen_and_escape_leaves_it) {
    press(Qt::Key_Escape);
    EXPECT_FALSE(window.isFullScreen());
    press(Qt::Key_F11);
    EXPECT_TRUE(window.isFullScreen());
    press(Qt::Key_Escape);
    EXPECT_FALSE(window.isFullScreen());
    EXPECT_TRUE(has_line("F11"));
    EXPECT_TRUE(has_line("Escape"));
}

struct SpeedRow {
    Qt::Key key;
    unsigned ms;
};

TEST_F(WindowHotkeysTest, ctrl_and_a_digit_set_the_speed) {
    const std::vector<SpeedRow> rows = {{Qt::Key_1, 10000}, {Qt::Key_2, 5000}, {Qt::Key_3, 3000},
                                        {Qt::Key_4, 2000},  {Qt::Key_5, 1600}, {Qt::Key_6, 1000},
                                        {Qt::Key_7, 700},   {Qt::Key_8, 500},  {Qt::Key_9, 200},
                                        {Qt::Key_0, 100}};
    for (const SpeedRow& row : rows) {
        press(row.key, Qt::ControlModifier);
        EXPECT_EQ(window.playField->tm_travel(), row.ms);
    }
}

TEST_F(WindowHotkeysTest, ctrl_0_while_connected_sends_the_travel_time) {
    connect_paired();
    press(Qt::Key_0, Qt::ControlModifier);
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(relay.frames[0][QStringLiteral("payload")].toObject(),
              (QJsonObject{{QStringLiteral("cmd"), QStringLiteral("travel")},
                           {QStringLiteral("msTravel"), 100}}));
}

}  // namespace
