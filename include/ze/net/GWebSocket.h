// The client's one connection to the relay: a QWebSocket whose signals become listeners and whose
// text frames become JSON objects. It knows no messages and never reconnects by itself.
#pragma once

#include "ze/net/IConnectionState.h"
#include "ze/tools/Listener.h"

#include <QAbstractSocket>
#include <QJsonObject>
#include <QList>
#include <QSslError>
#include <QTimer>
#include <QWebSocket>
#include <QWebSocketProtocol>

namespace ze::net {

class GWebSocket : public QWebSocket, public IConnectionState {
public:
    Listener<NO_PAYLOAD> listenerConnected;
    Listener<NO_PAYLOAD> listenerDisconnected;  ///< once per connection
    Listener<QString> listenerText;             ///< each text frame as it came
    /// After `listenerText`: the frame's object; empty if the frame is broken JSON or no object.
    Listener<QJsonObject> listenerObject;
    Listener<QAbstractSocket::SocketError> listenerError;
    Listener<QAbstractSocket::SocketState> listenerState;  ///< never fired
    Listener<QList<QSslError>> listenerSSL;

    GWebSocket();
    ~GWebSocket() override;
    Q_DISABLE_COPY_MOVE(GWebSocket)

    /// Starts the closing handshake; `listenerDisconnected` tells when it is done. What has not
    /// gone out after two seconds is dropped.
    void close(QWebSocketProtocol::CloseCode code, const QString& reason);

    [[nodiscard]] bool is_connected() const override;
    explicit operator bool() const { return is_connected(); }

    /// Sends the compact text of the object as one text frame.
    /// Returns the number of bytes sent, 0 on a closed socket and beyond what may wait.
    qint64 send_object(const QJsonObject& object);

    /// What waits here until the other end reads. Beyond 4 MiB the connection is closed at once,
    /// without the closing handshake, with an error line.
    [[nodiscard]] qint64 unsent_bytes() const;

private:
    int closeStage = 0;  // 0 open or never closed, 1 close was called, 2 the disconnect was told
    QTimer timerClose;   // ends a closing handshake that the other end does not answer
    bool flagCheck = false;  // a check of what is unsent is on its way

    void connect_signals();
    void watch_unsent();
    void check_unsent_later();
    void check_unsent();
    void on_connected();
    void on_disconnected();
    void on_text(const QString& text);
    void on_error(QAbstractSocket::SocketError code);
};

}  // namespace ze::net
