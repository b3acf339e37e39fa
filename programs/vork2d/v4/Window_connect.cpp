// How the client reaches the relay, finds its opponent and loses it again.
#include "ze/log/pp.h"
#include "ze/net/GLogin.h"
#include "ze/net/GMessage.h"
#include "ze/net/GPlay.h"
#include "ze/net/GPong.h"
#include "ze/qt/components/GButton.h"

#include "PlayField.h"
#include "Window.h"
#include "vork2d/servers.h"

#include <QJsonObject>
#include <QSslError>
#include <QUrl>

#include <memory>

namespace vork2d::v4 {

using ze::net::GAbstractMessage;
using ze::net::GMessage;
using ze::net::GPlay;

void Window::attach_socket() {
    webSocket.listenerConnected += [this] {
        on_connected();
    };
    webSocket.listenerDisconnected += [this] {
        on_disconnected();
    };
    webSocket.listenerObject += [this](const QJsonObject& object) {
        on_object(object);
    };
    webSocket.listenerSSL += [this](const QList<QSslError>& errors) {
        ze::pp_trace("SSL Errors: $", errors.size());
        webSocket.ignoreSslErrors();  // a friend's relay has a certificate of its own making
    };
    webSocket.listenerError += [this](const QAbstractSocket::SocketError& error) {
        ze::pp_format(ze::log::ERROR, 0, "GWebSocket error $ => <$>", static_cast<int>(error),
                      webSocket.errorString());
    };
}

void Window::on_connect() {
    ze::pp("Window::on_connect");
    if (playField->is_state_CONNECTED1()) {
        webSocket.close(QWebSocketProtocol::CloseCodeNormal, QString());
    } else if (!playField->is_state_RUN()) {
        webSocket.open(QUrl(is_local_host() ? urlDevelopment : urlServer));
    }
}

bool Window::is_local_host() const {
    return host == servers::development_name() || host == servers::development_alias();
}

void Window::on_connected() {
    ze::pp("Window::on_connected **");
    playField->set_state_CONNECTED1(true);
    ze::net::GLogin login;
    login.from = user;
    login.to = QStringLiteral("+");
    login.pw = password;
    login.send(webSocket);
    setText(user);
}

void Window::on_disconnected() {
    ze::pp("Window::disconnected");
    playField->set_state_CONNECTED1(false);
    playField->set_state_CONNECTED2(false);
    playField->set_state_RUN(false);
    buttonStart->setText(QStringLiteral("start"));
    setText(titleBase);
    me.reset();
    opponent.reset();
    update_player_info();
}

void Window::on_object(const QJsonObject& object) {
    const std::unique_ptr<GAbstractMessage> message(GAbstractMessage::create_from_json(object));
    if (message == nullptr) {
        ze::pp_error("Window::on_object, xmsg == nullptr");
        return;
    }
    if (message->is_GPing()) {
        ze::net::GPong pong;
        pong.from = user;
        pong.to = QStringLiteral("+");
        pong.send(webSocket);
    } else if (const auto* const chat = dynamic_cast<GMessage*>(message.get())) {
        on_XMessage(*chat);
    } else if (const auto* const play = dynamic_cast<GPlay*>(message.get())) {
        playField->on_play_message(*play, ze::net::REMOTE);
    } else {
        ze::pp_error("Window::on_object, xmsg, type:<<<$>>> ?", message->type);
    }
}

void Window::on_XMessage(const GMessage& message) {
    if (message.subType == QLatin1String("welcome")) {
        ze::pp("WELCOME: '$'", message.extraData);
        me.name = user;
        const QString other = message.get_the_user(user);
        if (!other.isEmpty()) {
            pair_with(other);
        }
    } else if (message.subType == QLatin1String("join")) {
        // He who was here first tells his side, and the other one takes the opposite.
        GPlay play = make_play();
        play.set_orient(playField->side);
        send_if_connected(play);
        pair_with(message.from);
    } else if (message.is_bye()) {
        ze::pp_info("BYE");
        playField->set_state_CONNECTED2(false);
        playField->set_state_RUN(false);
    }
}

void Window::pair_with(const QString& name) {
    opponent.name = name;
    opponent.orient = ze::math::ORIENT2D::get_opposite(playField->side);
    playField->set_state_CONNECTED2(true);
    ze::pp_format(ze::log::INFO, 0, "me: {$}, opponent{$}", me, opponent);
}

}  // namespace vork2d::v4
