#include "ze/net/GAdmin.h"

#include "ze/log/pp.h"
#include "ze/net/MSG_TYPE.h"
#include "ze/net/json.h"
#include "ze/tools/format.h"

#include <QJsonObject>

namespace ze::net {

using namespace Qt::StringLiterals;

GAdmin::GAdmin() : GAbstractMessage(MSG_TYPE::ADMIN) {}

QString GAdmin::to_string() const {
    const QString content = value_to_string(payload, true);
    if (subType.isEmpty()) {
        return str::qprintF("ADMIN, from:'$', to:'$', cmd:'$', payload:'$'", from, to, cmd,
                            content);
    }
    return str::qprintF("ADMIN/$, from:'$', to:'$', cmd:'$', payload:'$'", subType, from, to, cmd,
                        content);
}

void GAdmin::from_json(const QJsonObject& object) {
    GAbstractMessage::from_json(object);
    cmd = object.value("cmd"_L1).toString();
    payload = object.value("payload"_L1);
}

void GAdmin::to_json(QJsonObject& object) const {
    GAbstractMessage::to_json(object);
    object.insert("cmd"_L1, cmd);
    // An undefined value, as a message without the key leaves it, would take the key away.
    object.insert("payload"_L1, payload.isUndefined() ? QJsonValue(QJsonValue::Null) : payload);
}

void GAdmin::show(unsigned indent) const {
    QJsonObject object;
    to_json(object);
    const QString text = json::to_json_string(object, QJsonDocument::Indented);
    for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
        pp_format(log::DEBUG, indent, "$", line);
    }
}

}  // namespace ze::net
