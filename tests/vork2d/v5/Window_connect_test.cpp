#include "ze/net/GMessage.h"
#include "ze/qt/components/GButtonGroup.h"
#include "ze/qt/components/GRadioButton.h"

#include "WindowFixture.h"
#include "vork2d/servers.h"

#include <QSslError>
#include <QTcpServer>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
using test::v5::Window;

class WindowConnectTest : public test::WindowFixture {
protected:
    [[nodiscard]] bool wait_for_dialog() {
        return QTest::qWaitFor([this] { return !window.diaConn.isNull(); });
    }
    [[nodiscard]] bool wait_for_no_dialog() {
        return QTest::qWaitFor([this] { return window.diaConn.isNull(); });
    }
    void switch_side_and_disconnect() {
        connect_paired();
        window.on_switch_side();
        ASSERT_TRUE(relay.wait_for_frames(1));
        disconnect();
    }
    void disconnect() {
        window.disconnect();
        ASSERT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_offline(); }));
        relay.frames.clear();
    }
    /// A relay's "join" of the second player.
    void send_join() {
        relay.send_chat(QStringLiteral("join"), QStringLiteral("g:Ben"), QStringLiteral("is here"));
    }
    [[nodiscard]] QString last_chat_line() const {
        return window.listChat->string_at(window.listChat->model()->rowCount() - 1);
    }
};

TEST_F(WindowConnectTest, a_login_is_split_at_its_colons) {
    EXPECT_EQ(Window::get_group(QStringLiteral("a:b:c")), QStringLiteral("a"));
    EXPECT_EQ(Window::get_pure_user(QStringLiteral("a:b:c")), QStringLiteral("b"));
    EXPECT_EQ(Window::get_pure_user(QStringLiteral(":b")), QStringLiteral("b"));
    EXPECT_EQ(Window::get_group(QStringLiteral(":b")), QString());
}

TEST_F(WindowConnectTest, a_login_without_a_colon_is_taken_whole_with_an_error) {
    log.expect_error("Window::get_group, group:user ???");
    log.expect_error("Window::get_pure_user, group:user ???");
    EXPECT_EQ(Window::get_group(QStringLiteral("ab")), QStringLiteral("ab"));
    EXPECT_EQ(Window::get_pure_user(QStringLiteral("ab")), QStringLiteral("ab"));
}

TEST_F(WindowConnectTest, the_addresses_are_those_of_the_two_servers) {
    EXPECT_EQ(window.urlDevelopment, QStringLiteral("wss://127.0.0.1:8888/ws/chat?sessid=play"));
    EXPECT_EQ(window.urlServer, QStringLiteral("wss://play.vork2d.example/ws/chat?sessid=play"));
}

TEST_F(WindowConnectTest, the_server_key_takes_the_place_of_the_default_server) {
    ze::qt::GApp::argv.set(QStringLiteral("server"), QStringLiteral("friend.example:9000"));
    EXPECT_EQ(vork2d::servers::default_name(), QStringLiteral("friend.example:9000"));
    EXPECT_EQ(Window().urlServer, QStringLiteral("wss://friend.example:9000/ws/chat?sessid=play"));
    ze::qt::GApp::argv.set(QStringLiteral("server"), QStringLiteral("10.0.0.7"));
    EXPECT_EQ(Window().urlServer, QStringLiteral("wss://10.0.0.7/ws/chat?sessid=play"));
    ze::qt::GApp::argv.set(QStringLiteral("server"), QVariant());
}

TEST_F(WindowConnectTest, a_server_key_that_is_no_host_is_refused) {
    for (const char* text : {"a b", "host:99999999", "host:0", "user@host", "@host", "::1",
                             "http://x", "host/path", "host:8888:1", ""}) {
        ze::qt::GApp::argv.set(QStringLiteral("server"), QString::fromLatin1(text));
        log.expect_error("servers::default_url, '" + std::string(text) +
                         "' is no host or host:port");
        EXPECT_EQ(vork2d::servers::default_url(), QUrl()) << text;
        EXPECT_EQ(vork2d::servers::default_name(), QString::fromLatin1(text));
        EXPECT_EQ(Window().urlServer, QString()) << "and the error line comes once";
    }
    ze::qt::GApp::argv.set(QStringLiteral("server"), QVariant());
}

TEST_F(WindowConnectTest, a_server_key_without_a_value_is_refused) {
    ze::qt::GApp::argv.set_flag(QStringLiteral("server"), true);
    log.expect_error("servers::default_url, '' is no host or host:port");
    EXPECT_EQ(vork2d::servers::default_url(), QUrl());
    ze::qt::GApp::argv.set(QStringLiteral("server"), QVariant());
}

TEST_F(WindowConnectTest, without_a_usable_server_no_way_of_connecting_opens_the_socket) {
    window.urlServer.clear();
    window.host = QStringLiteral("::1");
    log.expect_error("Window::open, '::1' is no server, not connecting");
    window.try_connect_via_cmd();
    window.host = QStringLiteral("localhost");
    log.expect_error("Window::open, 'localhost' is no server, not connecting");
    window.try_connect_via_cmd();
    EXPECT_EQ(window.webSocket.state(), QAbstractSocket::UnconnectedState);
    window.host = QStringLiteral("play.vork2d.example");
    window.on_dialog_connect();
    log.expect_error("Window::open, 'play.vork2d.example' is no server, not connecting");
    window.try_connect();
    EXPECT_FALSE(has_line("after try open"));
    EXPECT_EQ(window.webSocket.state(), QAbstractSocket::UnconnectedState);
}

TEST_F(WindowConnectTest, a_default_server_on_this_machine_is_not_the_development_relay) {
    const std::pair<const char*, const char*> rows[] = {
        {"localhost", "localhost:443"}, {"LocalHost", "localhost:443"},
        {"127.0.0.1", "127.0.0.1:443"}, {"localhost:9000", "localhost:9000"},
        {"127.0.0.2", "127.0.0.2"},     {"[::1]", "[::1]"}};
    for (const auto& [text, name] : rows) {
        ze::qt::GApp::argv.set(QStringLiteral("server"), QString::fromLatin1(text));
        EXPECT_EQ(vork2d::servers::default_name(), QString::fromLatin1(name)) << text;
        window.host = vork2d::servers::default_name();
        EXPECT_FALSE(window.is_local_host()) << text;
    }
    ze::qt::GApp::argv.set(QStringLiteral("server"), QStringLiteral("localhost"));
    EXPECT_EQ(Window().urlServer, QStringLiteral("wss://localhost/ws/chat?sessid=play"));
    window.host = vork2d::servers::default_name();
    window.on_dialog_connect();
    EXPECT_EQ(window.diaConn->radioDevelopment->text(), QStringLiteral("localhost"));
    EXPECT_EQ(window.diaConn->radioServer->text(), QStringLiteral("localhost:443"));
    EXPECT_TRUE(window.diaConn->radioServer->isChecked()) << "what --login would take";
    ze::qt::GApp::argv.set(QStringLiteral("server"), QVariant());
}

TEST_F(WindowConnectTest, post_after_ini_stores_and_connects_only_with_the_flag) {
    window.urlDevelopment = relay.address();
    window.post_after_ini(QStringLiteral("g:Cleo"), QStringLiteral("pass"),
                          QStringLiteral("localhost"), false);
    EXPECT_EQ(window.user, QStringLiteral("g:Cleo"));
    EXPECT_EQ(log.take(), std::vector<std::string>());
    window.post_after_ini(QStringLiteral("g:Cleo"), QStringLiteral("pass"),
                          QStringLiteral("localhost"), true);
    ASSERT_TRUE(relay.wait_for_frames(1));
    const auto lines = log.lines();
    ASSERT_GE(lines.size(), 2U);
    EXPECT_EQ(lines[0], "Window::post_after_ini - flagStartDirect set, try to login ...");
    EXPECT_EQ(lines[1], "Window::try_connect_via_cmd 'localhost'");
}

TEST_F(WindowConnectTest, connecting_logs_in_and_stores_the_password) {
    connect();
    EXPECT_EQ(relay.frames[0], (QJsonObject{{QStringLiteral("type"), QStringLiteral("LOGIN")},
                                            {QStringLiteral("subType"), QStringLiteral("login")},
                                            {QStringLiteral("from"), QStringLiteral("g:Ann")},
                                            {QStringLiteral("to"), QStringLiteral("+")},
                                            {QStringLiteral("ident"), 0},
                                            {QStringLiteral("pw"), QStringLiteral("secret")}}));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("g:Ann"));
    const auto stored = ze::qt::GSettings::instance().get_window_node(window.get_object_name());
    EXPECT_EQ(stored.get<QString>(QStringLiteral("pw"), QString()), QStringLiteral("secret"));
    EXPECT_TRUE(window.playField->is_state_CONNECTED1());
    EXPECT_TRUE(window.buttonSend->isEnabled());
    EXPECT_EQ(window.editStatus->text(), QStringLiteral("1"));
}

TEST_F(WindowConnectTest, the_status_field_is_green_while_connected) {
    const QColor shades[] = {Qt::green, Qt::darkGreen, Qt::darkGreen};
    for (unsigned theme = 0; theme < std::size(shades); ++theme) {
        window.set_theme(theme, 14);
        connect();
        EXPECT_EQ(window.editStatus->palette().color(QPalette::Base), shades[theme]) << theme;
        window.disconnect();
        ASSERT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_offline(); }));
        EXPECT_EQ(window.editStatus->palette().color(QPalette::Base), QColor(Qt::transparent));
        relay.frames.clear();
    }
}

TEST_F(WindowConnectTest, a_certificate_that_nobody_vouches_for_leaves_a_trace_line) {
    ze::log::set_log_level(ze::log::TRACE);
    window.webSocket.listenerSSL.fire_event({QSslError(), QSslError()});
    EXPECT_EQ(log.lines_with_level(), std::vector<std::string>{"TRA SSL Errors: 2"});
}

TEST_F(WindowConnectTest, the_second_to_arrive_finds_its_opponent_in_the_list) {
    connect();
    relay.send_chat(QStringLiteral("welcome"), QStringLiteral("relay"), QStringLiteral("hello"),
                    QStringLiteral("g:Ben, g:Ann"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_2_players(); }));
    EXPECT_EQ(window.opponent.name, QStringLiteral("g:Ben"));
    EXPECT_EQ(window.opponent.orient, ORIENT2D::RIGHT);
    EXPECT_EQ(window.editStatus->text(), QStringLiteral("2"));
    EXPECT_EQ(window.playField->textRight, QStringLiteral("Ben:0"));
    EXPECT_EQ(last_chat_line(), QStringLiteral("relay:hello"));
    EXPECT_TRUE(has_line("WELCOME: 'g:Ben, g:Ann'"));
    EXPECT_TRUE(has_line_with_level(
        "INF me: {g:Ann, LEFT, countPoints:0}, opponent{g:Ben, RIGHT, countPoints:0}"));
}

TEST_F(WindowConnectTest, several_other_names_count_as_alone) {
    connect();
    relay.send_chat(QStringLiteral("welcome"), QStringLiteral("relay"), QString(),
                    QStringLiteral("g:Ann, g:Ben, g:Cleo"));
    ASSERT_TRUE(wait_for_line("USER: 'g:Ann'"));
    EXPECT_TRUE(has_line_with_level("INF USER: 'g:Ann'"));
    EXPECT_FALSE(window.playField->is_state_CONNECTED2());
}

TEST_F(WindowConnectTest, the_first_to_arrive_waits_in_a_dialog_that_opens_by_itself) {
    connect();
    relay.send_chat(QStringLiteral("welcome"), QStringLiteral("relay"), QString(),
                    QStringLiteral("g:Ann"));
    ASSERT_TRUE(wait_for_dialog());
    EXPECT_EQ(window.diaConn->panStack->current_stacked_panel(), window.diaConn->panWaiting);
    EXPECT_TRUE(has_line("Window::on_dialog_already_connected"));
}

TEST_F(WindowConnectTest, a_welcome_without_a_dialog_opens_it) {
    connect();
    ASSERT_TRUE(wait_for_dialog());
    window.diaConn->close_programmatic();
    ASSERT_TRUE(wait_for_no_dialog());
    relay.send_chat(QStringLiteral("welcome"), QStringLiteral("relay"), QString(),
                    QStringLiteral("g:Ann"));
    ASSERT_TRUE(wait_for_dialog());
    EXPECT_EQ(window.diaConn->panStack->current_stacked_panel(), window.diaConn->panWaiting);
}

TEST_F(WindowConnectTest, each_word_of_chat_has_its_sound) {
    const std::vector<std::pair<const char*, std::string>> rows = {
        {"welcome", "enterRoom"}, {"join", "enterRoom"}, {"bye", "leftRoom"}, {"text", "msg"},
        {"notice", "msg"},        {"Welcome", "msg"},    {"", "msg"}};
    connect_paired();
    window.playField->flagSound = true;
    for (const auto& [word, sound] : rows) {
        log.clear();
        ze::net::GMessage message;
        message.subType = QString::fromLatin1(word);
        message.from = QStringLiteral("g:Ben");
        message.extraData = QStringLiteral("g:Ann, g:Ben");
        window.on_XMessage(message);
        EXPECT_EQ(played_sounds(), std::vector<std::string>{sound}) << word;
    }
}

TEST_F(WindowConnectTest, a_friend_who_joins_closes_the_dialog_and_hears_the_side) {
    connect();
    relay.send_chat(QStringLiteral("welcome"), QStringLiteral("relay"), QString(),
                    QStringLiteral("g:Ann"));
    ASSERT_TRUE(wait_for_dialog());
    relay.frames.clear();
    send_join();
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(relay.frames[0][QStringLiteral("payload")].toObject(),
              (QJsonObject{{QStringLiteral("cmd"), QStringLiteral("orientation")},
                           {QStringLiteral("orient"), QStringLiteral("LEFT")}}));
    EXPECT_TRUE(wait_for_no_dialog());
    EXPECT_TRUE(window.webSocket.is_connected()) << "only a close by hand ends the connection";
    EXPECT_EQ(window.opponent.name, QStringLiteral("g:Ben"));
    EXPECT_TRUE(has_line("Window::on_login_friend"));
    EXPECT_TRUE(has_line_with_level(
        "INF me: {g:Ann, LEFT, countPoints:0}, opponent{g:Ben, RIGHT, countPoints:0}"));
}

TEST_F(WindowConnectTest, the_field_takes_the_place_of_the_invitation_when_a_friend_joins) {
    connect();
    window.on_start_stop();
    ASSERT_EQ(window.panStack->current_stacked_panel(), window.panInvitation);
    send_join();
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_2_players(); }));
    EXPECT_EQ(window.panStack->current_stacked_panel(), window.panPlay);
}

TEST_F(WindowConnectTest, the_field_takes_the_place_of_the_invitation_after_a_disconnect) {
    connect();
    window.on_start_stop();
    ASSERT_EQ(window.panStack->current_stacked_panel(), window.panInvitation);
    window.disconnect();
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_offline(); }));
    EXPECT_EQ(window.panStack->current_stacked_panel(), window.panPlay);
}

TEST_F(WindowConnectTest,
       when_the_opponent_leaves_the_rally_ends_the_score_falls_and_a_dialog_waits) {
    connect_paired();
    window.me.countPoints = 2;
    window.opponent.countPoints = 1;
    window.on_start_stop();
    relay.send_chat(QStringLiteral("bye"), QStringLiteral("g:Ben"), QStringLiteral("has left"));
    ASSERT_TRUE(wait_for_dialog());
    EXPECT_TRUE(has_line_with_level("INF BYE"));
    EXPECT_FALSE(window.playField->is_state_PLAY());
    EXPECT_TRUE(window.playField->is_state_CONNECTED1());
    EXPECT_EQ(window.me.countPoints, 0U);
    EXPECT_EQ(window.opponent.countPoints, 0U);
    EXPECT_EQ(window.opponent.name, QString());
    EXPECT_FALSE(window.buttonStart->isEnabled());
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("start"));
}

TEST_F(WindowConnectTest, an_unknown_word_of_chat_shows_its_line) {
    connect_paired();
    relay.send_chat(QStringLiteral("notice"), QStringLiteral("relay"),
                    QStringLiteral("maintenance"));
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return last_chat_line() == QStringLiteral("relay:maintenance"); }));
    EXPECT_TRUE(window.playField->is_state_2_players());
}

TEST_F(WindowConnectTest, a_lost_connection_ends_the_rally_and_keeps_the_side) {
    connect_paired();
    window.on_switch_side();
    window.me.countPoints = 4;
    window.opponent.countPoints = 2;
    window.on_start_stop();
    log.expect_error("GWebSocket error 1 => <The remote host closed the connection>");
    relay.drop_client();
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_offline(); }));
    EXPECT_EQ(window.playField->state, 0U);
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("start"));
    EXPECT_EQ(window.me.to_string(), ", LEFT, countPoints:0");
    EXPECT_EQ(window.opponent.to_string(), ", LEFT, countPoints:0");
    EXPECT_EQ(window.playField->side, ORIENT2D::RIGHT);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("vork2D/v5"));
    EXPECT_EQ(window.editStatus->text(), QStringLiteral("0"));
    std::vector<std::string> states;
    for (const std::string& line : log.lines()) {
        if (line.starts_with("STATE CHANGED")) {
            states.push_back(line);
        }
    }
    EXPECT_EQ(states, (std::vector<std::string>{
                          "STATE CHANGED, states {CONNECTED1 | CONNECTED2 | PLAY}",
                          "STATE CHANGED, states {CONNECTED2 | PLAY}",
                          "STATE CHANGED, states {PLAY}", "STATE CHANGED, states {}"}))
        << "each bit falls and is reported on its own";
}

TEST_F(WindowConnectTest, a_refused_attempt_leaves_the_dialog_on_its_form) {
    window.on_dialog_connect();
    ASSERT_FALSE(window.diaConn.isNull());
    window.urlDevelopment = QStringLiteral("ws://127.0.0.1:1/ws/chat");
    log.expect_error("GWebSocket error <Connection refused> - server running ?");
    window.try_connect();
    ASSERT_TRUE(wait_for_line("GWebSocket error <Connection refused> - server running ?"));
    ASSERT_TRUE(wait_for_line("Window::disconnected"));
    QCoreApplication::processEvents();
    ASSERT_FALSE(window.diaConn.isNull());
    EXPECT_EQ(window.diaConn->panStack->current_stacked_panel(), window.diaConn->panForm);
}

TEST_F(WindowConnectTest, try_connect_refuses_without_a_dialog_a_type_or_during_a_rally) {
    log.expect_error("Window::try_connect, diaConn == nullptr, ?");
    window.try_connect();
    window.on_dialog_connect();
    window.typeUrl = 0;
    log.expect_error("Window::try_connect, typeUrl == TYPE_URL::NO_TYPE");
    window.try_connect();
    EXPECT_EQ(log.take().back(), "Window::try_connect, typeUrl == TYPE_URL::NO_TYPE");
    window.typeUrl = 2;
    window.playField->set_state_RUN(true);
    log.clear();
    window.try_connect();
    window.try_connect_via_cmd();
    EXPECT_EQ(log.lines(), (std::vector<std::string>{
                               "Window::try_connect - play mode - connection not possible",
                               "Window::try_connect - play mode - connection not possible"}));
    EXPECT_EQ(window.webSocket.state(), QAbstractSocket::UnconnectedState);
}

TEST_F(WindowConnectTest, with_no_server_chosen_the_default_one_is_tried) {
    window.on_dialog_connect();
    window.diaConn->groupServer->uncheck();
    window.diaConn->radioDevelopment->setAutoExclusive(false);
    window.diaConn->radioDevelopment->setChecked(false);
    window.urlServer = relay.address();
    log.expect_error("DialogConnection::get_url_type - nothing checked");
    window.try_connect();
    EXPECT_EQ(window.host, QStringLiteral("play.vork2d.example"));
    EXPECT_TRUE(has_line("Window::try_connect 'play.vork2d.example'"));
    EXPECT_TRUE(has_line("after try open"));
    EXPECT_TRUE(relay.wait_for_frames(1));
}

TEST_F(WindowConnectTest, pressing_ok_twice_logs_in_once) {
    window.on_dialog_connect();
    window.urlDevelopment = relay.address();
    window.try_connect();
    window.try_connect();
    ASSERT_TRUE(relay.wait_for_frames(1));
    relay.send_chat(QStringLiteral("welcome"), QStringLiteral("relay"), QString(),
                    QStringLiteral("g:Ann"));
    ASSERT_TRUE(wait_for_line("Window::on_login"));
    EXPECT_EQ(relay.frames.size(), 1U);
    EXPECT_TRUE(window.playField->is_state_CONNECTED1());
}

TEST_F(WindowConnectTest, a_server_that_never_answers_is_given_up_with_the_dialog) {
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    window.urlDevelopment = QStringLiteral("ws://127.0.0.1:%1/ws/chat").arg(silent.serverPort());
    window.on_dialog_connect();
    window.try_connect();
    ASSERT_TRUE(QTest::qWaitFor([&silent] { return silent.hasPendingConnections(); }));
    window.diaConn->close();
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return window.webSocket.state() == QAbstractSocket::UnconnectedState; }));
    ASSERT_TRUE(wait_for_no_dialog());
    connect();
    EXPECT_TRUE(window.playField->is_state_CONNECTED1());
}

TEST_F(WindowConnectTest, the_dialog_is_filled_from_the_login) {
    window.on_dialog_connect();
    ASSERT_FALSE(window.diaConn.isNull());
    EXPECT_EQ(window.diaConn->get_user(), QStringLiteral("Ann"));
    EXPECT_EQ(window.diaConn->get_group(), QStringLiteral("g"));
    EXPECT_EQ(window.diaConn->get_password(), QStringLiteral("secret"));
    EXPECT_EQ(window.diaConn->get_url_type(), 1);
    EXPECT_TRUE(has_line("host 'localhost'"));
}

TEST_F(WindowConnectTest, a_second_dialog_is_refused_with_a_warning) {
    window.on_dialog_connect();
    const auto* const first = window.diaConn.data();
    log.clear();
    window.on_dialog_connect();
    window.on_dialog_already_connected();
    EXPECT_EQ(window.diaConn.data(), first);
    EXPECT_EQ(log.lines_with_level(),
              (std::vector<std::string>{"DEB Window::on_dialog_connect",
                                        "WRN Window::on_dialog_connect, diaConn ?",
                                        "DEB Window::on_dialog_already_connected",
                                        "WRN Window::on_dialog_connect, diaConn ?"}));
}

TEST_F(WindowConnectTest, connect_while_connected_asks_and_yes_disconnects) {
    connect_paired();
    window.on_dialog_connect();
    ASSERT_NE(open_box(), nullptr);
    EXPECT_EQ(open_box()->text(), QStringLiteral("Do you want to disconnect from Server/Player"));
    answer(QMessageBox::No);
    EXPECT_TRUE(window.webSocket.is_connected());
    window.on_dialog_connect();
    answer(QMessageBox::Yes);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_offline(); }));
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return relay.client->state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(relay.client->closeCode(), QWebSocketProtocol::CloseCodeNormal);
    EXPECT_EQ(relay.client->closeReason(), QString());
}

TEST_F(WindowConnectTest, the_relay_can_be_reached_again_after_a_disconnect) {
    connect_paired();
    disconnect();
    connect();
    EXPECT_TRUE(window.playField->is_state_CONNECTED1());
}

TEST_F(WindowConnectTest, the_first_to_come_back_after_a_side_switch_has_its_name_on_its_side) {
    switch_side_and_disconnect();
    connect();
    relay.send_chat(QStringLiteral("welcome"), QStringLiteral("relay"), QString(),
                    QStringLiteral("g:Ann"));
    ASSERT_TRUE(wait_for_line("USER: 'g:Ann'"));
    EXPECT_EQ(window.playField->side, ORIENT2D::RIGHT);
    EXPECT_EQ(window.playField->textRight, QStringLiteral("Ann:0"));
    EXPECT_EQ(window.playField->textLeft, QStringLiteral("0"));
    send_join();
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_2_players(); }));
    EXPECT_EQ(window.playField->textRight, QStringLiteral("Ann:0"));
    EXPECT_EQ(window.playField->textLeft, QStringLiteral("Ben:0"));
}

TEST_F(WindowConnectTest, the_second_to_come_back_after_a_side_switch_has_its_name_on_its_side) {
    switch_side_and_disconnect();
    connect();
    relay.send_chat(QStringLiteral("welcome"), QStringLiteral("relay"), QString(),
                    QStringLiteral("g:Ben, g:Ann"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_2_players(); }));
    EXPECT_EQ(window.playField->textRight, QStringLiteral("Ann:0"));
    EXPECT_EQ(window.playField->textLeft, QStringLiteral("Ben:0"));
}

TEST_F(WindowConnectTest, points_made_alone_after_a_side_switch_stand_over_who_made_them) {
    switch_side_and_disconnect();
    window.on_start_stop();
    window.on_confirmed_out_of_field(ORIENT2D::RIGHT);
    EXPECT_EQ(window.playField->textLeft, QStringLiteral("1"));
    EXPECT_EQ(window.playField->textRight, QStringLiteral("0"));
}

}  // namespace
