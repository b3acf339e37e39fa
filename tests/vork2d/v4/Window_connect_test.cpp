#include "ze/net/GMessage.h"

#include "PairRelay.h"
#include "vork2d/early/GenerationTest.h"
#include "vork2d/servers.h"
#include "vork2d/v4/PlayField.h"
#include "vork2d/v4/Window.h"

#include <QTest>

namespace {

using test::Lines;
namespace ORIENT2D = ze::math::ORIENT2D;

class ConnectV4 : public test::GenerationWindow<vork2d::v4::Window> {
protected:
    ConnectV4() {
        window.user = QStringLiteral("g:Ann");
        window.playField->flagSound = false;
    }

    ~ConnectV4() override { window.webSocket.abort(); }

    void receive(const char* subType, const char* from, const char* extraData = "") {
        window.on_object({{QStringLiteral("type"), QStringLiteral("CHAT")},
                          {QStringLiteral("subType"), QLatin1String(subType)},
                          {QStringLiteral("from"), QLatin1String(from)},
                          {QStringLiteral("extraData"), QLatin1String(extraData)}});
    }
};

TEST_F(ConnectV4, the_addresses_are_those_of_every_generation) {
    EXPECT_EQ(window.urlDevelopment, vork2d::servers::development_url().toString());
    EXPECT_EQ(window.urlServer, vork2d::servers::default_url().toString());
    EXPECT_EQ(window.host, vork2d::servers::default_name());
    EXPECT_FALSE(window.is_local_host());
    window.host = vork2d::servers::development_name();
    EXPECT_TRUE(window.is_local_host());
    window.host = vork2d::servers::development_alias();
    EXPECT_TRUE(window.is_local_host());
}

TEST_F(ConnectV4, the_button_connects_and_disconnects) {
    test::PairRelay relay;
    window.host = QStringLiteral("localhost");
    window.urlDevelopment = relay.address();
    press("offline");
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.me.name == QStringLiteral("g:Ann"); }));
    EXPECT_TRUE(window.playField->is_state_CONNECTED1());
    EXPECT_EQ(window.windowTitle(), QStringLiteral("g:Ann"));
    EXPECT_EQ(buttons().at(2), "online");

    press("offline");  // found by its first text
    ASSERT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_offline(); }));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("vork2D/v4"));
    EXPECT_EQ(buttons().at(2), "offline");
}

TEST_F(ConnectV4, a_rally_is_not_disturbed_by_a_connection) {
    window.on_start_stop();
    window.on_connect();
    EXPECT_EQ(window.webSocket.state(), QAbstractSocket::UnconnectedState);
}

TEST_F(ConnectV4, a_welcome_with_another_name_pairs) {
    window.playField->set_state_CONNECTED1(true);
    receive("welcome", "relay", "g:Ben, g:Ann");
    EXPECT_EQ(window.opponent.to_string(), "g:Ben, RIGHT, countPoints:0");
    EXPECT_TRUE(window.playField->is_state_2_players());
}

TEST_F(ConnectV4, a_welcome_alone_does_not_pair) {
    window.playField->set_state_CONNECTED1(true);
    receive("welcome", "relay", "g:Ann");
    EXPECT_EQ(window.me.name, QStringLiteral("g:Ann"));
    EXPECT_FALSE(window.playField->is_state_CONNECTED2());
}

TEST_F(ConnectV4, a_join_pairs_and_a_bye_parts) {
    window.playField->set_state_CONNECTED1(true);
    receive("join", "g:Ben");
    EXPECT_TRUE(window.playField->is_state_2_players());
    window.me.countPoints = 3;
    window.playField->set_state_RUN(true);
    receive("bye", "g:Ben");
    EXPECT_FALSE(window.playField->is_state_CONNECTED2());
    EXPECT_FALSE(window.playField->is_state_RUN());
    EXPECT_EQ(window.me.countPoints, 0U) << "the points are those of the pair";
    EXPECT_EQ(window.opponent.name, QString());
}

TEST_F(ConnectV4, a_lost_connection_ends_everything) {
    window.playField->state = 14;
    window.me.countPoints = 3;
    window.on_disconnected();
    EXPECT_EQ(window.playField->state, 0U);
    EXPECT_EQ(window.me.to_string(), ", LEFT, countPoints:0");
    EXPECT_EQ(window.buttonStart->text(), QStringLiteral("start"));
}

TEST_F(ConnectV4, what_is_no_message_is_reported) {
    log.expect_error("Window::on_object, xmsg == nullptr");
    window.on_object({});
}

TEST_F(ConnectV4, a_type_without_a_handler_is_reported) {
    log.expect_error("Window::on_object, xmsg, type:<<<PONG>>> ?");
    window.on_object({{QStringLiteral("type"), QStringLiteral("PONG")}});
}

TEST_F(ConnectV4, a_play_message_reaches_the_field_as_one_of_the_other_client) {
    window.on_object({{QStringLiteral("type"), QStringLiteral("PLAY")},
                      {QStringLiteral("payload"),
                       QJsonObject{{QStringLiteral("cmd"), QStringLiteral("orientation")},
                                   {QStringLiteral("orient"), QStringLiteral("LEFT")}}}});
    EXPECT_EQ(window.playField->side, ORIENT2D::RIGHT);
    EXPECT_EQ(window.me.orient, ORIENT2D::RIGHT);
}

}  // namespace
