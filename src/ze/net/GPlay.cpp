#include "ze/net/GPlay.h"

#include "ze/log/pp.h"
#include "ze/net/MSG_TYPE.h"
#include "ze/net/PLAY_CMD.h"
#include "ze/net/PlayMessage.h"
#include "ze/net/json.h"
#include "ze/tools/format.h"
#include "ze/tools/key_sequence.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QKeyEvent>
#include <QKeySequence>

#include <cstdint>

namespace ze::net {

using namespace Qt::StringLiterals;

GPlay::GPlay() : GAbstractMessage(MSG_TYPE::PLAY), payload(QJsonValue::Null) {}

GPlay GPlay::from_args(const QString& from, const QString& to, const QString& game) {
    GPlay play;
    play.from = from;
    play.to = to;
    play.game = game;
    return play;
}

QString GPlay::to_string() const {
    const QString content = value_to_string(payload, true);
    if (subType.isEmpty()) {
        return str::qprintF("PLAY, from:'$', to:'$', game:'$', payload:'$'", from, to, game,
                            content);
    }
    return str::qprintF("PLAY/$, from:'$', to:'$', game:'$', payload:'$'", subType, from, to, game,
                        content);
}

void GPlay::from_json(const QJsonObject& object) {
    GAbstractMessage::from_json(object);
    game = object.value("game"_L1).toString();
    payload = object.value("payload"_L1);
}

void GPlay::to_json(QJsonObject& object) const {
    GAbstractMessage::to_json(object);
    object.insert("game"_L1, game);
    // An undefined value, as a message without the key leaves it, would take the key away.
    object.insert("payload"_L1, payload.isUndefined() ? QJsonValue(QJsonValue::Null) : payload);
}

bool GPlay::is_subtype_LIST_USER() const noexcept {
    return subType == "LIST_USER"_L1;
}

namespace {

// The wire has 32 bits for a time: what stands above them is lost, here and not at the reader.
int low_32_bits(unsigned long long ms) noexcept {
    return static_cast<int>(static_cast<std::uint32_t>(ms));
}

}  // namespace

void GPlay::set_start(math::ORIENT2D::Type orient, unsigned long long ms) {
    QJsonObject object;
    PlayMessage message(object, payload);
    message.set_cmd(PLAY_CMD::START);
    message.set_orient(orient);
    message.set_int(u"msTravel"_s, low_32_bits(ms));
}

void GPlay::set_stop() {
    QJsonObject object;
    PlayMessage message(object, payload);
    message.set_cmd(PLAY_CMD::STOP);
}

void GPlay::set_travel(unsigned long long ms) {
    QJsonObject object;
    PlayMessage message(object, payload);
    message.set_cmd(PLAY_CMD::TRAVEL);
    message.set_int(u"msTravel"_s, low_32_bits(ms));
}

void GPlay::set_points(int me, int opponent) {
    QJsonObject object;
    PlayMessage message(object, payload);
    message.set_cmd(PLAY_CMD::POINTS);
    message.set_int(u"countPointsMe"_s, me);
    message.set_int(u"countPointsOpponent"_s, opponent);
}

void GPlay::set_orient(math::ORIENT2D::Type orient) {
    QJsonObject object;
    PlayMessage message(object, payload);
    message.set_cmd(PLAY_CMD::ORIENTATION);
    message.set_orient(orient);
}

void GPlay::set_ball_out_of_field(math::ORIENT2D::Type orient) {
    QJsonObject object;
    PlayMessage message(object, payload);
    message.set_cmd(PLAY_CMD::OUT_OF_FIELD);
    message.set_orient(orient);
}

void GPlay::set_ball(const glm::vec2& pos, const glm::vec2& dir, float velocity) {
    QJsonObject object;
    PlayMessage message(object, payload);
    message.set_cmd(PLAY_CMD::SET_BALL);
    message.set_vector2(u"pos"_s, pos);
    message.set_vector2(u"dir"_s, dir);
    message.set_float(u"velocity"_s, velocity);
}

void GPlay::set_key_event(const QKeyEvent* ev) {
    if (ev == nullptr) {
        pp_error("GPlay::set_key_event, ev == nullptr");
        return;
    }
    QJsonObject object;
    PlayMessage message(object, payload);
    message.set_key_sequence(keys::to_key_sequence(ev), ev->type() == QEvent::KeyPress);
}

void GPlay::set_string(const QString& key, const QString& value) {
    QJsonObject object;
    PlayMessage message(object, payload);
    message.set_cmd(PLAY_CMD::STRING);
    message.set_string(key, value);
}

QString GPlay::payload_as_string() const {
    return payload.toString();
}

int GPlay::payload_as_int(int def) const {
    if (!payload.isString()) {
        return payload.toInt(def);
    }
    bool ok = false;
    const int number = payload.toString().toInt(&ok);
    return ok ? number : def;
}

double GPlay::payload_as_double(double def) const {
    if (!payload.isString()) {
        return payload.toDouble(def);
    }
    bool ok = false;
    const double number = payload.toString().toDouble(&ok);
    return ok ? number : def;
}

bool GPlay::payload_as_bool(bool def) const {
    return json::to_bool(payload).value_or(def);
}

namespace {

template <class Element, class Convert>
std::vector<Element> convert_array(const QJsonValue& payload, Convert convert) {
    std::vector<Element> elements;
    for (const QJsonValue value : payload.toArray()) {
        elements.push_back(convert(value));
    }
    return elements;
}

}  // namespace

std::vector<QString> GPlay::payload_as_array_string() const {
    return convert_array<QString>(payload, [](const QJsonValue& v) { return v.toString(); });
}

std::vector<int> GPlay::payload_as_array_int() const {
    return convert_array<int>(payload, [](const QJsonValue& v) { return v.toInt(0); });
}

std::vector<float> GPlay::payload_as_array_float() const {
    return convert_array<float>(payload, json::to_float);
}

std::vector<double> GPlay::payload_as_array_double() const {
    return convert_array<double>(payload, [](const QJsonValue& v) { return v.toDouble(0); });
}

}  // namespace ze::net
