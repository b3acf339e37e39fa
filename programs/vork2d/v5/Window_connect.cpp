// How the client reaches the relay, logs in, finds its opponent and loses it again, and what the
// two say to each other.

#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/net/GLogin.h"
#include "ze/net/GMessage.h"
#include "ze/net/GPlay.h"
#include "ze/net/GPong.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GPanel.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GButtonGroup.h"
#include "ze/qt/components/GLineEdit.h"
#include "ze/qt/components/GListView.h"
#include "ze/qt/dialogs/GMessageBox.h"

#include "ChatLineDelegate.h"
#include "DialogConnection.h"
#include "PLAY_STATE.h"
#include "PlayField.h"
#include "Window.h"
#include "sounds.h"
#include "vork2d/servers.h"

#include <QJsonObject>
#include <QSslError>
#include <QStandardItemModel>
#include <QUrl>

#include <memory>
#include <utility>

namespace vork2d::v5 {

namespace ORIENT2D = ze::math::ORIENT2D;
using ze::net::GMessage;

namespace {

// As much as a line edit holds: no text that a player has typed is cut. Whoever sends more, or more
// often, fills no memory with it.
constexpr qsizetype CHAT_MAX_CHARACTERS = 32767;
constexpr qsizetype NAME_MAX_CHARACTERS = 300;  // twice what a relay takes

}  // namespace

QString Window::get_group(const QString& login) {
    return part_of_login(login, 0, "Window::get_group, group:user ???");
}

QString Window::get_pure_user(const QString& login) {
    return part_of_login(login, 1, "Window::get_pure_user, group:user ???");
}

void Window::post_after_ini(const QString& userName, const QString& pass, const QString& hostName,
                            bool flagLogin) {
    user = userName;
    password = pass;
    host = hostName;
    if (!flagLogin) {
        return;
    }
    ze::pp("Window::post_after_ini - flagStartDirect set, try to login ...");
    QMetaObject::invokeMethod(
        this, [this] { try_connect_via_cmd(); }, Qt::QueuedConnection);
    updateGeometry();
}

// --- the socket

void Window::attach_socket() {
    webSocket.listenerConnected += [this] {
        on_connected();
        set_status(QStringLiteral("1"), is_theme_normal() ? Qt::green : Qt::darkGreen);
    };
    webSocket.listenerDisconnected += [this] {
        on_disconnected();
        set_status(QStringLiteral("0"), Qt::transparent);
    };
    webSocket.listenerText += [](const QString&) {
    };
    webSocket.listenerObject += [this](const QJsonObject& object) {
        on_object(object);
    };
    webSocket.listenerSSL += [this](const QList<QSslError>& errors) {
        ze::pp_trace("SSL Errors: $", errors.size());
        webSocket.ignoreSslErrors();  // a friend's relay has a certificate of its own making
    };
    webSocket.listenerError += [this](const QAbstractSocket::SocketError& error) {
        if (error == QAbstractSocket::ConnectionRefusedError) {
            ze::pp_error("GWebSocket error <$> - server running ?", webSocket.errorString());
        } else {
            ze::pp_format(ze::log::ERROR, 0, "GWebSocket error $ => <$>", static_cast<int>(error),
                          webSocket.errorString());
        }
    };
}

void Window::set_status(const QString& digit, const QColor& background) {
    editStatus->setText(digit);
    editStatus->set_bg(background);
}

void Window::try_connect() {
    if (diaConn.isNull()) {
        ze::pp_error("Window::try_connect, diaConn == nullptr, ?");
        return;
    }
    if (typeUrl == TYPE_URL::NO_TYPE) {
        ze::pp_error("Window::try_connect, typeUrl == TYPE_URL::NO_TYPE");
        return;
    }
    if (playField->is_state_PLAY()) {
        ze::pp("Window::try_connect - play mode - connection not possible");
        return;
    }
    const bool development = diaConn->get_url_type() == TYPE_URL::DEVELOPMENT;
    host = development ? servers::development_name() : servers::default_name();
    ze::pp("Window::try_connect '$'", host);
    if (open(development ? urlDevelopment : urlServer)) {
        ze::pp("after try open");
    }
}

void Window::try_connect_via_cmd() {
    if (playField->is_state_PLAY()) {
        ze::pp("Window::try_connect - play mode - connection not possible");
        return;
    }
    ze::pp("Window::try_connect_via_cmd '$'", host);
    // Whoever misspells the server does not mean another one to get the password.
    const bool flagDevelopment = is_local_host() && !urlServer.isEmpty();
    open(flagDevelopment ? urlDevelopment : urlServer);
}

bool Window::open(const QString& address) {
    if (address.isEmpty()) {
        ze::pp_error("Window::open, '$' is no server, not connecting", host);
        return false;
    }
    webSocket.open(QUrl(address));
    return true;
}

void Window::disconnect() {
    ze::pp("Window::disconnect");
    webSocket.close(QWebSocketProtocol::CloseCodeNormal, QString());
}

bool Window::is_connected() const {
    return webSocket.isValid();
}

bool Window::is_alone_on_server() const {
    return playField->is_state_CONNECTED1() && !playField->is_state_CONNECTED2();
}

bool Window::is_local_host() const {
    return host == servers::development_name();
}

void Window::on_connected() {
    ze::pp("Window::on_connected **");
    set_state_bit(PLAY_STATE::CONNECTED1, true);
    buttonSend->setEnabled(true);
    if (!diaConn.isNull()) {
        user = diaConn->get_full_group_user();
        password = diaConn->get_password();
    }
    settingsNode.set(QStringLiteral("pw"), password);
    ze::qt::GApp::sync_app_settings(true);
    ze::net::GLogin login;
    login.from = user;
    login.to = QStringLiteral("+");
    login.pw = password;
    login.send(webSocket);
    setText(user);
}

void Window::on_disconnected() {
    ze::pp("Window::disconnected");
    // A refused attempt is reported as a disconnect too; then the dialog stays on its form, to try
    // again.
    const bool wasConnected = playField->is_state_CONNECTED1();
    setText(titleBase);
    buttonStart->setText(QStringLiteral("start"));
    me.reset();
    opponent.reset();
    for (const unsigned bit : {PLAY_STATE::CONNECTED1, PLAY_STATE::CONNECTED2, PLAY_STATE::PLAY}) {
        set_state_bit(bit, false);
    }
    panStack->show_stacked_widget(panPlay);
    if (!diaConn.isNull() && wasConnected) {
        diaConn->close_programmatic();
    }
    update_player_info();
}

void Window::set_state_bit(unsigned bit, bool on) {
    playField->state = on ? playField->state | bit : playField->state & ~bit;
    playField->report_state();
}

// --- pairing

void Window::on_XMessage(const GMessage& message) {
    show_chat_line(message.from, message.text);
    if (message.subType == QLatin1String("welcome")) {
        on_login(message);
        playField->play_sound(sounds::ENTER_ROOM);
    } else if (message.subType == QLatin1String("join")) {
        on_login_friend(message);
        playField->play_sound(sounds::ENTER_ROOM);
    } else if (message.is_bye()) {
        on_bye();
        playField->play_sound(sounds::LEFT_ROOM);
    } else {
        playField->play_sound(sounds::CHAT);
    }
}

void Window::on_login(const GMessage& message) {
    ze::pp("Window::on_login");
    ze::pp("WELCOME: '$'", message.extraData);
    me.name = user;
    take_sides();
    const QString other = message.get_the_user(user);
    if (!other.isEmpty()) {
        pair_with(other);
    } else {
        ze::pp_info("USER: '$'", user);
    }
    if (!diaConn.isNull()) {
        diaConn->open_waiting_page();
    } else if (is_alone_on_server()) {
        open_waiting_dialog_later();
    }
    update_player_info();
}

void Window::on_login_friend(const GMessage& message) {
    ze::pp("Window::on_login_friend");
    me.name = user;
    take_sides();
    ze::net::GPlay play = make_play();
    play.set_orient(playField->side);
    play.send(webSocket);
    pair_with(message.from);
    panStack->show_stacked_widget(panPlay);
    update_player_info();
}

void Window::pair_with(const QString& name) {
    opponent.name = name;
    set_state_bit(PLAY_STATE::CONNECTED2, true);
    ze::pp_format(ze::log::INFO, 0, "me: {$}, opponent{$}", me, opponent);
}

void Window::take_sides() {
    me.orient = playField->side;
    opponent.orient = ORIENT2D::get_opposite(playField->side);
}

void Window::on_bye() {
    ze::pp_info("BYE");
    set_state_bit(PLAY_STATE::CONNECTED2, false);
    set_state_bit(PLAY_STATE::PLAY, false);
    buttonStart->setText(QStringLiteral("start"));
}

// --- messages

void Window::on_object(const QJsonObject& object) {
    using ze::net::GAbstractMessage;
    const std::unique_ptr<GAbstractMessage> message(GAbstractMessage::create_from_json(object));
    if (message == nullptr) {
        ze::pp_error("Window::on_object, xmsg == nullptr");
        return;
    }
    if (message->is_show_msg()) {
        ze::pp("Window::on_object, xmsg, '$'", message->to_string());
    }
    if (message->is_GPing()) {
        ze::net::GPong pong;
        pong.from = user;
        pong.to = QStringLiteral("+");
        pong.send(webSocket);
    } else if (message->is_GMessage()) {
        const auto* const chat = dynamic_cast<GMessage*>(message.get());
        if (chat == nullptr) {
            ze::nullPointerHandling("programs/vork2d/v5/Window", __LINE__,
                                    QStringLiteral("msg == NULL"));
        }
        on_XMessage(*chat);
    } else if (message->is_GPlay()) {
        const auto* const play = dynamic_cast<ze::net::GPlay*>(message.get());
        if (play == nullptr) {
            ze::nullPointerHandling("programs/vork2d/v5/Window", __LINE__,
                                    QStringLiteral("msgPlay == NULL"));
        }
        ze::pp("PLAY message");
        ze::pp(play->to_string());
        playField->on_play_message(*play, ze::net::REMOTE);
    } else {
        ze::pp_error("Window::on_object, xmsg, type:<<<$>>> ?", message->type);
    }
}

void Window::send_message(const QString& text) {
    if (!webSocket.is_connected()) {
        ze::pp_error("Window::send_message, webSocket not valid !");
        return;
    }
    GMessage message;
    message.subType = QStringLiteral("text");
    message.text = text;
    message.from = user;
    message.to = QStringLiteral("#");
    message.send(webSocket);
    show_chat_line(QStringLiteral("me"), text);
}

void Window::show_chat_line(const QString& who, const QString& text) {
    QAbstractItemModel* const lines = listChat->model();
    lines->removeRows(0, lines->rowCount() - ChatLineDelegate::MAX_LINES + 1);
    const QString name =
        who.size() <= NAME_MAX_CHARACTERS ? who : who.left(NAME_MAX_CHARACTERS) + QChar(0x2026);
    listChat->gen_item(name + QLatin1Char(':') + text.left(CHAT_MAX_CHARACTERS));
    scroll_chat();
}

void Window::scroll_chat() {
    // Each scroll lays out the whole list: once for all lines of an event, and never unseen.
    if (std::exchange(flagChatScroll, true)) {
        return;
    }
    const auto scroll = [this] {
        flagChatScroll = false;
        if (listChat->isVisible()) {
            listChat->scroll_to_end();
        }
    };
    QMetaObject::invokeMethod(listChat, scroll, Qt::QueuedConnection);
}

// --- the dialog

void Window::on_dialog_connect() {
    ze::pp("Window::on_dialog_connect");
    if (playField->is_state_CONNECTED1()) {
        auto* const box = ze::qt::GMessageBox::ask_yes_no(
            this, QStringLiteral("Disconnect"),
            QStringLiteral("Do you want to disconnect from Server/Player"), QMessageBox::Question);
        box->finished_listener += [this](const int& answer) {
            if (answer == QMessageBox::Yes) {
                disconnect();
            }
        };
        return;
    }
    if (!diaConn.isNull()) {
        ze::pp_warn("Window::on_dialog_connect, diaConn ?");
        return;
    }
    open_connection_dialog();
}

void Window::on_dialog_already_connected() {
    ze::pp("Window::on_dialog_already_connected");
    if (!diaConn.isNull()) {
        ze::pp_warn("Window::on_dialog_connect, diaConn ?");
        return;
    }
    open_connection_dialog();
    diaConn->open_waiting_page();
}

void Window::open_waiting_dialog_later() {
    // A friend may come, or the relay go, before the call has its turn.
    const auto openIfStillAlone = [this] {
        if (is_alone_on_server()) {
            on_dialog_already_connected();
        }
    };
    QMetaObject::invokeMethod(this, openIfStillAlone, Qt::QueuedConnection);
}

void Window::open_connection_dialog() {
    diaConn = new DialogConnection(this);
    diaConn->setAttribute(Qt::WA_DeleteOnClose);
    diaConn->setPalette(palette());
    diaConn->setAutoFillBackground(true);
    diaConn->setFont(font());
    diaConn->ini();
    diaConn->editUser->setText(get_pure_user(user));
    diaConn->editGroup->setText(get_group(user));
    diaConn->editPassword->setText(password);
    diaConn->groupServer->set_checked(host);
    ze::pp("host '$'", host);
    diaConn->setModal(true);
    diaConn->show();
}

}  // namespace vork2d::v5
