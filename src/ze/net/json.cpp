#include "ze/net/json.h"

#include "ze/log/pp.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QVariant>

#include <cmath>
#include <limits>

namespace ze::net::json {

using namespace Qt::StringLiterals;

namespace {

constexpr unsigned INDENT_STEP = 4;

bool is_nested(const QJsonValue& value) {
    return value.isObject() || value.isArray();
}

QString as_text(const QJsonValue& value) {
    return value.toVariant().toString();
}

}  // namespace

void dump_object(unsigned indent, const QJsonObject& object) {
    for (auto it = object.constBegin(); it != object.constEnd(); ++it) {
        const QJsonValue value = it.value();
        if (is_nested(value)) {
            pp_format(log::DEBUG, indent, "$:", it.key());
            dump_value(indent + INDENT_STEP, value);
        } else {
            pp_format(log::DEBUG, indent, "$: $", it.key(), as_text(value));
        }
    }
}

void dump_array(unsigned indent, const QJsonArray& array) {
    long long index = 0;
    for (const QJsonValue value : array) {
        if (is_nested(value)) {
            pp_format(log::DEBUG, indent, "[$]:", index);
            dump_value(indent + INDENT_STEP, value);
        } else {
            pp_format(log::DEBUG, indent, "[$]: $", index, as_text(value));
        }
        ++index;
    }
}

void dump_value(unsigned indent, const QJsonValue& value) {
    switch (value.type()) {
        case QJsonValue::Undefined:
            return pp_format(log::DEBUG, indent, "<undefined>");
        case QJsonValue::Null:
            return pp_format(log::DEBUG, indent, "null");
        case QJsonValue::Bool:
        case QJsonValue::Double:
            return pp_format(log::DEBUG, indent, "$", as_text(value));
        case QJsonValue::String:
            return pp_format(log::DEBUG, indent, "\"$\"", value.toString());
        case QJsonValue::Array:
            return dump_array(indent, value.toArray());
        case QJsonValue::Object:
            return dump_object(indent, value.toObject());
    }
    pp_format(log::DEBUG, indent, "<unknown>");
}

void dump_document(unsigned indent, const QJsonDocument& document) {
    if (document.isEmpty()) {
        pp_format(log::DEBUG, indent, "<empty json document>");
    } else if (document.isObject()) {
        pp_format(log::DEBUG, indent, "object:");
        dump_object(indent + INDENT_STEP, document.object());
    } else if (document.isArray()) {
        pp_format(log::DEBUG, indent, "array:");
        dump_array(indent + INDENT_STEP, document.array());
    } else {
        pp_format(log::ERROR, indent, "<invalid json document>");
    }
}

QString to_json_string(const QJsonObject& object, QJsonDocument::JsonFormat format) {
    return QString::fromUtf8(QJsonDocument(object).toJson(format));
}

float to_float(const QJsonValue& value) noexcept {
    const double number = value.toDouble(0);
    // A cast of a double that no float can hold is undefined.
    if (std::abs(number) > static_cast<double>(std::numeric_limits<float>::max())) {
        constexpr float INFINITE = std::numeric_limits<float>::infinity();
        return number > 0 ? INFINITE : -INFINITE;
    }
    return static_cast<float>(number);
}

std::optional<bool> to_bool(const QJsonValue& value) {
    if (value.isBool()) {
        return value.toBool();
    }
    if (value.isDouble()) {
        return value.toInt(0) != 0;
    }
    const QString word = value.toString().trimmed().toLower();
    if (word == "true"_L1 || word == "1"_L1) {
        return true;
    }
    if (word == "false"_L1 || word == "0"_L1) {
        return false;
    }
    return std::nullopt;
}

}  // namespace ze::net::json
