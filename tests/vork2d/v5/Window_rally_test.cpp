// A rally in the window: start and stop, paddles, hits, points, sides and speed, alone and with
// an opponent.
#include "ze/qt/GSoundEffect.h"

#include "WindowFixture.h"
#include "vork2d/v5/Window.h"
#include "vork2d/v5/game_sound.h"
#include "vork2d/v5/sounds.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using test::v5::PlayField;
namespace ORIENT2D = ze::math::ORIENT2D;

QElapsedTimer started_watch() {
    QElapsedTimer watch;
    watch.start();
    return watch;
}

class WindowRally : public test::WindowFixture {};

TEST_F(WindowRally, start_and_stop_follow_each_other_on_the_button) {
    QTest::mouseClick(window.buttonStart, Qt::LeftButton);
    EXPECT_TRUE(window.playField->is_state_PLAY());
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("stop"));
    QTest::mouseClick(window.buttonStart, Qt::LeftButton);
    EXPECT_FALSE(window.playField->is_state_PLAY());
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("start"));
}

TEST_F(WindowRally, a_click_on_the_field_moves_the_paddle_that_the_ball_flies_to) {
    const PlayField& field = *window.playField;
    QTest::mouseClick(window.playField, Qt::LeftButton, Qt::NoModifier,
                      QPoint(window.playField->width() / 2, window.playField->height() / 2 - 20));
    EXPECT_GT(field.paddleRight.pos.y, 0.0F);
    EXPECT_EQ(field.paddleLeft.pos.y, 0.0F);
}

TEST_F(WindowRally, the_mouse_drags_a_paddle_while_its_left_button_is_held) {
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

TEST_F(WindowRally, the_first_start_offline_shows_the_hint_and_starts_when_it_is_answered) {
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

TEST_F(WindowRally, the_hint_tells_how_one_person_plays_both) {
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

TEST_F(WindowRally, closing_the_hint_by_hand_counts_as_no_and_starts) {
    window.flagSeeOfflineHintAgain = true;
    window.on_start_stop();
    ASSERT_NE(open_box(), nullptr);
    QTest::keyClick(open_box(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_PLAY(); }));
    EXPECT_TRUE(has_line("OFFLINE INFO STOPP"));
}

TEST_F(WindowRally, start_while_alone_on_the_server_flips_to_the_invitation_and_back) {
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

TEST_F(WindowRally, a_start_goes_out_once_and_a_stop_twice) {
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

TEST_F(WindowRally, a_stop_goes_out_before_and_after_it_is_played_here) {
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

TEST_F(WindowRally, a_start_is_logged_twice_and_a_stop_once) {
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

TEST_F(WindowRally, the_opponents_start_and_stop_show_on_the_button) {
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

TEST_F(WindowRally, a_ping_is_answered_without_a_line) {
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

TEST_F(WindowRally, a_message_for_the_game_is_logged_when_it_comes_and_when_it_is_played) {
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

TEST_F(WindowRally, a_message_of_another_type_leaves_an_error_line) {
    for (const char* type : {"PONG", "ERROR", "ADMIN", "LOGIN"}) {
        log.expect_error("Window::on_object, xmsg, type:<<<" + std::string(type) + ">>> ?");
        window.on_object({{QStringLiteral("type"), QString::fromLatin1(type)}});
    }
}

TEST_F(WindowRally, an_object_without_a_type_is_refused) {
    log.expect_error("Window::on_object, xmsg == nullptr");
    window.on_object({});
    EXPECT_EQ(log.lines(), std::vector<std::string>{"Window::on_object, xmsg == nullptr"});
}

TEST_F(WindowRally, a_ball_out_on_the_own_side_is_the_opponents_point_and_sends_nothing) {
    connect_paired();
    window.on_confirmed_out_of_field(ORIENT2D::LEFT);
    window.send_message(QStringLiteral("end"));
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(window.opponent.countPoints, 1U);
    EXPECT_EQ(window.me.countPoints, 0U);
    EXPECT_TRUE(relay.commands().empty());
    EXPECT_TRUE(has_line_with_level("INF point for opponent"));
}

TEST_F(WindowRally, a_ball_out_on_the_other_side_is_the_own_point_and_tells_the_server) {
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

TEST_F(WindowRally, a_point_won_and_a_point_lost_sound_different) {
    window.playField->flagSound = true;
    window.on_confirmed_out_of_field(ORIENT2D::LEFT);
    window.on_confirmed_out_of_field(ORIENT2D::RIGHT);
    EXPECT_EQ(played_sounds(), (std::vector<std::string>{"Game_Over_Music_1", "Jackpot_Melody_2"}));
}

TEST_F(WindowRally, its_end_silences_the_game) {
    auto other = std::make_unique<test::v5::Window>();
    other->setup();
    other->playField->play_sound(vork2d::v5::sounds::QUIET);
    ASSERT_TRUE(vork2d::v5::gSound->isPlaying());
    other.reset();
    EXPECT_FALSE(vork2d::v5::gSound->isPlaying());
}

TEST_F(WindowRally, a_point_offline_counts_and_ends_the_rally) {
    window.on_start_stop();
    window.on_confirmed_out_of_field(ORIENT2D::RIGHT);
    EXPECT_FALSE(window.playField->is_state_PLAY());
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("start"));
    EXPECT_EQ(window.playField->textLeft, QStringLiteral("1"));
    EXPECT_EQ(window.playField->textRight, QStringLiteral("0"));
}

TEST_F(WindowRally, the_masters_ball_exit_goes_through_the_field_and_out) {
    connect_paired();
    window.playField->listenerBallExit.fire_event(ORIENT2D::RIGHT);
    ASSERT_TRUE(relay.wait_for_frames(2));
    EXPECT_EQ(relay.commands(),
              (std::vector<QString>{QStringLiteral("points"), QStringLiteral("out_of_field")}));
    EXPECT_EQ(window.me.countPoints, 1U);
    EXPECT_TRUE(has_line_with_level("WRN Window::ini, * ball out of field:RIGHT"));
    EXPECT_TRUE(has_line_with_level("WRN CONFIRMED- ball out of field:RIGHT"));
}

TEST_F(WindowRally, a_hit_of_the_master_sends_the_ball) {
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

TEST_F(WindowRally, a_hit_of_the_follower_sends_nothing) {
    connect_paired();
    relay.send_play({{QStringLiteral("cmd"), QStringLiteral("stop")}});
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window.playField->is_master(); }));
    window.playField->listenerBallHit.fire_event({});
    window.send_message(QStringLiteral("end"));
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_TRUE(relay.commands().empty());
}

TEST_F(WindowRally, a_hit_of_a_master_without_a_connection_is_an_error) {
    log.expect_error("cannot be slave and no connection!");
    window.playField->listenerBallHit.fire_event({});
}

TEST_F(WindowRally, a_paddle_message_carries_the_own_name_and_moves_the_paddle_here_too) {
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

TEST_F(WindowRally, a_paddle_message_is_logged_before_it_carries_a_name) {
    ze::log::set_log_level(ze::log::TRACE);
    window.playField->on_move_paddle({0.0F, 90.0F}, false);
    EXPECT_EQ(log.lines_with_level().front(),
              R"(TRA paddle pos:PLAY, from:'?', to:'#', game:'vork', )"
              R"(payload:'{"cmd":"setPos","object":"paddle","pos":"-380,90","side":"LEFT"}')");
}

TEST_F(WindowRally, a_side_switch_swaps_the_labels_and_tells_the_opponent) {
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

TEST_F(WindowRally, a_side_switch_during_a_rally_does_nothing) {
    window.on_start_stop();
    log.clear();
    window.on_switch_side();
    EXPECT_EQ(log.lines(), std::vector<std::string>{"Window::on_switch_side"});
    EXPECT_EQ(window.playField->side, ORIENT2D::LEFT);
}

TEST_F(WindowRally, an_orientation_that_arrives_during_a_rally_is_an_error_and_is_taken) {
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

TEST_F(WindowRally, a_speed_change_shows_for_a_second) {
    const QElapsedTimer watch = started_watch();
    window.set_travel_time(2000);
    EXPECT_EQ(window.playField->textInfo, QStringLiteral("speed:2000"));
    EXPECT_EQ(window.playField->tm_travel(), 2000U);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.playField->textInfo.isEmpty(); }));
    EXPECT_GE(watch.elapsed(), 990);
}

TEST_F(WindowRally, a_speed_change_clears_its_text_though_a_later_one_has_put_its_own) {
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

TEST_F(WindowRally, a_speed_change_while_connected_goes_out) {
    connect_paired();
    window.set_travel_time(100);
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(relay.frames[0][QStringLiteral("payload")].toObject(),
              (QJsonObject{{QStringLiteral("cmd"), QStringLiteral("travel")},
                           {QStringLiteral("msTravel"), 100}}));
    EXPECT_TRUE(has_line_with_level("DEB Window::set_travel_time, val:100"));
    EXPECT_TRUE(has_line_with_level("INF TRY TO SEND:100 msTravel"));
}

TEST_F(WindowRally, a_key_is_logged_with_the_text_that_it_types) {
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

TEST_F(WindowRally, a_null_key_event_is_refused) {
    log.expect_error("Window::send_key_event, ev == nullptr");
    window.send_key_event(nullptr);
}

}  // namespace
