// A window that follows the turns of a small screen, which PlayField_small_screen_test.cpp makes.
#include "ze/qt/guitools/dim.h"

#include "WindowFixture.h"

namespace {

class WindowSmallScreen : public test::WindowFixture {
protected:
    WindowSmallScreen() { ze::qt::dim::reset_cache(); }
    ~WindowSmallScreen() override { ze::qt::dim::reset_cache(); }
};

TEST_F(WindowSmallScreen, a_turn_of_the_screen_reaches_the_windows_that_live) {
    ze::Listener<Qt::Orientation> screen;
    window.follow_orientation(screen);
    {
        test::v5::Window gone;
        gone.setup();
        gone.follow_orientation(screen);
    }
    screen.fire_event(Qt::Vertical);
    EXPECT_EQ(window.playField->maximumWidth(), 396);
    ze::qt::dim::optSize = QSize(700, 400);
    screen.fire_event(Qt::Horizontal);
    EXPECT_EQ(window.playField->maximumWidth(), 0xFFFFFF);
}

}  // namespace
