#include "ze/qt/Generator.h"

#include "ze/qt/components/BasicSlider.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GCheckBox.h"
#include "ze/qt/components/GLabel.h"
#include "ze/qt/components/GLineEdit.h"
#include "ze/qt/components/GRadioButton.h"

#include <vector>

#include <gtest/gtest.h>

using namespace ze::qt;

namespace {

class Keeper : public Generator {
public:
    QWidget* add_widget(QWidget* widget) override {
        widgets.push_back(widget);
        widget->setParent(&owner);
        return widget;
    }

    std::vector<QWidget*> widgets;
    QWidget owner;
};

template <class T>
class GeneratorOf : public testing::Test {};

using Widgets = testing::Types<GButton, GLabel, GLineEdit, GCheckBox, GRadioButton, QLabel>;
TYPED_TEST_SUITE(GeneratorOf, Widgets);

}  // namespace

TYPED_TEST(GeneratorOf, makes_a_widget_from_a_text_and_adds_it) {
    Keeper keeper;
    TypeParam* const widget = keeper.template gen<TypeParam>(QStringLiteral("text"));
    EXPECT_EQ(keeper.widgets, std::vector<QWidget*>{widget});
    EXPECT_EQ(widget->text(), QStringLiteral("text"));
    EXPECT_EQ(widget->toolTip(), QString());
}

TYPED_TEST(GeneratorOf, makes_a_widget_from_a_text_and_a_tool_tip) {
    Keeper keeper;
    TypeParam* const widget =
        keeper.template gen<TypeParam>(QStringLiteral("text"), QStringLiteral("tip"));
    EXPECT_EQ(keeper.widgets, std::vector<QWidget*>{widget});
    EXPECT_EQ(widget->text(), QStringLiteral("text"));
    EXPECT_EQ(widget->toolTip(), QStringLiteral("tip"));
}

TEST(Generator, hands_other_arguments_to_the_constructor) {
    Keeper keeper;
    EXPECT_EQ(keeper.gen<BasicSlider>(Qt::Vertical)->orientation(), Qt::Vertical);
}

TEST(BasicSlider, takes_a_sheet_of_its_orientation) {
    BasicSlider vertical(Qt::Vertical);
    BasicSlider horizontal(Qt::Horizontal);
    vertical.adapt_style(0);
    horizontal.adapt_style(0);
    EXPECT_TRUE(vertical.styleSheet().contains(QStringLiteral("QSlider::handle:vertical")));
    EXPECT_TRUE(horizontal.styleSheet().contains(QStringLiteral("QSlider::handle:horizontal")));
    const QString normal = horizontal.styleSheet();
    horizontal.adapt_style(1);
    EXPECT_NE(horizontal.styleSheet(), normal);
}
