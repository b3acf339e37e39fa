#include "ze/qt/GPanelLogView.h"
#include "ze/qt/components/GMenu.h"
#include "ze/qt/dialogs/GDialogOption.h"

#include "WindowFixture.h"
#include "support/children.h"

#include <QLabel>
#include <QWidgetAction>

namespace {

using ze::qt::GMenu;

class WindowMenuOptionsTest : public test::WindowFixture {
protected:
    /// The menu as it opens now; one that was open before is closed.
    GMenu* open_menu() {
        if (GMenu* const before = visible_menu()) {
            before->close();
        }
        window.on_menu_options();
        return visible_menu();
    }

    static GMenu* visible_menu() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* const menu = dynamic_cast<GMenu*>(widget);
            if (menu != nullptr && menu->isVisible() && menu->title().isEmpty()) {
                return menu;
            }
        }
        return nullptr;
    }

    static QAction* entry(const QMenu* menu, const QString& text) {
        for (QAction* action : menu->actions()) {
            if (action->text() == text) {
                return action;
            }
        }
        return nullptr;
    }

    /// What the menu reads like, line by line: check marks as "[x]" and "[ ]", separators as "---".
    static QStringList texts(const QMenu* menu) {
        QStringList found;
        for (const QAction* action : menu->actions()) {
            const auto* const label = dynamic_cast<const QWidgetAction*>(action);
            if (action->isSeparator()) {
                found << QStringLiteral("---");
            } else if (label != nullptr) {
                found << dynamic_cast<QLabel*>(label->defaultWidget())->text();
            } else {
                const QString mark =
                    action->isChecked() ? QStringLiteral("[x] ") : QStringLiteral("[ ] ");
                found << (action->isCheckable() ? mark : QString()) + action->text();
            }
        }
        return found;
    }

    void choose(const QString& sub, const QString& text) {
        QMenu* menu = open_menu();
        ASSERT_NE(menu, nullptr);
        QMenu* const inner = sub.isEmpty() ? menu : entry(menu, sub)->menu();
        QAction* const action = entry(inner, text);
        ASSERT_NE(action, nullptr) << text.toStdString();
        action->trigger();
        menu->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

QStringList numbers(std::initializer_list<int> values, int checked) {
    QStringList found;
    for (const int value : values) {
        found
            << (value == checked ? QStringLiteral("[x] %1") : QStringLiteral("[ ] %1")).arg(value);
    }
    return found;
}

TEST_F(WindowMenuOptionsTest, offline_the_first_line_says_so_and_no_switch_is_offered) {
    log.ignore("ACTION, ");
    const GMenu* const menu = open_menu();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(
        texts(menu),
        (QStringList{QStringLiteral("OFFLINE MODE"), QStringLiteral("[ ] Sound"),
                     QStringLiteral("[ ] Chat Panel"), QStringLiteral("Travel Time (speed)"),
                     QStringLiteral("---"), QStringLiteral("Theme"), QStringLiteral("---"),
                     QStringLiteral("Font-Size"), QStringLiteral("---"), QStringLiteral("System"),
                     QStringLiteral("---"), QStringLiteral("Refresh Rate")}));
    EXPECT_EQ(log.lines(),
              std::vector<std::string>{"Window::on_menu_options, flagGui:false, cfg: (" +
                                       window.get_panel_log_view()->config.to_string() + ")"});
}

TEST_F(WindowMenuOptionsTest, connected_it_offers_the_switch_with_the_present_side) {
    connect_paired();
    const GMenu* menu = open_menu();
    EXPECT_EQ(texts(menu).mid(0, 2),
              (QStringList{QStringLiteral("Switch side LEFT => RIGHT"), QStringLiteral("---")}));
    choose(QString(), QStringLiteral("Switch side LEFT => RIGHT"));
    EXPECT_EQ(window.playField->side, ze::math::ORIENT2D::RIGHT);
    choose(QString(), QStringLiteral("Switch side RIGHT => LEFT"));
    EXPECT_EQ(window.playField->side, ze::math::ORIENT2D::LEFT);
}

TEST_F(WindowMenuOptionsTest, sound_is_stored_and_taken) {
    choose(QString(), QStringLiteral("Sound"));
    EXPECT_TRUE(window.playField->flagSound);
    EXPECT_TRUE(window.settingsNode.is_flag(QStringLiteral("sound"), false));
    choose(QString(), QStringLiteral("Sound"));
    EXPECT_FALSE(window.playField->flagSound);
    EXPECT_FALSE(window.settingsNode.is_flag(QStringLiteral("sound"), true));
}

TEST_F(WindowMenuOptionsTest, the_chat_panel_is_stored_and_shown) {
    choose(QString(), QStringLiteral("Chat Panel"));
    EXPECT_TRUE(window.panChat->isVisible());
    EXPECT_TRUE(window.settingsNode.is_flag(QStringLiteral("chatPanel"), false));
    EXPECT_TRUE(texts(open_menu()).contains(QStringLiteral("[x] Chat Panel")));
    choose(QString(), QStringLiteral("Chat Panel"));
    EXPECT_FALSE(window.panChat->isVisible());
    EXPECT_FALSE(window.settingsNode.is_flag(QStringLiteral("chatPanel"), true));
}

TEST_F(WindowMenuOptionsTest, the_travel_times_mark_the_one_in_force) {
    const auto values = {100,  200,  300,  400,  500,  700,  1000, 1200,
                         1400, 1600, 1800, 2000, 3000, 4000, 5000, 10000};
    EXPECT_EQ(texts(entry(open_menu(), QStringLiteral("Travel Time (speed)"))->menu()),
              numbers(values, 5000));
    choose(QStringLiteral("Travel Time (speed)"), QStringLiteral("700"));
    EXPECT_EQ(window.playField->tm_travel(), 700U);
    window.set_travel_time(1234);
    EXPECT_EQ(texts(entry(open_menu(), QStringLiteral("Travel Time (speed)"))->menu()),
              numbers(values, 0));
}

TEST_F(WindowMenuOptionsTest, a_theme_is_chosen_and_marked) {
    for (const char* name : {"Normal", "Green", "Dark"}) {
        choose(QStringLiteral("Theme"), QString::fromLatin1(name));
        const QMenu* const sub = entry(open_menu(), QStringLiteral("Theme"))->menu();
        EXPECT_EQ(texts(sub).filter(QStringLiteral("[x]")),
                  QStringList{QStringLiteral("[x] ") + QString::fromLatin1(name)});
    }
}

TEST_F(WindowMenuOptionsTest, the_font_size_is_stored) {
    EXPECT_EQ(texts(entry(open_menu(), QStringLiteral("Font-Size"))->menu()),
              numbers({10, 11, 12, 13, 14, 16, 18, 20}, 16));
    choose(QStringLiteral("Font-Size"), QStringLiteral("20"));
    EXPECT_EQ(window.playField->fontSize, 20);
    EXPECT_EQ(window.settingsNode.get<unsigned>(QStringLiteral("fontSize"), 0U), 20U);
}

TEST_F(WindowMenuOptionsTest, logging_switches_the_panel_and_is_stored) {
    std::vector<bool> told;
    window.log_toggle_listener += [&told](const bool& flag) {
        told.push_back(flag);
    };
    window.get_panel_log_view()->set_enabled(true);
    choose(QStringLiteral("System"), QStringLiteral("Logging"));
    EXPECT_FALSE(window.get_panel_log_view()->is_enabled());
    EXPECT_FALSE(
        window.settingsNode.get_pod(QStringLiteral("log"), ze::log::LogConfig()).is_enabled());
    EXPECT_TRUE(has_line("Window::on_menu_log, flag:false"));
    EXPECT_FALSE(
        entry(entry(open_menu(), QStringLiteral("System"))->menu(), QStringLiteral("Log Options"))
            ->isEnabled());
    choose(QStringLiteral("System"), QStringLiteral("Logging"));
    EXPECT_TRUE(window.get_panel_log_view()->is_enabled());
    EXPECT_TRUE(
        entry(entry(open_menu(), QStringLiteral("System"))->menu(), QStringLiteral("Log Options"))
            ->isEnabled());
    EXPECT_EQ(told, (std::vector<bool>{false, true}));
}

TEST_F(WindowMenuOptionsTest, log_options_opens_their_dialog) {
    window.get_panel_log_view()->set_enabled(true);
    choose(QStringLiteral("System"), QStringLiteral("Log Options"));
    const auto* const dialog = test::child_of<ze::qt::GDialogOption>(window);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(WindowMenuOptionsTest, the_refresh_rate_lasts_until_the_end_of_the_program) {
    EXPECT_EQ(texts(entry(open_menu(), QStringLiteral("Refresh Rate"))->menu()),
              numbers({10, 16, 20, 25, 30, 33, 40, 50, 80, 100, 150, 200, 250, 300}, 16));
    choose(QStringLiteral("Refresh Rate"), QStringLiteral("33"));
    choose(QStringLiteral("Font-Size"), QStringLiteral("18"));
    EXPECT_EQ(window.playField->timer.interval(), 33);
    EXPECT_TRUE(has_line("Window::on_delay_refresh_set, val:33"));
    window.save_state();

    test::ProbeWindow next;
    next.settingsNode = window.settingsNode;
    EXPECT_EQ(next.settingsNode.get<unsigned>(QStringLiteral("fontSize"), 16U), 18U);
    next.ini();
    EXPECT_EQ(next.playField->fontSize, 18);
    EXPECT_EQ(next.playField->timer.interval(), 16);
}

}  // namespace
