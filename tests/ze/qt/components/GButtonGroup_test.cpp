#include "ze/qt/components/GButtonGroup.h"

#include "ze/qt/components/GRadioButton.h"

#include "support/LogCapture.h"

using namespace ze::qt;

namespace {

class GButtonGroupTest : public testing::Test {
protected:
    GButtonGroupTest() {
        log.ignore("Listener::~Listener");
        for (GRadioButton* const button : {&first, &second}) {
            button->setObjectName(button->text());
            group.addButton(button);
        }
    }

    test::LogCapture log;
    GRadioButton first{QStringLiteral("first"), QStringLiteral("tip")};
    GRadioButton second{QStringLiteral("second")};
    GButtonGroup group;
};

}  // namespace

TEST_F(GButtonGroupTest, set_checked_finds_its_button_by_name) {
    group.set_checked(QStringLiteral("second"));
    EXPECT_TRUE(second.isChecked());
    group.set_checked(QStringLiteral("first"));
    EXPECT_FALSE(second.isChecked());
}

TEST_F(GButtonGroupTest, an_unknown_name_is_an_error_and_an_empty_one_is_none) {
    log.expect_error("GButtonGroup::button_by_name, name 'third' not found");
    EXPECT_EQ(group.button_by_name(QStringLiteral("third")), nullptr);
    EXPECT_EQ(group.button_by_name(QString()), nullptr);
    EXPECT_EQ(group.button_by_name(QStringLiteral("second")), &second);
}

TEST_F(GButtonGroupTest, uncheck_leaves_no_button_checked_and_the_group_not_exclusive) {
    group.set_checked(QStringLiteral("second"));
    group.uncheck();
    EXPECT_FALSE(first.isChecked() || second.isChecked());
    EXPECT_FALSE(group.exclusive());
}

TEST_F(GButtonGroupTest, set_enabled_reaches_every_button) {
    group.set_enabled(false);
    EXPECT_FALSE(first.isEnabled() || second.isEnabled());
    group.set_enabled(true);
    EXPECT_TRUE(first.isEnabled() && second.isEnabled());
}

TEST_F(GButtonGroupTest, a_change_fires_with_the_button_and_its_state) {
    first.setChecked(true);
    std::vector<std::pair<QAbstractButton*, bool>> changes;
    group.toggled_listener += [&changes](const ButtonToggled& t) {
        changes.emplace_back(t.button, t.checked);
    };
    second.setChecked(true);
    EXPECT_EQ(changes,
              (std::vector<std::pair<QAbstractButton*, bool>>{{&first, false}, {&second, true}}));
}

TEST_F(GButtonGroupTest, a_radio_button_fires_its_own_listener) {
    std::vector<bool> toggles;
    second.toggled_listener += [&toggles](const bool& on) {
        toggles.push_back(on);
    };
    second.setChecked(true);
    first.setChecked(true);
    EXPECT_EQ(toggles, (std::vector<bool>{true, false}));
    EXPECT_EQ(first.toolTip(), QStringLiteral("tip"));
    second.set_string(QStringLiteral("other"));
    EXPECT_EQ(second.text(), QStringLiteral("other"));
}
