#include "ze/net/GAdmin.h"
#include "ze/net/GErrorMsg.h"
#include "ze/net/GLogin.h"
#include "ze/net/GMessage.h"
#include "ze/net/GPing.h"
#include "ze/net/GPlay.h"
#include "ze/net/GPong.h"
#include "ze/net/GWebSocket.h"
#include "ze/net/Peer.h"
#include "ze/net/json_text.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

using namespace ze::net;

TEST(GAbstractMessage_send, a_socket_that_is_not_valid_gets_an_error_line_and_nothing_else) {
    GWebSocket socket;
    GLogin login;
    test::LogCapture log(ze::log::TRACE);
    log.expect_error("GAbstractMessage::send, !webSock.isValid()");
    login.send(socket);
    EXPECT_EQ(log.lines(), test::Lines{"GAbstractMessage::send, !webSock.isValid()"});
}

class Nothing : public GAbstractMessage {
public:
    Nothing() : GAbstractMessage(QStringLiteral("NOTHING")) {}
    void to_json(QJsonObject& /*object*/) const override {}
};

TEST(GAbstractMessage_send, a_message_that_writes_nothing_is_not_sent) {
    test::Peer peer;
    GWebSocket socket;
    test::connect_to(peer, socket);
    test::LogCapture log(ze::log::TRACE);
    log.expect_error("GAbstractMessage::send, obj is EMTPY");
    Nothing().send(socket);
    GPing().send(socket);
    ASSERT_TRUE(test::wait_until([&] { return !peer.texts.isEmpty(); }));
    EXPECT_EQ(peer.texts.front().toStdString(), test::wire_text(GPing()));
}

template <class Message>
class GAbstractMessage_send_each : public testing::Test {};

using Messages = testing::Types<GErrorMsg, GMessage, GPing, GPong, GPlay, GAdmin, GLogin>;
TYPED_TEST_SUITE(GAbstractMessage_send_each, Messages);

TYPED_TEST(GAbstractMessage_send_each, goes_out_as_compact_text_and_logs_unless_a_heartbeat) {
    test::Peer peer;
    GWebSocket socket;
    test::connect_to(peer, socket);
    TypeParam message;
    message.from = QStringLiteral("g:ä");
    const std::string text = test::wire_text(message);

    const test::LogCapture log(ze::log::TRACE);
    message.send(socket);

    const test::Lines line{"TRA GAbstractMessage::send, obj: '" + text + "'"};
    EXPECT_EQ(log.lines_with_level(), message.is_show_msg() ? line : test::Lines{});
    ASSERT_TRUE(test::wait_until([&] { return !peer.texts.isEmpty(); }));
    EXPECT_EQ(peer.texts.front().toStdString(), text);
}

}  // namespace
