#include "ze/net/GWebSocket.h"

#include "ze/net/Peer.h"
#include "ze/net/certificate.h"
#include "ze/net/json_text.h"

#include "support/LogCapture.h"

#include <QTcpServer>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using test::connect_to;
using test::Peer;
using test::wait_until;
using ze::net::GWebSocket;

/// A GWebSocket that writes down in order what its listeners are told.
class Watched : public GWebSocket {
public:
    std::vector<std::string> told;

    Watched() {
        listenerConnected = [this] {
            told.emplace_back("connected");
        };
        listenerDisconnected = [this] {
            told.emplace_back("disconnected");
        };
        listenerText = [this](const QString& text) {
            told.push_back("text " + text.toStdString());
        };
        listenerObject = [this](const QJsonObject& object) {
            told.push_back("object " + test::text_of(object));
        };
        listenerError = [this](const QAbstractSocket::SocketError& code) {
            told.push_back("error " + std::to_string(code));
        };
        listenerState = [this](const QAbstractSocket::SocketState&) {
            told.emplace_back("state");
        };
        listenerSSL = [this](const QList<QSslError>& errors) {
            told.emplace_back(errors.isEmpty() ? "no ssl errors" : "ssl errors");
        };
    }

    [[nodiscard]] bool wait_for(std::size_t count) const {
        return wait_until([this, count] { return told.size() >= count; });
    }
};

using Told = std::vector<std::string>;

std::string hex(const GWebSocket& socket) {
    return QString::number(reinterpret_cast<quintptr>(&socket), 16).toStdString();
}

void close(GWebSocket& socket) {
    socket.close(QWebSocketProtocol::CloseCodeNormal, QString());
}

TEST(GWebSocket, a_fresh_one_logs_its_address_and_is_not_connected) {
    const test::LogCapture log;
    const GWebSocket socket;
    EXPECT_EQ(log.lines_with_level(),
              test::Lines{"DEB GWebSocket::GWebSocket, this:" + hex(socket)});
    EXPECT_FALSE(socket.is_connected());
    EXPECT_FALSE(bool(socket));
}

TEST(GWebSocket, is_connected_once_the_handshake_is_done) {
    Peer peer;
    Watched socket;
    socket.open(peer.url());
    EXPECT_EQ(socket.state(), QAbstractSocket::ConnectingState);
    EXPECT_FALSE(socket.is_connected());
    EXPECT_FALSE(bool(socket));
    ASSERT_TRUE(socket.wait_for(1));
    EXPECT_TRUE(socket.is_connected());
    EXPECT_TRUE(bool(socket));
    EXPECT_EQ(socket.told, Told{"connected"});
}

TEST(GWebSocket, the_play_field_sees_the_connection_through_the_narrow_view) {
    Peer peer;
    GWebSocket socket;
    const ze::net::IConnectionState& view = socket;
    EXPECT_FALSE(view.is_connected());
    connect_to(peer, socket);
    EXPECT_TRUE(view.is_connected());
}

TEST(GWebSocket_text, reaches_the_text_listener_as_it_is_and_then_the_object_listener) {
    const struct {
        const char* name;
        std::string text;
        const char* object;
    } rows[] = {
        {"object", R"({"b":[1,2], "a":"ä"})", R"({"a":"ä","b":[1,2]})"},
        {"empty object", "{}", "{}"},
        {"nested object", R"({"a":{"b":{"c":null}}})", R"({"a":{"b":{"c":null}}})"},
        {"key twice", R"({"a":1,"a":2})", R"({"a":2})"},
        {"large number", R"({"a":1e308})", R"({"a":1e+308})"},
        {"array", R"([{"type":"CHAT"}])", "{}"},
        {"string", R"("text")", "{}"},
        {"number", "5", "{}"},
        {"null", "null", "{}"},
        {"empty text", "", "{}"},
        {"blanks", "  \n", "{}"},
        {"open object", R"({"type":"CHAT")", "{}"},
        {"open string", R"({"type":"CHAT)", "{}"},
        {"two objects", R"({}{"type":"CHAT"})", "{}"},
        {"trailing comma", R"({"type":"CHAT",})", "{}"},
        {"single quotes", "{'type':'CHAT'}", "{}"},
        {"number beyond a double", R"({"a":1e999})", "{}"},
        {"lone surrogate", R"({"a":"\ud800"})", R"({"a":"\ud800"})"},
        {"deep nesting", R"({"a":)" + std::string(5000, '['), "{}"},
    };
    Peer peer;
    Watched socket;
    connect_to(peer, socket);
    for (const auto& row : rows) {
        socket.told.clear();
        peer.client->sendTextMessage(QString::fromStdString(row.text));
        ASSERT_TRUE(socket.wait_for(2)) << row.name;
        EXPECT_EQ(socket.told, (Told{"text " + row.text, std::string("object ") + row.object}))
            << row.name;
    }
}

TEST(GWebSocket_text, binary_frames_and_pings_reach_no_listener) {
    Peer peer;
    Watched socket;
    connect_to(peer, socket);
    socket.told.clear();
    peer.client->sendBinaryMessage(R"({"type":"CHAT"})");
    peer.client->ping("x");
    peer.client->sendTextMessage(QStringLiteral("{}"));
    ASSERT_TRUE(socket.wait_for(2));
    EXPECT_EQ(socket.told, (Told{"text {}", "object {}"}));
}

TEST(GWebSocket_text, keeps_the_order_of_the_frames) {
    Peer peer;
    GWebSocket socket;
    connect_to(peer, socket);
    QString order;
    socket.listenerText = [&order](const QString& text) {
        order += text;
    };
    QString expected;
    for (int i = 0; i < 200; ++i) {
        expected += QString::number(i);
        peer.client->sendTextMessage(QString::number(i));
    }
    ASSERT_TRUE(wait_until([&] { return order.size() >= expected.size(); }));
    EXPECT_EQ(order, expected);
}

constexpr qsizetype LIMIT = 16 * 1024 * 1024;

TEST(GWebSocket_text, of_16_MiB_still_comes_through) {
    Peer peer;
    GWebSocket socket;
    connect_to(peer, socket);
    qsizetype size = 0;
    socket.listenerText = [&size](const QString& text) {
        size = text.size();
    };
    peer.client->sendTextMessage(QString(LIMIT, QLatin1Char('x')));
    ASSERT_TRUE(wait_until([&size] { return size > 0; }));
    EXPECT_EQ(size, LIMIT);
    EXPECT_TRUE(socket.is_connected());
}

TEST(GWebSocket_text, beyond_16_MiB_closes_the_connection) {
    Peer peer;
    Watched socket;
    connect_to(peer, socket);
    socket.told.clear();
    peer.client->sendTextMessage(QString(LIMIT + 1, QLatin1Char('x')));
    ASSERT_TRUE(wait_until([&socket] { return !socket.is_connected(); }));
    ASSERT_TRUE(wait_until([&socket] { return !socket.told.empty(); }));
    EXPECT_EQ(socket.told.back(), "disconnected");
    EXPECT_EQ(socket.closeCode(), QWebSocketProtocol::CloseCodeTooMuchData);
}

TEST(GWebSocket_send_object, goes_out_as_one_compact_text_frame) {
    Peer peer;
    GWebSocket socket;
    connect_to(peer, socket);
    EXPECT_GT(socket.send_object(test::object_of(R"({ "b" : [1, "ä"], "a" : {} })")), 0);
    ASSERT_TRUE(wait_until([&peer] { return !peer.texts.isEmpty(); }));
    EXPECT_EQ(peer.texts, QStringList{QStringLiteral(R"({"a":{},"b":[1,"ä"]})")});
}

TEST(GWebSocket_send_object, sends_nothing_on_a_closed_socket) {
    GWebSocket socket;
    EXPECT_EQ(socket.send_object(test::object_of(R"({"a":1})")), 0);
}

TEST(GWebSocket_close, tells_the_disconnect_once) {
    Peer peer;
    Watched socket;
    connect_to(peer, socket);
    socket.told.clear();
    const test::LogCapture log;
    close(socket);
    ASSERT_TRUE(socket.wait_for(1));
    EXPECT_EQ(socket.told, Told{"disconnected"});
    EXPECT_FALSE(socket.is_connected());
    EXPECT_EQ(log.lines_with_level(),
              test::Lines{"DEB GWebSocket::GWebSocket, SIGNAL, QWebSocket::disconnected, this:" +
                          hex(socket)});
}

TEST(GWebSocket_close, carries_code_and_reason_to_the_other_end) {
    Peer peer;
    GWebSocket socket;
    connect_to(peer, socket);
    socket.close(QWebSocketProtocol::CloseCodeNormal, QStringLiteral("done"));
    ASSERT_TRUE(
        wait_until([&peer] { return peer.client->state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(peer.client->closeCode(), QWebSocketProtocol::CloseCodeNormal);
    EXPECT_EQ(peer.client->closeReason(), QStringLiteral("done"));
}

TEST(GWebSocket_close, by_the_server_tells_the_disconnect_once) {
    Peer peer;
    Watched socket;
    connect_to(peer, socket);
    socket.told.clear();
    peer.client->close();
    ASSERT_TRUE(socket.wait_for(1));
    EXPECT_EQ(socket.told.back(), "disconnected");
    EXPECT_EQ(std::count(socket.told.begin(), socket.told.end(), "disconnected"), 1);
}

TEST(GWebSocket_close, a_second_disconnected_signal_is_swallowed_with_its_line) {
    Peer peer;
    Watched socket;
    connect_to(peer, socket);
    close(socket);
    ASSERT_TRUE(wait_until([&socket] { return socket.told.back() == "disconnected"; }));
    socket.told.clear();
    const test::LogCapture log;
    Q_EMIT socket.disconnected();
    EXPECT_EQ(socket.told, Told{});
    EXPECT_EQ(log.lines_with_level(),
              test::Lines{"DEB GWebSocket::GWebSocket, SIGNAL, QWebSocket::disconnected, this:" +
                          hex(socket)});
}

TEST(GWebSocket_close, after_a_disconnect_rearms_the_notice) {
    Watched socket;
    Q_EMIT socket.disconnected();
    close(socket);
    Q_EMIT socket.disconnected();
    EXPECT_EQ(socket.told, (Told{"disconnected", "disconnected"}));
}

TEST(GWebSocket_close, after_a_reconnect_a_disconnect_is_told_again) {
    Peer peer;
    Watched socket;
    for (int round = 0; round < 3; ++round) {
        socket.told.clear();
        connect_to(peer, socket);
        close(socket);
        ASSERT_TRUE(wait_until([&socket] { return socket.told.back() == "disconnected"; }));
        EXPECT_EQ(socket.told, (Told{"connected", "disconnected"})) << round;
    }
}

QUrl url_of_a_closed_port() {
    QTcpServer server;
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    return QUrl(QStringLiteral("ws://127.0.0.1:%1/").arg(server.serverPort()));
}

TEST(GWebSocket_error, a_refused_connection_is_told_with_its_code_and_logged) {
    Watched socket;
    const test::LogCapture log;
    socket.open(url_of_a_closed_port());
    ASSERT_TRUE(wait_until([&socket] {
        return std::find(socket.told.begin(), socket.told.end(), "error 0") != socket.told.end();
    }));
    EXPECT_FALSE(socket.is_connected());
    const test::Lines lines = log.lines_with_level();
    EXPECT_EQ(
        std::count(lines.begin(), lines.end(),
                   "DEB GWebSocket::GWebSocket, SIGNAL, QAbstractSocket::SocketError, error:0"),
        1);
}

TEST(GWebSocket_error, the_same_socket_connects_after_a_refused_connection) {
    Watched socket;
    socket.open(url_of_a_closed_port());
    ASSERT_TRUE(socket.wait_for(1));
    ASSERT_TRUE(
        wait_until([&socket] { return socket.state() == QAbstractSocket::UnconnectedState; }));
    Peer peer;
    connect_to(peer, socket);
    EXPECT_EQ(socket.told.back(), "connected");
}

TEST(GWebSocket_end, while_connected_tells_its_listeners_nothing) {
    Peer peer;
    Told told;
    {
        auto socket = std::make_unique<Watched>();
        connect_to(peer, *socket);
        socket->listenerDisconnected = [&told] {
            told.emplace_back("disconnected");
        };
        socket->listenerError = [&told](const QAbstractSocket::SocketError&) {
            told.emplace_back("error");
        };
    }
    ASSERT_TRUE(
        wait_until([&peer] { return peer.client->state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(told, Told{});
}

TEST(GWebSocket_end, while_connecting_is_no_fault) {
    Peer peer;
    { Watched().open(peer.url()); }
    { Watched().open(url_of_a_closed_port()); }
    const test::LogCapture log;
    QCoreApplication::processEvents();
    EXPECT_EQ(log.lines_with_level(), test::Lines{});
}

class GWebSocket_tls : public testing::Test {
protected:
    static void SetUpTestSuite() { tls.emplace(test::self_signed()); }
    static void TearDownTestSuite() { tls.reset(); }
    void SetUp() override { ASSERT_FALSE(tls->localCertificate().isNull()); }

    // Qt's TLS must not be started before there is an application object.
    inline static std::optional<QSslConfiguration> tls;
};

TEST_F(GWebSocket_tls, a_self_signed_certificate_is_told_and_the_handler_may_go_on) {
    Peer peer(*tls);
    Watched socket;
    socket.listenerSSL.append("ignore",
                              [&socket](const QList<QSslError>&) { socket.ignoreSslErrors(); });
    connect_to(peer, socket);
    EXPECT_EQ(socket.told, (Told{"ssl errors", "connected"}));

    socket.told.clear();
    socket.send_object(test::object_of(R"({"a":1})"));
    ASSERT_TRUE(wait_until([&peer] { return !peer.texts.isEmpty(); }));
    EXPECT_EQ(peer.texts, QStringList{QStringLiteral(R"({"a":1})")});
    peer.client->sendTextMessage(QStringLiteral(R"({"b":2})"));
    ASSERT_TRUE(socket.wait_for(2));
    EXPECT_EQ(socket.told, (Told{R"(text {"b":2})", R"(object {"b":2})"}));
}

TEST_F(GWebSocket_tls, with_nobody_to_ignore_it_the_handshake_fails) {
    Peer peer(*tls);
    Watched socket;
    socket.open(peer.url());
    const std::string failed = "error " + std::to_string(QAbstractSocket::SslHandshakeFailedError);
    ASSERT_TRUE(wait_until([&socket, &failed] {
        return std::find(socket.told.begin(), socket.told.end(), failed) != socket.told.end();
    }));
    EXPECT_EQ(socket.told.front(), "ssl errors");
    EXPECT_FALSE(socket.is_connected());
}

TEST_F(GWebSocket_tls, its_end_while_connected_is_no_fault) {
    Peer peer(*tls);
    {
        auto socket = std::make_unique<Watched>();
        socket->listenerSSL = [&socket](const QList<QSslError>&) {
            socket->ignoreSslErrors();
        };
        connect_to(peer, *socket);
    }
    ASSERT_TRUE(
        wait_until([&peer] { return peer.client->state() == QAbstractSocket::UnconnectedState; }));
}

}  // namespace
