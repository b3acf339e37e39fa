#include "ze/net/PlayMessage.h"

#include "ze/log/pp.h"
#include "ze/math/vec_text.h"
#include "ze/net/GAbstractMessage.h"
#include "ze/net/PLAY_CMD.h"
#include "ze/net/json.h"
#include "ze/tools/format.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QKeySequence>

namespace ze::net {

using namespace Qt::StringLiterals;

PlayMessage::PlayMessage(QJsonObject& object) noexcept : payload(&object), commitTarget(nullptr) {}

PlayMessage::PlayMessage(QJsonObject& object, QJsonValue& target) noexcept
    : payload(&object), commitTarget(&target) {}

PlayMessage::~PlayMessage() {
    if (commitTarget != nullptr) {
        QJsonValue value(*payload);
        commitTarget->swap(value);
    }
}

void PlayMessage::set_cmd(const QString& cmd) {
    payload->insert("cmd"_L1, cmd);
}

void PlayMessage::set_name(const QString& name) {
    payload->insert("name"_L1, name);
}

void PlayMessage::set_string(const QString& key, const QString& value) {
    payload->insert(key, value);
}

void PlayMessage::set_std_string(const QString& key, const std::string& value) {
    payload->insert(key, QString::fromStdString(value));
}

void PlayMessage::set_int(const QString& key, int value) {
    payload->insert(key, value);
}

void PlayMessage::set_float(const QString& key, float value) {
    payload->insert(key, static_cast<double>(value));
}

void PlayMessage::set_double(const QString& key, double value) {
    payload->insert(key, value);
}

void PlayMessage::set_bool(const QString& /*key*/, bool /*value*/) {}

void PlayMessage::set_vector2(const QString& key, const glm::vec2& value) {
    set_std_string(key, math::to_string(value));
}

void PlayMessage::set_orient(math::ORIENT2D::Type orient) {
    set_std_string(u"orient"_s, math::ORIENT2D::to_string(orient));
}

void PlayMessage::set_key_sequence(const QKeySequence& keys, bool pressed) {
    set_cmd(pressed ? PLAY_CMD::KEY_PRESSED : PLAY_CMD::KEY_RELEASED);
    set_string(u"keySequence"_s, keys.toString(QKeySequence::NativeText));
}

bool PlayMessage::is_cmd(const QString& cmd) const {
    return is_string(u"cmd"_s, cmd);
}

bool PlayMessage::is_cmd_start() const {
    return is_cmd(PLAY_CMD::START);
}

bool PlayMessage::is_cmd_stop() const {
    return is_cmd(PLAY_CMD::STOP);
}

bool PlayMessage::is_cmd_setPos() const {
    return is_cmd(PLAY_CMD::SET_POS);
}

bool PlayMessage::is_cmd_key_pressed() const {
    return is_cmd(PLAY_CMD::KEY_PRESSED);
}

bool PlayMessage::is_cmd_orient() const {
    return is_cmd(PLAY_CMD::ORIENTATION);
}

bool PlayMessage::is_cmd_out_of_field() const {
    return is_cmd(PLAY_CMD::OUT_OF_FIELD);
}

bool PlayMessage::is_cmd_travel() const {
    return is_cmd(PLAY_CMD::TRAVEL);
}

bool PlayMessage::is_cmd_setBall() const {
    return is_cmd(PLAY_CMD::SET_BALL);
}

bool PlayMessage::is_name(const QString& name) const {
    return is_string(u"name"_s, name);
}

bool PlayMessage::is_string(const QString& key, const QString& text) const {
    const QJsonValue value = payload->value(key);
    return value.isString() && value.toString() == text;
}

bool PlayMessage::is_std_string(const QString& key, const std::string& text) const {
    return is_string(key, QString::fromStdString(text));
}

QString PlayMessage::text_of(const QString& key, const char* operation) const {
    if (key.isEmpty()) {
        pp_error("PlayMessage::$('') ???", operation);
        return {};
    }
    const QString text = payload->value(key).toString();
    if (text.isEmpty()) {
        pp_format(log::ERROR, 0, "PlayMessage::$('$') , no value", operation, key);
    }
    return text;
}

std::optional<QJsonValue> PlayMessage::number_of(const QString& key, const char* operation) const {
    const QJsonValue value = payload->value(key);
    if (value.isDouble()) {
        return value;
    }
    pp_format(log::ERROR, 0, "PlayMessage::$, '$' missing or invalid", operation, key);
    return std::nullopt;
}

QString PlayMessage::get_name() const {
    return get_string(u"name"_s);
}

QString PlayMessage::get_string(const QString& key) const {
    return text_of(key, "get_string");
}

std::string PlayMessage::get_std_string(const QString& key) const {
    return str::to_utf8(text_of(key, "get_std_string"));
}

int PlayMessage::get_int(const QString& key, int def) const {
    const auto number = number_of(key, "get_int");
    return number ? number->toInt(0) : def;
}

float PlayMessage::get_float(const QString& key, float def) const {
    const auto number = number_of(key, "get_float");
    return number ? json::to_float(*number) : def;
}

double PlayMessage::get_double(const QString& key, double def) const {
    const auto number = number_of(key, "get_double");
    return number ? number->toDouble() : def;
}

bool PlayMessage::get_bool(const QString& key, bool def) const {
    const auto value = json::to_bool(payload->value(key));
    if (!value) {
        pp_error("PlayMessage::get_bool, '$' missing or invalid", key);
    }
    return value.value_or(def);
}

glm::vec2 PlayMessage::get_vector2(const QString& key, const glm::vec2& def) const {
    return math::from_string(get_std_string(key), def);
}

math::ORIENT2D::Type PlayMessage::get_orient() const {
    return math::ORIENT2D::from_string(get_std_string(u"orient"_s));
}

QKeySequence PlayMessage::get_key_sequence() const {
    return QKeySequence::fromString(get_string(u"keySequence"_s), QKeySequence::PortableText);
}

QString PlayMessage::as_string() const {
    QString text;
    for (auto it = payload->constBegin(); it != payload->constEnd(); ++it) {
        text += str::qprintF("'$'='$', ", it.key(),
                             GAbstractMessage::value_to_string(it.value(), true));
    }
    text.chop(2);
    return text;
}

void PlayMessage::show(unsigned indent) const {
    constexpr unsigned INDENT_STEP = 4;
    pp_format(log::DEBUG, indent, "PlayMessage, keys:$", static_cast<long long>(payload->size()));
    for (auto it = payload->constBegin(); it != payload->constEnd(); ++it) {
        pp_format(log::DEBUG, indent + INDENT_STEP, "'$'='$'", it.key(),
                  GAbstractMessage::value_to_string(it.value(), true));
    }
}

}  // namespace ze::net
