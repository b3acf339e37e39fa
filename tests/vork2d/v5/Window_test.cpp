#include "vork2d/v5/Window.h"

#include "ze/net/GMessage.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/GSoundEffect.h"

#include "WindowFixture.h"
#include "vork2d/v5/game_sound.h"
#include "vork2d/v5/sounds.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using test::v5::PlayField;
namespace ORIENT2D = ze::math::ORIENT2D;

class WindowTest : public test::WindowFixture {};

QElapsedTimer started_watch() {
    QElapsedTimer watch;
    watch.start();
    return watch;
}

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

TEST_F(WindowTest, start_and_stop_follow_each_other_on_the_button) {
    QTest::mouseClick(window.buttonStart, Qt::LeftButton);
    EXPECT_TRUE(window.playField->is_state_PLAY());
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("stop"));
    QTest::mouseClick(window.buttonStart, Qt::LeftButton);
    EXPECT_FALSE(window.playField->is_state_PLAY());
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("start"));
}

TEST_F(WindowTest, a_click_on_the_field_moves_the_paddle_that_the_ball_flies_to) {
    const PlayField& field = *window.playField;
    QTest::mouseClick(window.playField, Qt::LeftButton, Qt::NoModifier,
                      QPoint(window.playField->width() / 2, window.playField->height() / 2 - 20));
    EXPECT_GT(field.paddleRight.pos.y, 0.0F);
    EXPECT_EQ(field.paddleLeft.pos.y, 0.0F);
}

TEST_F(WindowTest, the_mouse_drags_a_paddle_while_its_left_button_is_held) {
    const QPointF pos(window.playField->width() / 2.0, window.playField->height() / 2.0 - 20);
    const auto move_with = [this, &pos](Qt::MouseButtons held) {
        QMouseEvent move(QEvent::MouseMove, pos, pos, Qt::NoButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(window.playField, &move);
    };
    move_with(Qt::NoButton);
    move_with(Qt::RightButton);
    EXPECT_EQ(window.playField->paddleRight.pos.y, 0.0F);
    move_with(Qt::LeftButton);
    EXPECT_GT(window.playField->paddleRight.pos.y, 0.0F);
}

TEST_F(WindowTest, the_first_start_offline_shows_the_hint_and_starts_when_it_is_answered) {
    for (const auto button : {QMessageBox::Yes, QMessageBox::No}) {
        window.flagSeeOfflineHintAgain = true;
        window.on_start_stop();
        EXPECT_FALSE(window.playField->is_state_PLAY());
        answer(button);
        EXPECT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_PLAY(); }));
        const auto stored = ze::qt::GSettings::instance().get_window_node(window.get_object_name());
        EXPECT_EQ(
            stored.is_flag(QStringLiteral("flagSeeOfflineHintAgain"), button != QMessageBox::Yes),
            button == QMessageBox::Yes);
        EXPECT_TRUE(
            has_line(button == QMessageBox::Yes ? "OFFLINE INFO AGAIN" : "OFFLINE INFO STOPP"));
        window.on_start_stop();
    }
}

TEST_F(WindowTest, the_hint_tells_how_one_person_plays_both) {
    window.flagSeeOfflineHintAgain = true;
    window.on_start_stop();
    ASSERT_NE(open_box(), nullptr);
    EXPECT_EQ(open_box()->windowTitle(), QStringLiteral("Info offline mode"));
    EXPECT_EQ(open_box()->text(),
              QStringLiteral("Single Player Mode\n\nLeft paddle:\n- Arrow Up / Arrow Down\n"
                             "- Mouse drag on left field\n\nRight paddle:\n"
                             "- Ctrl + Arrow Up / Arrow Down\n- Mouse drag on right field\n\n"
                             "Speed:\n- Ctrl+1, ..., Ctrl+9\nPress [Space Bar] to start\n\n"
                             "See this massage after loading game again ?"));
    answer(QMessageBox::No);
}

TEST_F(WindowTest, closing_the_hint_by_hand_counts_as_no_and_starts) {
    window.flagSeeOfflineHintAgain = true;
    window.on_start_stop();
    ASSERT_NE(open_box(), nullptr);
    QTest::keyClick(open_box(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_PLAY(); }));
    EXPECT_TRUE(has_line("OFFLINE INFO STOPP"));
}

TEST_F(WindowTest, start_while_alone_on_the_server_flips_to_the_invitation_and_back) {
    connect();
    relay.frames.clear();
    window.me.name = QStringLiteral("g:Ann");
    window.on_start_stop();
    EXPECT_EQ(window.panStack->current_stacked_panel(), window.panInvitation);
    EXPECT_EQ(
        window.labelInvitation->text(),
        QStringLiteral(
            "Hello 'Ann'  !\nYou are online as 'g:Ann'\n \nWaiting for another player to join.\n\n"
            "Tell your friend to log in using the format 'group:name'.\n\nFor example:\n"
            "If your friend chooses the name 'Odo',\nthe login would be: 'g:Odo'\n\n"
            "Invite somebody to be online or press\ndisconnect button\n\n"
            "If disconnected you can control both paddles\n-Left side with arrow keys\n"
            "-Right side with Ctrl + arrow keys"));
    window.on_start_stop();
    EXPECT_EQ(window.panStack->current_stacked_panel(), window.panPlay);
    EXPECT_FALSE(window.playField->is_state_PLAY());
    window.send_message(QStringLiteral("end"));
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_TRUE(relay.commands().empty()) << "no start went out";
}

TEST_F(WindowTest, a_start_goes_out_once_and_a_stop_twice) {
    connect_paired();
    window.on_start_stop();
    window.on_start_stop();
    ASSERT_TRUE(relay.wait_for_frames(3));
    EXPECT_EQ(relay.commands(),
              (std::vector<QString>{QStringLiteral("start"), QStringLiteral("stop"),
                                    QStringLiteral("stop")}));
    EXPECT_EQ(relay.frames[0],
              (QJsonObject{{QStringLiteral("type"), QStringLiteral("PLAY")},
                           {QStringLiteral("subType"), QString()},
                           {QStringLiteral("from"), QStringLiteral("g:Ann")},
                           {QStringLiteral("to"), QStringLiteral("#")},
                           {QStringLiteral("ident"), 0},
                           {QStringLiteral("game"), QStringLiteral("vork")},
                           {QStringLiteral("payload"),
                            QJsonObject{{QStringLiteral("cmd"), QStringLiteral("start")},
                                        {QStringLiteral("orient"), QStringLiteral("LEFT")},
                                        {QStringLiteral("msTravel"), 5000}}}}));
}

TEST_F(WindowTest, a_stop_goes_out_before_and_after_it_is_played_here) {
    connect_paired();
    window.on_start_stop();
    log.clear();
    ze::log::set_log_level(ze::log::TRACE);
    window.on_start_stop();
    std::vector<std::string> order;
    for (const std::string& line : log.lines_with_level()) {
        if (line.starts_with("TRA GAbstractMessage::send") || line == "DEB STOPPED by user") {
            order.push_back(line.substr(0, line.find(',')));
        }
    }
    EXPECT_EQ(order, (std::vector<std::string>{"TRA GAbstractMessage::send", "DEB STOPPED by user",
                                               "TRA GAbstractMessage::send"}));
}

TEST_F(WindowTest, a_start_is_logged_twice_and_a_stop_once) {
    const std::string line = "DEB Window::on_start_stop";
    const auto count = [this, &line] {
        const auto lines = log.lines_with_level();
        return std::count(lines.begin(), lines.end(), line);
    };
    window.on_start_stop();
    EXPECT_EQ(count(), 2);
    log.clear();
    window.on_start_stop();
    EXPECT_EQ(count(), 1);
}

TEST_F(WindowTest, the_opponents_start_and_stop_show_on_the_button) {
    connect_paired();
    relay.send_play({{QStringLiteral("cmd"), QStringLiteral("start")},
                     {QStringLiteral("orient"), QStringLiteral("RIGHT")},
                     {QStringLiteral("msTravel"), 5000}});
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return window.buttonStart->text() == QStringLiteral("stop"); }));
    relay.send_play({{QStringLiteral("cmd"), QStringLiteral("stop")}});
    EXPECT_TRUE(
        QTest::qWaitFor([this] { return window.buttonStart->text() == QStringLiteral("start"); }));
}

TEST_F(WindowTest, a_ping_is_answered_without_a_line) {
    connect_paired();
    log.ignore("WIN ACTIVATED:");
    relay.send({{QStringLiteral("type"), QStringLiteral("PING")}});
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(relay.frames[0], (QJsonObject{{QStringLiteral("type"), QStringLiteral("PONG")},
                                            {QStringLiteral("subType"), QString()},
                                            {QStringLiteral("from"), QStringLiteral("g:Ann")},
                                            {QStringLiteral("to"), QStringLiteral("+")},
                                            {QStringLiteral("ident"), 0}}));
    EXPECT_EQ(log.lines(), std::vector<std::string>());
}

TEST_F(WindowTest, a_message_for_the_game_is_logged_when_it_comes_and_when_it_is_played) {
    const std::string text = R"(PLAY, from:'g:Ben', to:'#', game:'vork', payload:'{"cmd":"nod"}')";
    window.on_object(
        {{QStringLiteral("type"), QStringLiteral("PLAY")},
         {QStringLiteral("from"), QStringLiteral("g:Ben")},
         {QStringLiteral("to"), QStringLiteral("#")},
         {QStringLiteral("game"), QStringLiteral("vork")},
         {QStringLiteral("payload"), QJsonObject{{QStringLiteral("cmd"), QStringLiteral("nod")}}}});
    std::vector<std::string> lines = log.lines_with_level();
    lines.resize(3);
    EXPECT_EQ(lines, (std::vector<std::string>{"DEB Window::on_object, xmsg, '" + text + "'",
                                               "DEB PLAY message", "DEB " + text}));
}

TEST_F(WindowTest, a_message_of_another_type_leaves_an_error_line) {
    for (const char* type : {"PONG", "ERROR", "ADMIN", "LOGIN"}) {
        log.expect_error("Window::on_object, xmsg, type:<<<" + std::string(type) + ">>> ?");
        window.on_object({{QStringLiteral("type"), QString::fromLatin1(type)}});
    }
}

TEST_F(WindowTest, an_object_without_a_type_is_refused) {
    log.expect_error("Window::on_object, xmsg == nullptr");
    window.on_object({});
    EXPECT_EQ(log.lines(), std::vector<std::string>{"Window::on_object, xmsg == nullptr"});
}

TEST_F(WindowTest, a_ball_out_on_the_own_side_is_the_opponents_point_and_sends_nothing) {
    connect_paired();
    window.on_confirmed_out_of_field(ORIENT2D::LEFT);
    window.send_message(QStringLiteral("end"));
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(window.opponent.countPoints, 1U);
    EXPECT_EQ(window.me.countPoints, 0U);
    EXPECT_TRUE(relay.commands().empty());
    EXPECT_TRUE(has_line_with_level("INF point for opponent"));
}

TEST_F(WindowTest, a_ball_out_on_the_other_side_is_the_own_point_and_tells_the_server) {
    connect_paired();
    window.on_confirmed_out_of_field(ORIENT2D::RIGHT);
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_TRUE(has_line_with_level("INF point for me"));
    EXPECT_EQ(window.me.countPoints, 1U);
    EXPECT_EQ(relay.frames[0][QStringLiteral("to")].toString(), QStringLiteral("+"));
    EXPECT_EQ(relay.frames[0][QStringLiteral("payload")].toObject(),
              (QJsonObject{{QStringLiteral("cmd"), QStringLiteral("points")},
                           {QStringLiteral("countPointsMe"), 1},
                           {QStringLiteral("countPointsOpponent"), 0}}));
}

TEST_F(WindowTest, a_point_won_and_a_point_lost_sound_different) {
    window.playField->flagSound = true;
    window.on_confirmed_out_of_field(ORIENT2D::LEFT);
    window.on_confirmed_out_of_field(ORIENT2D::RIGHT);
    EXPECT_EQ(played_sounds(), (std::vector<std::string>{"Game_Over_Music_1", "Jackpot_Melody_2"}));
}

TEST_F(WindowTest, its_end_silences_the_game) {
    auto other = std::make_unique<test::v5::Window>();
    other->setup();
    other->playField->play_sound(vork2d::v5::sounds::QUIET);
    ASSERT_TRUE(vork2d::v5::gSound->isPlaying());
    other.reset();
    EXPECT_FALSE(vork2d::v5::gSound->isPlaying());
}

TEST_F(WindowTest, a_point_offline_counts_and_ends_the_rally) {
    window.on_start_stop();
    window.on_confirmed_out_of_field(ORIENT2D::RIGHT);
    EXPECT_FALSE(window.playField->is_state_PLAY());
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("start"));
    EXPECT_EQ(window.playField->textLeft, QStringLiteral("1"));
    EXPECT_EQ(window.playField->textRight, QStringLiteral("0"));
}

TEST_F(WindowTest, the_masters_ball_exit_goes_through_the_field_and_out) {
    connect_paired();
    window.playField->listenerBallExit.fire_event(ORIENT2D::RIGHT);
    ASSERT_TRUE(relay.wait_for_frames(2));
    EXPECT_EQ(relay.commands(),
              (std::vector<QString>{QStringLiteral("points"), QStringLiteral("out_of_field")}));
    EXPECT_EQ(window.me.countPoints, 1U);
    EXPECT_TRUE(has_line_with_level("WRN Window::ini, * ball out of field:RIGHT"));
    EXPECT_TRUE(has_line_with_level("WRN CONFIRMED- ball out of field:RIGHT"));
}

TEST_F(WindowTest, a_hit_of_the_master_sends_the_ball) {
    connect_paired();
    window.playField->listenerBallHit.fire_event({});
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(relay.frames[0][QStringLiteral("payload")].toObject(),
              (QJsonObject{{QStringLiteral("cmd"), QStringLiteral("setBall")},
                           {QStringLiteral("pos"), QStringLiteral("0,0")},
                           {QStringLiteral("dir"), QStringLiteral("0.970143,0.242536")},
                           {QStringLiteral("velocity"), 160}}));
    EXPECT_EQ(log.lines_with_level().front(), "INF BALL:" + window.playField->ball.to_string());
}

TEST_F(WindowTest, a_hit_of_the_follower_sends_nothing) {
    connect_paired();
    relay.send_play({{QStringLiteral("cmd"), QStringLiteral("stop")}});
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window.playField->is_master(); }));
    window.playField->listenerBallHit.fire_event({});
    window.send_message(QStringLiteral("end"));
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_TRUE(relay.commands().empty());
}

TEST_F(WindowTest, a_hit_of_a_master_without_a_connection_is_an_error) {
    log.expect_error("cannot be slave and no connection!");
    window.playField->listenerBallHit.fire_event({});
}

TEST_F(WindowTest, a_paddle_message_carries_the_own_name_and_moves_the_paddle_here_too) {
    connect_paired();
    window.playField->on_move_paddle({0.0F, 90.0F}, false);
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(relay.frames[0][QStringLiteral("from")].toString(), QStringLiteral("g:Ann"));
    EXPECT_EQ(relay.frames[0][QStringLiteral("payload")].toObject(),
              (QJsonObject{{QStringLiteral("cmd"), QStringLiteral("setPos")},
                           {QStringLiteral("pos"), QStringLiteral("-380,90")},
                           {QStringLiteral("object"), QStringLiteral("paddle")},
                           {QStringLiteral("side"), QStringLiteral("LEFT")}}));
    EXPECT_EQ(window.playField->paddleLeft.pos.y, 90.0F);
}

TEST_F(WindowTest, a_paddle_message_is_logged_before_it_carries_a_name) {
    ze::log::set_log_level(ze::log::TRACE);
    window.playField->on_move_paddle({0.0F, 90.0F}, false);
    EXPECT_EQ(log.lines_with_level().front(),
              R"(TRA paddle pos:PLAY, from:'?', to:'#', game:'vork', )"
              R"(payload:'{"cmd":"setPos","object":"paddle","pos":"-380,90","side":"LEFT"}')");
}

TEST_F(WindowTest, a_side_switch_swaps_the_labels_and_tells_the_opponent) {
    connect_paired();
    window.on_switch_side();
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(window.playField->side, ORIENT2D::RIGHT);
    EXPECT_EQ(window.me.orient, ORIENT2D::RIGHT);
    EXPECT_EQ(window.opponent.orient, ORIENT2D::LEFT);
    EXPECT_EQ(window.playField->textRight, QStringLiteral("Ann:0"));
    EXPECT_EQ(window.playField->textLeft, QStringLiteral("Ben:0"));
    EXPECT_EQ(relay.frames[0][QStringLiteral("payload")].toObject(),
              (QJsonObject{{QStringLiteral("cmd"), QStringLiteral("orientation")},
                           {QStringLiteral("orient"), QStringLiteral("RIGHT")}}));
}

TEST_F(WindowTest, a_side_switch_during_a_rally_does_nothing) {
    window.on_start_stop();
    log.clear();
    window.on_switch_side();
    EXPECT_EQ(log.lines(), std::vector<std::string>{"Window::on_switch_side"});
    EXPECT_EQ(window.playField->side, ORIENT2D::LEFT);
}

TEST_F(WindowTest, an_orientation_that_arrives_during_a_rally_is_an_error_and_is_taken) {
    connect_paired();
    window.on_start_stop();
    log.expect_error("SHOULD NEVER SWAP DURING RUN!");
    relay.send_play({{QStringLiteral("cmd"), QStringLiteral("orientation")},
                     {QStringLiteral("orient"), QStringLiteral("LEFT")}});
    ASSERT_TRUE(wait_for_line("SHOULD NEVER SWAP DURING RUN!"));
    EXPECT_EQ(window.playField->side, ORIENT2D::RIGHT);
    EXPECT_TRUE(
        has_line_with_level("INF orient changed, me: {g:Ann, RIGHT, countPoints:0}, "
                            "opponent{g:Ben, LEFT, countPoints:0}"));
}

TEST_F(WindowTest, a_speed_change_shows_for_a_second) {
    const QElapsedTimer watch = started_watch();
    window.set_travel_time(2000);
    EXPECT_EQ(window.playField->textInfo, QStringLiteral("speed:2000"));
    EXPECT_EQ(window.playField->tm_travel(), 2000U);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.playField->textInfo.isEmpty(); }));
    EXPECT_GE(watch.elapsed(), 990);
}

TEST_F(WindowTest, a_speed_change_clears_its_text_though_a_later_one_has_put_its_own) {
    window.set_travel_time(2000);
    QTest::qWait(100);
    window.set_travel_time(1000);
    EXPECT_EQ(window.playField->textInfo, QStringLiteral("speed:1000"));
    // Timers fire in the order of their times, however busy the machine is: this one stands between
    // the end of the first change's second and that of the second change's.
    std::optional<bool> isCleared;
    QTimer::singleShot(990, &window, [this, &isCleared] {
        QMetaObject::invokeMethod(
            &window, [this, &isCleared] { isCleared = window.playField->textInfo.isEmpty(); },
            Qt::QueuedConnection);
    });
    ASSERT_TRUE(QTest::qWaitFor([&isCleared] { return isCleared.has_value(); }));
    EXPECT_TRUE(*isCleared);
}

TEST_F(WindowTest, a_speed_change_while_connected_goes_out) {
    connect_paired();
    window.set_travel_time(100);
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(relay.frames[0][QStringLiteral("payload")].toObject(),
              (QJsonObject{{QStringLiteral("cmd"), QStringLiteral("travel")},
                           {QStringLiteral("msTravel"), 100}}));
    EXPECT_TRUE(has_line_with_level("DEB Window::set_travel_time, val:100"));
    EXPECT_TRUE(has_line_with_level("INF TRY TO SEND:100 msTravel"));
}

TEST_F(WindowTest, a_key_is_logged_with_the_text_that_it_types) {
    window.send_key_event(
        QKeyEvent(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier, QStringLiteral("u")));
    window.send_key_event(QKeyEvent(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier));
    EXPECT_EQ(log.lines_with_level(),
              (std::vector<std::string>{
                  "DEB Window::send_key_pressed, key press:u",
                  "DEB PlayField::on_key_sequence, <<<Up>>>, PRESSED, LOCAL",
                  "DEB Window::send_key_pressed, key press:",
                  "DEB PlayField::on_key_sequence, <<<Down>>>, PRESSED, LOCAL",
              }));
}

TEST_F(WindowTest, a_null_key_event_is_refused) {
    log.expect_error("Window::send_key_event, ev == nullptr");
    window.send_key_event(nullptr);
}

TEST_F(WindowTest, a_chat_line_goes_out_and_shows_here) {
    connect_paired();
    window.editChat->setText(QStringLiteral("hello there"));
    QTest::mouseClick(window.buttonSend, Qt::LeftButton);
    QTest::keyClick(window.editChat, Qt::Key_Return);
    ASSERT_TRUE(relay.wait_for_frames(2));
    EXPECT_EQ(relay.frames[1], (QJsonObject{{QStringLiteral("type"), QStringLiteral("CHAT")},
                                            {QStringLiteral("subType"), QStringLiteral("text")},
                                            {QStringLiteral("from"), QStringLiteral("g:Ann")},
                                            {QStringLiteral("to"), QStringLiteral("#")},
                                            {QStringLiteral("ident"), 0},
                                            {QStringLiteral("text"), QStringLiteral("hello there")},
                                            {QStringLiteral("extraData"), QString()}}));
    EXPECT_EQ(window.listChat->string_at(window.listChat->model()->rowCount() - 1),
              QStringLiteral("me:hello there"));
    EXPECT_EQ(window.editChat->text(), QStringLiteral("hello there")) << "the input keeps its text";
}

TEST_F(WindowTest, an_empty_chat_line_sends_nothing) {
    connect_paired();
    const int rows = window.listChat->model()->rowCount();
    QTest::mouseClick(window.buttonSend, Qt::LeftButton);
    QTest::keyClick(window.editChat, Qt::Key_Return);
    EXPECT_EQ(window.listChat->model()->rowCount(), rows);
}

TEST_F(WindowTest, a_chat_line_without_a_connection_is_an_error) {
    log.expect_error("Window::send_message, webSocket not valid !");
    window.send_message(QStringLiteral("x"));
    EXPECT_EQ(window.listChat->model()->rowCount(), 0);
}

TEST_F(WindowTest, the_chat_keeps_the_newest_lines_and_cuts_what_nobody_could_have_typed) {
    ze::net::GMessage message;
    message.from = QStringLiteral("g:Ben");
    for (int i = 1; i <= 510; ++i) {
        message.text = QString::number(i);
        window.on_XMessage(message);
    }
    EXPECT_EQ(window.listChat->model()->rowCount(), 500);
    EXPECT_EQ(window.listChat->string_at(0), QStringLiteral("g:Ben:11"));
    EXPECT_EQ(window.listChat->string_at(499), QStringLiteral("g:Ben:510"));
    const QString typed(window.editChat->maxLength(), QLatin1Char('x'));
    const QString endless(1'000'000, QLatin1Char('x'));
    message.text = typed;
    window.on_XMessage(message);
    EXPECT_EQ(window.listChat->string_at(499), QStringLiteral("g:Ben:") + typed);
    message.from = message.text = endless;
    window.on_XMessage(message);
    EXPECT_EQ(window.listChat->string_at(499), typed + QLatin1Char(':') + typed);
}

TEST_F(WindowTest, a_full_line_of_chat_shows_whole) {
    connect_paired();
    const QString typed(window.editChat->maxLength(), QLatin1Char('x'));
    window.send_message(typed);
    EXPECT_EQ(window.listChat->string_at(window.listChat->model()->rowCount() - 1),
              QStringLiteral("me:") + typed);
}

TEST_F(WindowTest, the_chat_shows_its_newest_line) {
    window.panChat->setVisible(true);
    ze::net::GMessage message;
    for (int i = 0; i < 100; ++i) {
        message.text = QString::number(i);
        window.on_XMessage(message);
    }
    QCoreApplication::processEvents();
    const QModelIndex last = window.listChat->model()->index(99, 0);
    EXPECT_TRUE(window.listChat->viewport()->rect().intersects(window.listChat->visualRect(last)));
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
