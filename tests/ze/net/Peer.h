// The other end of a GWebSocket: a server on a free local port that keeps its newest client and
// every text that came in.
#pragma once

#include "ze/net/wait_until.h"

#include <QHostAddress>
#include <QSslConfiguration>
#include <QStringList>
#include <QUrl>
#include <QWebSocket>
#include <QWebSocketServer>

#include <gtest/gtest.h>

namespace test {

class Peer {
public:
    /// A plain server, or a secure one if there is a configuration with a certificate.
    explicit Peer(const QSslConfiguration& tls = {})
        : server(QString(), tls.localCertificate().isNull() ? QWebSocketServer::NonSecureMode
                                                            : QWebSocketServer::SecureMode) {
        server.setSslConfiguration(tls);
        QObject::connect(&server, &QWebSocketServer::newConnection, &server,
                         [this] { on_new_connection(); });
        EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    }

    [[nodiscard]] QUrl url() const {
        const bool secure = server.secureMode() == QWebSocketServer::SecureMode;
        return QUrl(QStringLiteral("%1://127.0.0.1:%2/ws/chat?sessid=play")
                        .arg(secure ? QStringLiteral("wss") : QStringLiteral("ws"))
                        .arg(server.serverPort()));
    }

    /// The newest client, null until there is one; ends with this object.
    QWebSocket* client = nullptr;
    QStringList texts;

private:
    QWebSocketServer server;

    void on_new_connection() {
        client = server.nextPendingConnection();
        client->setParent(&server);  // it comes without one
        QObject::connect(client, &QWebSocket::textMessageReceived, &server,
                         [this](const QString& text) { texts.push_back(text); });
    }
};

/// Opens the socket and waits until both ends stand.
template <class Socket>
void connect_to(Peer& peer, Socket& socket) {
    peer.client = nullptr;
    socket.open(peer.url());
    ASSERT_TRUE(wait_until([&] { return peer.client != nullptr && socket.is_connected(); }));
}

}  // namespace test
