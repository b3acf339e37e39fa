// A relay of one group inside the test: it greets who logs in and hands every other frame to the
// other member.
#pragma once

#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>
#include <QWebSocket>
#include <QWebSocketServer>

#include <memory>
#include <string>
#include <vector>

namespace test {

class PairRelay {
public:
    PairRelay() : server(QStringLiteral("pair"), QWebSocketServer::NonSecureMode) {
        server.listen(QHostAddress::LocalHost);
        QObject::connect(&server, &QWebSocketServer::newConnection, &server,
                         [this] { take_member(); });
    }

    [[nodiscard]] QString address() const { return server.serverUrl().toString(); }

    /// "from cmd" of each play message so far.
    std::vector<std::string> commands;

private:
    void take_member() {
        members.emplace_back(server.nextPendingConnection());
        QWebSocket* const member = members.back().get();
        QObject::connect(member, &QWebSocket::textMessageReceived, &server,
                         [this, member](const QString& text) { on_text(member, text); });
    }

    void on_text(QWebSocket* sender, const QString& text) {
        const QJsonObject object = QJsonDocument::fromJson(text.toUtf8()).object();
        const QString from = object[QStringLiteral("from")].toString();
        if (object[QStringLiteral("type")] == QStringLiteral("LOGIN")) {
            names.push_back(from);
            sender->sendTextMessage(chat("welcome", from, names.join(QStringLiteral(", "))));
            to_others(sender, chat("join", from, {}));
            return;
        }
        const QJsonValue payload = object[QStringLiteral("payload")];
        commands.push_back(
            (from + QLatin1Char(' ') + payload[QStringLiteral("cmd")].toString()).toStdString());
        to_others(sender, text);
    }

    void to_others(const QWebSocket* sender, const QString& text) {
        for (const auto& member : members) {
            if (member.get() != sender) {
                member->sendTextMessage(text);
            }
        }
    }

    static QString chat(const char* subType, const QString& from, const QString& extraData) {
        const QJsonObject object{{QStringLiteral("type"), QStringLiteral("CHAT")},
                                 {QStringLiteral("subType"), QLatin1String(subType)},
                                 {QStringLiteral("from"), from},
                                 {QStringLiteral("extraData"), extraData}};
        return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
    }

    QWebSocketServer server;
    std::vector<std::unique_ptr<QWebSocket>> members;
    QStringList names;
};

}  // namespace test
