#include "ze/qt/components/GCheckBox.h"

#include <QTest>

#include <string>
#include <vector>

#include <gtest/gtest.h>

using ze::qt::GCheckBox;

TEST(GCheckBox, takes_text_and_tool_tip) {
    GCheckBox box(QStringLiteral("sound"), QStringLiteral("play sounds"));
    EXPECT_EQ(box.text(), QStringLiteral("sound"));
    EXPECT_EQ(box.toolTip(), QStringLiteral("play sounds"));
    box.set_string("sound $", 1);
    EXPECT_EQ(box.text(), QStringLiteral("sound 1"));
}

TEST(GCheckBox, set_checked_tells_the_listener_only_when_asked_to) {
    GCheckBox box;
    std::vector<bool> toggles;
    box.toggled_listener += [&toggles](const bool& on) {
        toggles.push_back(on);
    };
    box.set_checked(true, false);
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(toggles, std::vector<bool>{});
    box.set_checked(false, true);
    EXPECT_EQ(toggles, std::vector<bool>{false});
}

TEST(GCheckBox, a_click_fires_pressed_toggled_and_released) {
    GCheckBox box(QStringLiteral("sound"));
    std::vector<std::string> calls;
    box.pressed_listener += [&calls] {
        calls.emplace_back("pressed");
    };
    box.released_listener += [&calls] {
        calls.emplace_back("released");
    };
    box.toggled_listener += [&calls](const bool& on) {
        calls.emplace_back(on ? "on" : "off");
    };
    box.resize(box.sizeHint());
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, QPoint(5, box.height() / 2));
    std::sort(calls.begin(), calls.end());
    EXPECT_EQ(calls, (std::vector<std::string>{"on", "pressed", "released"}));
}
