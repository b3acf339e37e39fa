#include "ze/net/GWebSocket.h"

#include "ze/log/pp.h"
#include "ze/net/json.h"

#include <QUrl>
#include <QtGlobal>

#include <chrono>
#include <utility>

namespace ze::net {

namespace {

// Far beyond any message of the game; what is longer makes Qt close the connection.
constexpr quint64 MAX_INCOMING_BYTES = 16ULL * 1024 * 1024;

// Far beyond what the game ever has on its way: the other end has stopped reading.
constexpr qint64 MAX_UNSENT_BYTES = 4LL * 1024 * 1024;

constexpr std::chrono::seconds CLOSE_PATIENCE{2};

#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
constexpr auto SIGNAL_ERROR = &QWebSocket::errorOccurred;
#else
constexpr auto SIGNAL_ERROR = qOverload<QAbstractSocket::SocketError>(&QWebSocket::error);
#endif

}  // namespace

GWebSocket::GWebSocket() {
    pp("GWebSocket::GWebSocket, this:$", QString::number(reinterpret_cast<quintptr>(this), 16));
    setMaxAllowedIncomingFrameSize(MAX_INCOMING_BYTES);
    setMaxAllowedIncomingMessageSize(MAX_INCOMING_BYTES);
    connect_signals();
}

GWebSocket::~GWebSocket() {
    // ~QWebSocket closes an open connection and still emits `disconnected`; by then the listeners
    // and closeStage are gone.
    disconnect(this, nullptr, this, nullptr);
}

void GWebSocket::connect_signals() {
    timerClose.setSingleShot(true);
    connect(&timerClose, &QTimer::timeout, this, [this] {
        if (state() == QAbstractSocket::ClosingState) {
            abort();
        }
    });
    connect(this, &QWebSocket::connected, this, [this] { on_connected(); });
    connect(this, &QWebSocket::disconnected, this, [this] { on_disconnected(); });
    connect(this, &QWebSocket::textMessageReceived, this,
            [this](const QString& text) { on_text(text); });
    connect(this, &QWebSocket::sslErrors, this,
            [this](const QList<QSslError>& errors) { listenerSSL.fire_event(errors); });
    connect(this, SIGNAL_ERROR, this,
            [this](QAbstractSocket::SocketError code) { on_error(code); });
}

void GWebSocket::close(QWebSocketProtocol::CloseCode code, const QString& reason) {
    closeStage = 1;
    QWebSocket::close(code, reason);
    // Qt sends first what is unsent, and waits for ever where the other end does not read.
    timerClose.start(CLOSE_PATIENCE);
}

bool GWebSocket::is_connected() const {
    return state() == QAbstractSocket::ConnectedState;
}

qint64 GWebSocket::send_object(const QJsonObject& object) {
    check_unsent_later();
    if (unsent_bytes() > MAX_UNSENT_BYTES) {
        return 0;
    }
    return sendTextMessage(json::to_json_string(object, QJsonDocument::Compact));
}

qint64 GWebSocket::unsent_bytes() const {
    // QWebSocket::bytesToWrite knows nothing of what is encrypted and waits in a socket below.
    qint64 count = 0;
    for (const QAbstractSocket* const socket : findChildren<QAbstractSocket*>()) {
        count += socket->bytesToWrite();
    }
    return count;
}

void GWebSocket::watch_unsent() {
    // Qt answers a protocol ping, and TLS a request for new keys, without telling: what is read may
    // have left something to send.
    for (const QAbstractSocket* const socket : findChildren<QAbstractSocket*>()) {
        connect(socket, &QIODevice::readyRead, this, [this] { check_unsent_later(); });
    }
}

void GWebSocket::check_unsent_later() {
    // Whoever reads or sends need not reckon with the end of the connection in the midst of it. One
    // check does for all that an event reads and sends.
    if (std::exchange(flagCheck, true)) {
        return;
    }
    QMetaObject::invokeMethod(
        this, [this] { check_unsent(); }, Qt::QueuedConnection);
}

void GWebSocket::check_unsent() {
    flagCheck = false;
    if (unsent_bytes() <= MAX_UNSENT_BYTES) {
        return;
    }
    pp_error("GWebSocket, more than 4 MiB unsent, the other end does not read, connection closed");
    abort();  // the frame of a closing handshake would wait behind the rest
}

void GWebSocket::on_connected() {
    closeStage = 0;
    timerClose.stop();
    watch_unsent();
    listenerConnected.fire_event(NO_PAYLOAD{});
}

void GWebSocket::on_disconnected() {
    pp("GWebSocket::GWebSocket, SIGNAL, QWebSocket::disconnected, this:$",
       QString::number(reinterpret_cast<quintptr>(this), 16));
    if (closeStage > 1) {
        return;
    }
    closeStage = 2;
    listenerDisconnected.fire_event(NO_PAYLOAD{});
}

void GWebSocket::on_text(const QString& text) {
    listenerText.fire_event(text);
    // A document that is broken or of another shape gives an empty object.
    listenerObject.fire_event(QJsonDocument::fromJson(text.toUtf8()).object());
}

void GWebSocket::on_error(QAbstractSocket::SocketError code) {
    pp("GWebSocket::GWebSocket, SIGNAL, QAbstractSocket::SocketError, error:$",
       static_cast<int>(error()));
    listenerError.fire_event(code);
}

}  // namespace ze::net
