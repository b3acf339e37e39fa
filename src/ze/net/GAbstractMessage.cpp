#include "ze/net/GAbstractMessage.h"

#include "ze/log/pp.h"
#include "ze/net/GAdmin.h"
#include "ze/net/GErrorMsg.h"
#include "ze/net/GLogin.h"
#include "ze/net/GMessage.h"
#include "ze/net/GPing.h"
#include "ze/net/GPlay.h"
#include "ze/net/GPong.h"
#include "ze/net/GWebSocket.h"
#include "ze/net/MSG_TYPE.h"
#include "ze/net/json.h"
#include "ze/tools/format.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

namespace ze::net {

using namespace Qt::StringLiterals;

QString GAbstractMessage::to_string() const {
    if (ident > 0) {
        return str::qprintF("$/$, from:'$', to:'$', ident:$", type, subType, from, to, ident);
    }
    return str::qprintF("$/$, from:'$', to:'$'", type, subType, from, to);
}

void GAbstractMessage::from_json(const QJsonObject& object) {
    type = object.value("type"_L1).toString();
    subType = object.value("subType"_L1).toString();
    from = object.value("from"_L1).toString();
    to = object.value("to"_L1).toString();
    ident = object.value("ident"_L1).toInt(0);
}

void GAbstractMessage::to_json(QJsonObject& object) const {
    object.insert("type"_L1, type);
    object.insert("subType"_L1, subType);
    object.insert("from"_L1, from);
    object.insert("to"_L1, to);
    object.insert("ident"_L1, ident);
}

namespace {

template <class Message>
GAbstractMessage* make() {
    return new Message;  // owned by the caller of create_from_json
}

struct Maker {
    const QString& word;
    GAbstractMessage* (*make)();
};

const Maker makers[] = {
    {MSG_TYPE::ERROR, make<GErrorMsg>}, {MSG_TYPE::CHAT, make<GMessage>},
    {MSG_TYPE::PING, make<GPing>},      {MSG_TYPE::PONG, make<GPong>},
    {MSG_TYPE::PLAY, make<GPlay>},      {MSG_TYPE::ADMIN, make<GAdmin>},
    {MSG_TYPE::LOGIN, make<GLogin>},
};

}  // namespace

GAbstractMessage* GAbstractMessage::create_from_json(const QJsonObject& object) {
    const QString word = object.value("type"_L1).toString();
    for (const Maker& maker : makers) {
        if (maker.word == word) {
            GAbstractMessage* const message = maker.make();
            message->from_json(object);
            return message;
        }
    }
    return nullptr;
}

void GAbstractMessage::send(GWebSocket& socket) const {
    if (!socket.isValid()) {
        pp_error("GAbstractMessage::send, !webSock.isValid()");
        return;
    }
    QJsonObject object;
    to_json(object);
    if (object.isEmpty()) {
        pp_error("GAbstractMessage::send, obj is EMTPY");
        return;
    }
    if (is_show_msg()) {
        pp_trace("GAbstractMessage::send, obj: '$'", obj_to_string(object, true));
    }
    socket.send_object(object);
}

bool GAbstractMessage::is_GPing() const noexcept {
    return is_type(MSG_TYPE::PING);
}

bool GAbstractMessage::is_GPong() const noexcept {
    return is_type(MSG_TYPE::PONG);
}

bool GAbstractMessage::is_GPlay() const noexcept {
    return is_type(MSG_TYPE::PLAY);
}

bool GAbstractMessage::is_GMessage() const noexcept {
    return is_type(MSG_TYPE::CHAT);
}

bool GAbstractMessage::is_GAdmin() const noexcept {
    return is_type(MSG_TYPE::ADMIN);
}

bool GAbstractMessage::is_bye() const noexcept {
    return subType == "bye"_L1;
}

// NOLINTNEXTLINE(readability-make-member-function-const): the signature is settled
bool GAbstractMessage::is_kind_of_broadcast() noexcept {
    return to == "*"_L1 || to == "#"_L1;
}

QString GAbstractMessage::obj_to_string(const QJsonObject& object, bool compact) {
    return json::to_json_string(object, compact ? QJsonDocument::Compact : QJsonDocument::Indented);
}

QString GAbstractMessage::value_to_string(const QJsonValue& value, bool compact) {
    switch (value.type()) {
        case QJsonValue::Object:
            return obj_to_string(value.toObject(), compact);
        case QJsonValue::Array:
            return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
        case QJsonValue::String:
            return value.toString();
        case QJsonValue::Double:
            return QString::number(value.toDouble(), 'g', 6);
        case QJsonValue::Bool:
            return value.toBool() ? u"true"_s : u"false"_s;
        default:
            return {};
    }
}

void GAbstractMessage::show_obj(const QJsonObject& object) {
    pp("$", obj_to_string(object, true));
}

}  // namespace ze::net
