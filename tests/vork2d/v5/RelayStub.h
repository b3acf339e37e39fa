// A relay of one client inside the test: it keeps every frame that arrives and sends what the test
// says. It pairs nobody and refuses nothing; the real relay plays in the whole-program tests.
#pragma once

#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <QUrl>
#include <QWebSocket>
#include <QWebSocketServer>

#include <memory>
#include <vector>

namespace test {

class RelayStub {
public:
    RelayStub() : server(QStringLiteral("stub"), QWebSocketServer::NonSecureMode) {
        server.listen(QHostAddress::LocalHost);
        QObject::connect(&server, &QWebSocketServer::newConnection, &server,
                         [this] { take_client(); });
    }

    [[nodiscard]] QString address() const {
        return server.serverUrl().toString() + QStringLiteral("/ws/chat?sessid=play");
    }

    void send(const QJsonObject& object) {
        client->sendTextMessage(
            QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
    }

    /// A "CHAT" of the relay's own.
    void send_chat(const QString& subType, const QString& from, const QString& text,
                   const QString& extraData = {}) {
        send({{QStringLiteral("type"), QStringLiteral("CHAT")},
              {QStringLiteral("subType"), subType},
              {QStringLiteral("from"), from},
              {QStringLiteral("text"), text},
              {QStringLiteral("extraData"), extraData}});
    }

    /// A "PLAY" from the opponent.
    void send_play(const QJsonObject& payload) {
        send({{QStringLiteral("type"), QStringLiteral("PLAY")},
              {QStringLiteral("from"), QStringLiteral("g:Ben")},
              {QStringLiteral("to"), QStringLiteral("#")},
              {QStringLiteral("game"), QStringLiteral("vork")},
              {QStringLiteral("payload"), payload}});
    }

    void drop_client() { client->abort(); }

    [[nodiscard]] bool wait_for_frames(std::size_t count) {
        return QTest::qWaitFor([this, count] { return frames.size() >= count; });
    }

    /// The payload commands of the "PLAY" frames so far, in order.
    [[nodiscard]] std::vector<QString> commands() const {
        std::vector<QString> found;
        for (const QJsonObject& frame : frames) {
            if (frame[QStringLiteral("type")] == QStringLiteral("PLAY")) {
                found.push_back(frame[QStringLiteral("payload")][QStringLiteral("cmd")].toString());
            }
        }
        return found;
    }

    std::vector<QJsonObject> frames;
    std::unique_ptr<QWebSocket> client;

private:
    void take_client() {
        client.reset(server.nextPendingConnection());
        QObject::connect(client.get(), &QWebSocket::textMessageReceived, &server,
                         [this](const QString& text) {
                             frames.push_back(QJsonDocument::fromJson(text.toUtf8()).object());
                         });
    }

    QWebSocketServer server;
};

}  // namespace test
