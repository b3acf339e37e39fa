#include "ze/net/GErrorMsg.h"

#include "ze/net/MSG_TYPE.h"
#include "ze/tools/format.h"

#include <QJsonObject>

namespace ze::net {

using namespace Qt::StringLiterals;

GErrorMsg::GErrorMsg() : GAbstractMessage(MSG_TYPE::ERROR) {}

QString GErrorMsg::to_string() const {
    return str::qprintF("$/$, from:'$', to:'$', code:$, text:'$'", type, subType, from, to, code,
                        text);
}

void GErrorMsg::from_json(const QJsonObject& object) {
    GAbstractMessage::from_json(object);
    code = object.value("code"_L1).toInt(0);
    text = object.value("text"_L1).toString();
}

void GErrorMsg::to_json(QJsonObject& object) const {
    GAbstractMessage::to_json(object);
    object.insert("code"_L1, code);
    object.insert("text"_L1, text);
}

}  // namespace ze::net
