#include "WindowFixture.h"

#include <QPointingDevice>

#include <memory>

namespace {

class WindowInfoTest : public test::WindowFixture {};

TEST_F(WindowInfoTest, the_invitation_is_logged_and_shown) {
    window.on_show_invitation();
    EXPECT_EQ(log.lines(), std::vector<std::string>{"Window::on_show_invitation"});
    EXPECT_EQ(window.panStack->current_stacked_panel(), window.panInvitation);
}

TEST_F(WindowInfoTest, the_self_mode_shows_its_panel) {
    window.panSelfMode = window.panStack->gen_pan_vert(0);
    window.on_show_self_mode();
    EXPECT_EQ(log.lines(), std::vector<std::string>{"Window::on_show_self_mode"});
    EXPECT_EQ(window.panStack->current_stacked_panel(), window.panSelfMode);
}

TEST_F(WindowInfoTest, on_a_touch_screen_the_hint_tells_of_fingers) {
    const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
    window.show_offline_player_mode();
    ASSERT_NE(open_box(), nullptr);
    EXPECT_EQ(
        open_box()->text(),
        QStringLiteral("Single Player Mode\n\nLeft paddle:\n- Touch and drag on the left side\n"
                       "\nRight paddle:\n- Touch and drag on the right side\n\n\n"
                       "See this massage after loading game again ?"));
    answer(QMessageBox::No);
}

TEST_F(WindowInfoTest, the_answer_to_the_hint_is_worth_an_info_line) {
    for (const auto button : {QMessageBox::Yes, QMessageBox::No}) {
        window.show_offline_player_mode();
        log.clear();
        answer(button);
        const auto lines = log.lines_with_level();
        const char* const line =
            button == QMessageBox::Yes ? "INF OFFLINE INFO AGAIN" : "INF OFFLINE INFO STOPP";
        EXPECT_EQ(std::count(lines.begin(), lines.end(), line), 1) << line;
    }
}

}  // namespace
