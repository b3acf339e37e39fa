#include "ze/qt/components/GLabel.h"

#include "support/LogCapture.h"

#include <QMouseEvent>
#include <QTest>

#include <string>
#include <vector>

using ze::qt::GLabel;

TEST(GLabel, mouse_events_reach_the_listeners_also_without_a_button) {
    GLabel label(QStringLiteral("text"), QStringLiteral("tip"));
    std::vector<std::string> calls;
    label.mouse_press_listener += [&calls](QMouseEvent*) {
        calls.emplace_back("press");
    };
    label.mouse_release_listener += [&calls](QMouseEvent*) {
        calls.emplace_back("release");
    };
    label.mouse_move_listener += [&calls](QMouseEvent*) {
        calls.emplace_back("move");
    };
    QTest::mousePress(&label, Qt::LeftButton);
    QTest::mouseRelease(&label, Qt::LeftButton);
    QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), QPointF(1, 1), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(&label, &move);
    EXPECT_EQ(calls, (std::vector<std::string>{"press", "release", "move"}));
    EXPECT_TRUE(label.testAttribute(Qt::WA_MouseTracking));
    EXPECT_EQ(label.toolTip(), QStringLiteral("tip"));
}

TEST(GLabel, a_line_is_styled_by_its_name) {
    GLabel line;
    line.set_horz_line(2, QStringLiteral("black"), QStringLiteral("line1"));
    EXPECT_EQ(line.objectName(), QStringLiteral("line1"));
    EXPECT_EQ(line.maximumHeight(), 2);
    EXPECT_EQ(line.styleSheet(),
              QStringLiteral("#line1 { border: 2px solid black; background:black}"));
}

TEST(GLabel, a_line_keeps_the_name_that_the_label_has) {
    GLabel line;
    line.setObjectName(QStringLiteral("mine"));
    line.set_horz_line(1, QStringLiteral("red"), QStringLiteral("other"));
    EXPECT_EQ(line.styleSheet(), QStringLiteral("#mine { border: 1px solid red; background:red}"));
}

TEST(GLabel, lines_without_a_name_get_different_ones) {
    GLabel first;
    GLabel second;
    first.set_horz_line(1, QStringLiteral("red"));
    second.set_horz_line(1, QStringLiteral("red"));
    EXPECT_EQ(first.objectName().size(), 8);
    EXPECT_NE(first.objectName(), second.objectName());
}
