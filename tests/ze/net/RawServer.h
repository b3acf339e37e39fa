// A WebSocket server made by hand, for what QWebSocketServer never does: it writes bytes of the
// test's choice, reads nothing more once told so, and can end in the middle of a frame.
#pragma once

#include "ze/net/wait_until.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QHostAddress>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QTcpServer>
#include <QUrl>

#include <gtest/gtest.h>

namespace test {

class RawServer : public QTcpServer {
public:
    /// A plain server, or a secure one if there is a configuration with a certificate.
    explicit RawServer(const QSslConfiguration& theTls = {}) : tls(theTls) {
        EXPECT_TRUE(listen(QHostAddress::LocalHost));
    }

    [[nodiscard]] QUrl url() const {
        return QUrl(QStringLiteral("%1://127.0.0.1:%2/ws/chat?sessid=play")
                        .arg(is_secure() ? QStringLiteral("wss") : QStringLiteral("ws"))
                        .arg(serverPort()));
    }

    /// The newest client, null until there is one; ends with this object.
    QSslSocket* client = nullptr;

    /// Leaves from now on in the kernel what the client sends.
    void stop_reading() const { client->setReadBufferSize(1); }

    /// Reads on and throws away; returns the number of bytes that have come in.
    qint64 drain() const {
        client->setReadBufferSize(0);
        return client->readAll().size();
    }

    /// Writes the bytes again and again, as fast as the client takes them.
    void pour(const QByteArray& bytes) {
        const auto refill = [this, bytes] {
            while (client->bytesToWrite() + client->encryptedBytesToWrite() < bytes.size()) {
                client->write(bytes);
            }
        };
        connect(client, &QIODevice::bytesWritten, this, refill);
        connect(client, &QSslSocket::encryptedBytesWritten, this, refill);
        refill();
    }

    /// A frame as a server sends it: unmasked and whole.
    static QByteArray frame(char opcode, const QByteArray& payload) {
        constexpr int LONGEST_SHORT = 125;
        EXPECT_LE(payload.size(), LONGEST_SHORT);
        return char(0x80 | opcode) + QByteArray(1, char(payload.size())) + payload;
    }

protected:
    void incomingConnection(qintptr descriptor) override {
        client = new QSslSocket(this);
        client->setSocketDescriptor(descriptor);
        connect(client, &QIODevice::readyRead, this, [this] { on_ready_read(); });
        if (is_secure()) {
            client->setSslConfiguration(tls);
            client->startServerEncryption();
        }
    }

private:
    QSslConfiguration tls;
    QByteArray request;

    [[nodiscard]] bool is_secure() const { return !tls.localCertificate().isNull(); }

    void on_ready_read() {
        if (request.endsWith("\r\n\r\n")) {
            return;
        }
        request += client->readAll();
        if (!request.endsWith("\r\n\r\n")) {
            return;
        }
        const QByteArray name = "\r\nSec-WebSocket-Key: ";
        const qsizetype at = request.toLower().indexOf(name.toLower()) + name.size();
        const QByteArray key = request.mid(at, request.indexOf('\r', at) - at);
        const QByteArray accept = QCryptographicHash::hash(
            key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11", QCryptographicHash::Sha1);
        client->write(
            "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
            "Sec-WebSocket-Accept: " +
            accept.toBase64() + "\r\n\r\n");
    }
};

}  // namespace test
