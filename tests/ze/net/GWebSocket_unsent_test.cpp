// The other end that does not read: what is sent to it waits here, up to a limit.
#include "ze/net/GWebSocket.h"
#include "ze/net/RawServer.h"
#include "ze/net/certificate.h"

#include "support/LogCapture.h"

#include <QJsonObject>

#include <algorithm>
#include <optional>

#include <gtest/gtest.h>

namespace {

using test::RawServer;
using test::wait_until;
using ze::net::GWebSocket;

constexpr qint64 MIB = 1024 * 1024;
constexpr qint64 LIMIT = 4 * MIB;
// What one turn of the loop may add before the limit is looked at: the answers to what the kernel
// had received.
constexpr qint64 ONE_TURN = 32 * MIB;

constexpr const char* CLOSED =
    "GWebSocket, more than 4 MiB unsent, the other end does not read, connection closed";

constexpr char TEXT = 1;
constexpr char PING = 9;

class GWebSocket_unsent : public testing::TestWithParam<bool> {
protected:
    static void SetUpTestSuite() { tls.emplace(test::self_signed()); }
    static void TearDownTestSuite() { tls.reset(); }

    RawServer server{GetParam() ? *tls : QSslConfiguration()};
    GWebSocket socket;
    test::LogCapture log;
    int disconnects = 0;
    qint64 most = 0;  // unsent at any time

    void connect_and_go_deaf() {
        socket.listenerSSL = [this](const QList<QSslError>&) {
            socket.ignoreSslErrors();
        };
        socket.listenerDisconnected = [this] {
            disconnects += 1;
        };
        socket.open(server.url());
        ASSERT_TRUE(wait_until([this] { return socket.is_connected(); }));
        server.stop_reading();
    }

    [[nodiscard]] bool wait_for_the_end() {
        return wait_until([this] {
            most = std::max(most, socket.unsent_bytes());
            return disconnects > 0;
        });
    }

    void send_until(qint64 unsent) {
        const QJsonObject object{{QStringLiteral("text"), QString(MIB / 8, QLatin1Char('x'))}};
        ASSERT_TRUE(wait_until([&] {
            socket.send_object(object);
            QCoreApplication::processEvents();
            return disconnects > 0 || socket.unsent_bytes() > unsent;
        }));
    }

private:
    inline static std::optional<QSslConfiguration> tls;
};

TEST_P(GWebSocket_unsent, answers_to_pings_close_the_connection) {
    log.expect_error(CLOSED);
    connect_and_go_deaf();
    server.pour(RawServer::frame(PING, QByteArray(125, 'x')).repeated(1000));
    ASSERT_TRUE(wait_for_the_end());
    EXPECT_FALSE(socket.is_connected());
    EXPECT_EQ(socket.unsent_bytes(), 0);
    EXPECT_LT(most, LIMIT + ONE_TURN);
}

TEST_P(GWebSocket_unsent, answers_to_empty_pings_close_the_connection) {
    log.expect_error(CLOSED);
    connect_and_go_deaf();
    server.pour(RawServer::frame(PING, {}).repeated(50'000));
    ASSERT_TRUE(wait_for_the_end());
    EXPECT_LT(most, LIMIT + ONE_TURN);
}

TEST_P(GWebSocket_unsent, answers_to_messages_close_the_connection) {
    log.expect_error(CLOSED);
    connect_and_go_deaf();
    socket.listenerObject = [this](const QJsonObject&) {
        socket.send_object({{QStringLiteral("type"), QStringLiteral("PONG")},
                            {QStringLiteral("from"), QStringLiteral("group1:Nilo")},
                            {QStringLiteral("to"), QStringLiteral("+")}});
    };
    server.pour(RawServer::frame(TEXT, R"({"type":"PING"})").repeated(1000));
    ASSERT_TRUE(wait_for_the_end());
    EXPECT_LT(most, LIMIT + ONE_TURN);
}

TEST_P(GWebSocket_unsent, messages_to_one_who_says_nothing_close_the_connection) {
    log.expect_error(CLOSED);
    connect_and_go_deaf();
    send_until(LIMIT);
    EXPECT_TRUE(wait_for_the_end());
}

TEST_P(GWebSocket_unsent, below_the_limit_waits_for_a_slow_reader) {
    connect_and_go_deaf();
    send_until(LIMIT / 2);
    EXPECT_TRUE(socket.is_connected());
    EXPECT_TRUE(wait_until([this] {
        server.drain();
        return socket.unsent_bytes() == 0;
    }));
    EXPECT_EQ(disconnects, 0);
}

TEST_P(GWebSocket_unsent, does_not_keep_a_close_from_ending_the_connection) {
    connect_and_go_deaf();
    send_until(LIMIT / 2);
    socket.close(QWebSocketProtocol::CloseCodeNormal, QString());
    EXPECT_TRUE(wait_for_the_end());
    EXPECT_EQ(disconnects, 1);
}

INSTANTIATE_TEST_SUITE_P(GWebSocket, GWebSocket_unsent, testing::Bool(),
                         [](const auto& row) { return row.param ? "tls" : "plain"; });

}  // namespace
