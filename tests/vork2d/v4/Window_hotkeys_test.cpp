#include "ze/qt/components/GAction.h"

#include "vork2d/early/GenerationTest.h"
#include "vork2d/v4/PlayField.h"
#include "vork2d/v4/Window.h"

namespace {

class HotkeysV4 : public test::GenerationWindow<vork2d::v4::Window> {
protected:
    HotkeysV4() { window.playField->flagSound = false; }

    void key(const char* keys) {
        const QKeySequence wanted(QString::fromLatin1(keys));
        for (QAction* const action : window.actions()) {
            if (action->shortcut() == wanted) {
                action->trigger();
                return;
            }
        }
        FAIL() << "no action on " << keys;
    }
};

TEST_F(HotkeysV4, space_starts_and_stops) {
    key("Space");
    EXPECT_TRUE(window.playField->is_state_RUN());
    key("Space");
    EXPECT_FALSE(window.playField->is_state_RUN());
}

TEST_F(HotkeysV4, arrows_move_the_own_paddle_and_with_ctrl_the_other_one) {
    key("Up");
    key("Up");
    key("Ctrl+Down");
    EXPECT_EQ(window.playField->paddleLeft.pos.y, 50.0f);
    EXPECT_EQ(window.playField->paddleRight.pos.y, -25.0f);
    key("Down");
    key("Ctrl+Up");
    EXPECT_EQ(window.playField->paddleLeft.pos.y, 25.0f);
    EXPECT_EQ(window.playField->paddleRight.pos.y, 0.0f);
}

TEST_F(HotkeysV4, the_keys_of_every_window_are_there_too) {
    log.clear();
    key("Ctrl+Shift+T");
    EXPECT_EQ(test::count_lines(log.lines(), "GMainWindow::on_rotate_themes"), 1);
}

}  // namespace
