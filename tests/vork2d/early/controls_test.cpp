#include "vork2d/early/controls.h"

#include "ze/qt/GPanel.h"
#include "ze/qt/components/GButton.h"

#include <QSpinBox>

#include <vector>

#include <gtest/gtest.h>

namespace {

namespace early = vork2d::early;

class Controls : public testing::Test {
protected:
    ze::qt::GPanel row{ze::qt::GLAYOUT::HORIZONTAL};
    std::vector<int> values;
};

TEST_F(Controls, a_spin_field_tells_each_new_value_but_not_the_first) {
    QSpinBox* const spin = early::gen_spin_field(&row, QStringLiteral("size"), 1, 10, 5,
                                                 [this](int value) { values.push_back(value); });
    EXPECT_EQ(spin->value(), 5);
    spin->setValue(7);
    spin->setValue(11);
    EXPECT_EQ(values, (std::vector<int>{7, 10}));
}

TEST_F(Controls, a_button_runs_its_callable_at_each_click) {
    ze::qt::GButton* const button =
        early::gen_button(&row, QStringLiteral("go"), [this] { values.push_back(1); });
    button->click();
    button->click();
    EXPECT_EQ(values, (std::vector<int>{1, 1}));
}

TEST_F(Controls, a_switch_starts_as_told_and_tells_each_change) {
    ze::qt::GButton* const button = early::gen_switch(
        &row, QStringLiteral("on"), true, [this](bool on) { values.push_back(on ? 1 : 0); });
    EXPECT_TRUE(button->isChecked());
    button->click();
    button->click();
    EXPECT_EQ(values, (std::vector<int>{0, 1}));
}

TEST_F(Controls, the_two_numbers_of_a_test_window_go_their_own_ways) {
    QSpinBox* const speed = early::gen_spin_fields(
        &row, 16, 5000, [this](int ms) { values.push_back(ms); },
        [this](int ms) { values.push_back(-ms); });
    auto* const refresh = row.findChild<QSpinBox*>(QStringLiteral("refresh delay"));
    ASSERT_NE(refresh, nullptr);
    EXPECT_EQ(speed->objectName(), QStringLiteral("timer devider speed"));
    EXPECT_EQ(refresh->value(), 16);
    EXPECT_EQ(speed->value(), 5000);
    refresh->setValue(33);
    speed->setValue(1000);
    EXPECT_EQ(values, (std::vector<int>{33, -1000}));
}

}  // namespace
