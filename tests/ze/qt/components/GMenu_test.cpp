#include "ze/qt/components/GMenu.h"

#include "ze/qt/components/GAction.h"

#include "support/LogCapture.h"

#include <QCursor>
#include <QLabel>
#include <QPointer>
#include <QTest>
#include <QWidgetAction>

#include <memory>

using namespace ze::qt;

namespace {

class GMenuTest : public testing::Test {
protected:
    GMenuTest() { log.ignore(""); }

    static void enlarge_font(QWidget& widget) {
        QFont font = widget.font();
        font.setPointSize(19);
        widget.setFont(font);
    }

    test::LogCapture log;
    QWidget window;
    std::unique_ptr<GMenu> menu{(enlarge_font(window), GMenu::gen_menu(&window, 150))};
};

}  // namespace

TEST_F(GMenuTest, takes_the_font_of_its_parent_and_the_separators_sheet) {
    EXPECT_EQ(menu->font().pointSize(), 19);
    EXPECT_EQ(
        menu->styleSheet(),
        QStringLiteral("QMenu::separator { height: 1px; background: #707070; margin: 6px 10px; }"));
    const std::unique_ptr<GMenu> alone(GMenu::gen_menu(nullptr, 150));
    EXPECT_EQ(alone->parent(), nullptr);
}

TEST_F(GMenuTest, a_width_has_no_effect) {
    const QSize size = menu->sizeHint();
    menu->set_width(900);
    EXPECT_EQ(menu->sizeHint(), size);
}

TEST_F(GMenuTest, a_sub_menu_has_title_and_font) {
    const GMenu* const sub = menu->gen_sub_menu(QStringLiteral("Theme"), 150);
    EXPECT_EQ(sub->title(), QStringLiteral("Theme"));
    EXPECT_EQ(sub->font().pointSize(), 19);
    EXPECT_EQ(menu->actions(), QList<QAction*>{sub->menuAction()});
}

TEST_F(GMenuTest, an_action_is_checked_only_when_it_is_checkable) {
    struct Row {
        bool checkable;
        bool checked;
        bool enabled;
        bool isChecked;
    };
    for (const Row& row : {Row{true, true, true, true}, Row{true, false, true, false},
                           Row{false, true, true, false}, Row{false, false, false, false}}) {
        const GAction* const action = menu->gen_action(QStringLiteral("Logging"), row.checkable,
                                                       row.checked, row.enabled, 200);
        EXPECT_EQ(action->isCheckable(), row.checkable);
        EXPECT_EQ(action->isChecked(), row.isChecked);
        EXPECT_EQ(action->isEnabled(), row.enabled);
        EXPECT_EQ(action->parent(), &window);
        EXPECT_EQ(action->delay, 0U);
    }
    EXPECT_EQ(menu->actions().size(), 4);
}

TEST_F(GMenuTest, a_label_and_a_separator_are_entries) {
    const QWidgetAction* const action = menu->gen_label(QStringLiteral("Speed"));
    const auto* const label = qobject_cast<QLabel*>(action->defaultWidget());
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), QStringLiteral("Speed"));
    EXPECT_EQ(
        label->styleSheet(),
        QStringLiteral("QLabel{    color: yellow;    background: #303030;    padding: 6px 12px;}"));
    EXPECT_TRUE(label->testAttribute(Qt::WA_TransparentForMouseEvents));
    EXPECT_TRUE(menu->gen_separator()->isSeparator());
    EXPECT_EQ(menu->actions().size(), 2);
}

TEST_F(GMenuTest, pops_up_below_the_mouse) {
    menu->gen_action(QStringLiteral("Logging"), false, false, true, 200);
    QCursor::setPos(100, 100);
    menu->show_at_mouse_pos(30);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(menu->pos(), QCursor::pos() + QPoint(0, 30));
    menu->hide();
}

TEST_F(GMenuTest, its_actions_go_with_it) {
    const QPointer<GAction> action =
        menu->gen_action(QStringLiteral("Logging"), false, false, true, 200);
    menu.reset();
    EXPECT_TRUE(QTest::qWaitFor([&action] { return action.isNull(); }));
}
