// The window itself: its parts, its settings, its looks, and what the connection lets it do.
#include "vork2d/v5/Window.h"

#include "ze/qt/GPanelLogView.h"

#include "WindowFixture.h"

#include <QPushButton>
#include <QSplitter>

#include <algorithm>
#include <string>
#include <vector>

namespace {

class WindowTest : public test::WindowFixture {};

TEST_F(WindowTest, starts_offline_with_the_field_in_front) {
    EXPECT_EQ(window.windowTitle(), QStringLiteral("vork2D/v5"));
    EXPECT_EQ(window.get_object_name(), QStringLiteral("WinChat2_0"));
    EXPECT_EQ(window.panStack->current_stacked_panel(), window.panPlay);
    EXPECT_EQ(window.editStatus->text(), QStringLiteral("0"));
    EXPECT_FALSE(window.panChat->isVisible());
    EXPECT_FALSE(window.editChat->isEnabled());
    EXPECT_FALSE(window.buttonSend->isEnabled());
    EXPECT_EQ(window.playField->timer.interval(), 16);
    EXPECT_EQ(window.labelInvitation->text(), QStringLiteral("You are online 'Odo'\n"));
}

TEST_F(WindowTest, its_field_has_the_size_that_the_rules_name) {
    EXPECT_EQ(window.playField->get_view_size(),
              ze::math::Size(vork2d::v5::rules::FIELD_WIDTH, vork2d::v5::rules::FIELD_HEIGHT));
}

TEST_F(WindowTest, the_field_stays_the_largest_beside_chat_and_log) {
    for (const QSize size : {QSize(420, 500), QSize(800, 600), QSize(1400, 900)}) {
        window.resize(size);
        window.panChat->set_visible(true);
        window.get_panel_log_view()->set_enabled(true);
        QCoreApplication::processEvents();
        EXPECT_GT(window.panStack->height(), window.panChat->height()) << size.height();
        EXPECT_GT(window.panStack->height(), window.get_panel_log_view()->height())
            << size.height();
        EXPECT_GT(window.panStack->height(), size.height() * 2 / 5) << size.height();
    }
}

TEST_F(WindowTest, its_row_of_buttons_tells_what_they_do) {
    QStringList tips;
    for (const auto* const button : window.panButtons->findChildren<QPushButton*>()) {
        tips << button->toolTip();
    }
    EXPECT_EQ(tips, (QStringList{QStringLiteral("Start / Stop game\nPC: Space Key !"),
                                 QStringLiteral("Options"), QStringLiteral("Clears Log Panel"),
                                 QStringLiteral("copy to clipboard"),
                                 QStringLiteral("Creates a Debug Line"),
                                 QStringLiteral("Toggle Fullscreen"), QString()}));
    EXPECT_EQ(window.panButtons->objectName(), QStringLiteral("buttons"));
}

TEST_F(WindowTest, its_fullscreen_button_fills_the_screen_and_gives_it_back) {
    const auto buttons = window.panButtons->findChildren<QPushButton*>();
    const auto button = std::find_if(buttons.begin(), buttons.end(), [](const QPushButton* b) {
        return b->toolTip() == QStringLiteral("Toggle Fullscreen");
    });
    ASSERT_NE(button, buttons.end());
    QTest::mouseClick(*button, Qt::LeftButton);
    EXPECT_TRUE(window.isFullScreen());
    QTest::mouseClick(*button, Qt::LeftButton);
    EXPECT_FALSE(window.isFullScreen());
}

TEST_F(WindowTest, its_splitter_holds_field_chat_and_log_and_lets_none_collapse) {
    const auto* const splitter = qobject_cast<QSplitter*>(window.panStack->parentWidget());
    ASSERT_NE(splitter, nullptr);
    EXPECT_EQ(splitter->orientation(), Qt::Vertical);
    EXPECT_FALSE(splitter->childrenCollapsible());
    EXPECT_EQ(splitter->count(), 3);
    EXPECT_EQ(splitter->indexOf(window.panStack), 0);
    EXPECT_EQ(splitter->indexOf(window.panChat), 1);
    EXPECT_EQ(window.playField->minimumHeight(), 100);
    EXPECT_EQ(window.listChat->minimumHeight(), 50);
}

TEST_F(WindowTest, its_fields_for_text_say_what_they_are_for) {
    EXPECT_TRUE(window.editStatus->isReadOnly());
    EXPECT_EQ(window.editStatus->maximumWidth(), 20);
    EXPECT_EQ(window.editChat->placeholderText(), QStringLiteral("text..."));
}

TEST_F(WindowTest, reads_its_settings_at_the_start) {
    test::ProbeWindow other;
    other.settingsNode.set(QStringLiteral("fontSize"), 20U);
    other.settingsNode.set(QStringLiteral("typeURL"), 0);
    for (const char* key : {"sound", "flagSeeOfflineHintAgain"}) {
        other.settingsNode.set_flag(QString::fromLatin1(key), false);
    }
    other.settingsNode.set_flag(QStringLiteral("chatPanel"), true);
    other.ini();
    EXPECT_EQ(other.playField->fontSize, 20);
    EXPECT_EQ(other.typeUrl, 0);
    EXPECT_FALSE(other.playField->flagSound);
    EXPECT_FALSE(other.flagSeeOfflineHintAgain);
    EXPECT_FALSE(other.panChat->isHidden());
}

TEST_F(WindowTest, a_stored_font_size_that_shows_no_text_gives_way_to_the_default) {
    for (const unsigned stored : {0U, 101U, 4294967295U}) {
        test::ProbeWindow other;
        other.settingsNode.set(QStringLiteral("fontSize"), stored);
        log.clear();
        other.ini();
        EXPECT_EQ(other.playField->fontSize, 16) << stored;
        EXPECT_TRUE(has_line_with_level("WRN Window::ini, fontSize " + std::to_string(stored) +
                                        " is out of range"));
    }
    for (const unsigned stored : {1U, 100U}) {
        test::ProbeWindow other;
        other.settingsNode.set(QStringLiteral("fontSize"), stored);
        other.ini();
        EXPECT_EQ(other.playField->fontSize, static_cast<int>(stored));
    }
}

TEST_F(WindowTest, has_a_default_for_every_setting) {
    test::ProbeWindow other;
    other.ini();
    EXPECT_EQ(other.playField->fontSize, 16);
    EXPECT_EQ(other.typeUrl, 2);
    EXPECT_TRUE(other.playField->flagSound);
    EXPECT_TRUE(other.flagSeeOfflineHintAgain);
    EXPECT_TRUE(other.panChat->isHidden());
}

TEST_F(WindowTest, an_empty_user_gets_the_standing_name) {
    test::v5::Window other;
    other.setup();
    EXPECT_EQ(other.user, QStringLiteral("PGROUP:Ebbe"));
}

/// Counts the paint events of all widgets.
class PaintCount : public QObject {
public:
    PaintCount() { qApp->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int count = 0;
};

TEST_F(WindowTest, while_nobody_plays_the_frame_timer_paints_nothing) {
    int ticks = 0;
    window.playField->listenerFps += [&ticks](unsigned) {
        ++ticks;
    };
    const auto wait_for_ticks = [&ticks](int count) {
        for (const int end = ticks + count; ticks < end;) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    };
    wait_for_ticks(20);  // what the show itself still had to paint
    const PaintCount paints;
    wait_for_ticks(30);
    EXPECT_EQ(paints.count, 0);
}

TEST_F(WindowTest, a_touch_gesture_reaches_the_windows_that_live) {
    {
        test::v5::Window gone;
        gone.setup();
    }
    log.clear();
    ze::log::set_log_level(ze::log::TRACE);
    ze::qt::gApp->delta_listener.fire_event(QPointF(0, 5));
    EXPECT_EQ(log.lines().size(), 2U) << "those of the one window";
}

TEST_F(WindowTest, a_touch_gesture_only_logs) {
    ze::log::set_log_level(ze::log::TRACE);
    window.on_touch_delta(QPointF(0, 5));
    window.on_touch_delta(QPointF(1, 5));
    EXPECT_EQ(log.lines(),
              (std::vector<std::string>{
                  "Window::on_touch_delta, ptDelta:0.000000,5.000000",
                  "l:<<<PLAY, from:'g:Ann', to:'#', game:'vork', "
                  "payload:'{\"cmd\":\"key\",\"str\":\"Left\",\"val\":16777234}'>>>",
                  "Window::on_touch_delta, ptDelta:1.000000,5.000000",
                  "l:<<<PLAY, from:'g:Ann', to:'#', game:'vork', "
                  "payload:'{\"cmd\":\"key\",\"str\":\"Right\",\"val\":16777236}'>>>"}));
}

TEST_F(WindowTest, the_field_is_grey_while_the_window_is_inactive) {
    window.activation_listener.fire_event(false);
    EXPECT_EQ(window.playField->colorBackground, QColor(Qt::darkGray));
    window.activation_listener.fire_event(true);
    EXPECT_EQ(window.playField->colorBackground, QColor(Qt::black));
    EXPECT_EQ(log.lines(), (std::vector<std::string>{"WIN ACTIVATED:false", "WIN ACTIVATED:true"}));
}

TEST_F(WindowTest, each_theme_has_its_colour) {
    const std::vector<std::pair<std::string, QColor>> themes = {
        {"Window, theme NORMAL", Qt::green},
        {"Window, theme DARK", QColor(Qt::green).darker(200)},
        {"Window, theme GREEN", Qt::darkBlue}};
    for (unsigned theme = 0; theme < themes.size(); ++theme) {
        window.on_change_theme(theme);
        EXPECT_EQ(log.take(), std::vector<std::string>{themes[theme].first});
        EXPECT_EQ(window.colorTheme, themes[theme].second);
    }
    window.on_change_theme(7);
    EXPECT_EQ(window.colorTheme, QColor(Qt::darkBlue));
}

TEST_F(WindowTest, help_tells_the_frameworks_version) {
    window.on_help();
    ASSERT_NE(open_box(), nullptr);
    EXPECT_EQ(open_box()->windowTitle(), QStringLiteral("About Vork2D"));
    EXPECT_TRUE(open_box()->text().startsWith(
        QStringLiteral("VORK2D - version 3\nbased on\nZEK/TOVA - v 5.")));
    answer(QMessageBox::Ok);
}

struct StateRow {
    unsigned state;
    bool start;
    bool chat;
    QString status;
};

TEST_F(WindowTest, the_controls_follow_the_bits) {
    using namespace test::v5::PLAY_STATE;
    const std::vector<StateRow> rows = {
        {0, true, false, QStringLiteral("0")},
        {CONNECTED1 | CONNECTED2, true, true, QStringLiteral("2")},
        {CONNECTED1 | CONNECTED2 | PLAY, true, true, QStringLiteral("2")},
    };
    for (const StateRow& row : rows) {
        window.playField->state = row.state;
        window.on_play_state_changed();
        EXPECT_EQ(window.buttonStart->isEnabled(), row.start) << row.state;
        EXPECT_EQ(window.editChat->isEnabled(), row.chat) << row.state;
        EXPECT_EQ(window.buttonSend->isEnabled(), row.chat) << row.state;
        EXPECT_EQ(window.editStatus->text(), row.status) << row.state;
    }
}

TEST_F(WindowTest, alone_on_the_server_the_start_button_is_off_and_the_dialog_waits) {
    window.me.countPoints = 3;
    window.opponent.name = QStringLiteral("g:Ben");
    window.playField->state = test::v5::PLAY_STATE::CONNECTED1;
    window.on_play_state_changed();
    EXPECT_FALSE(window.buttonStart->isEnabled());
    EXPECT_FALSE(window.editChat->isEnabled());
    EXPECT_FALSE(window.buttonSend->isEnabled());
    EXPECT_EQ(window.editStatus->text(), QStringLiteral("1"));
    EXPECT_EQ(window.me.countPoints, 0U);
    EXPECT_EQ(window.opponent.name, QString());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window.diaConn.isNull(); }));
    EXPECT_EQ(window.diaConn->panStack->current_stacked_panel(), window.diaConn->panWaiting);
}

TEST_F(WindowTest, no_dialog_waits_for_a_friend_who_came_meanwhile_or_for_a_relay_that_went) {
    using namespace test::v5::PLAY_STATE;
    for (const unsigned meanwhile : {CONNECTED1 | CONNECTED2, 0U}) {
        window.playField->state = CONNECTED1;
        window.on_play_state_changed();
        window.playField->state = meanwhile;
        QCoreApplication::processEvents();
        EXPECT_TRUE(window.diaConn.isNull()) << meanwhile;
    }
    EXPECT_FALSE(has_line("Window::on_dialog_already_connected"));
}

TEST_F(WindowTest, the_second_bit_alone_is_odd) {
    window.playField->state = test::v5::PLAY_STATE::CONNECTED2;
    window.on_play_state_changed();
    EXPECT_EQ(log.lines_with_level(),
              (std::vector<std::string>{"INF STATE CHANGED, states {CONNECTED2}",
                                        "DEB CONNECTED2 only ???"}));
    EXPECT_TRUE(window.editChat->isEnabled());
    EXPECT_TRUE(window.buttonSend->isEnabled());
}

}  // namespace
