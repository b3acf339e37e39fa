#include "ze/net/GLogin.h"

#include "ze/net/MSG_TYPE.h"
#include "ze/tools/format.h"

#include <QJsonObject>

namespace ze::net {

using namespace Qt::StringLiterals;

GLogin::GLogin() : GAbstractMessage(MSG_TYPE::LOGIN) {
    subType = u"login"_s;
}

QString GLogin::to_string() const {
    return str::qprintF("$/$, from:'$', to:'$', pw:'$'", type, subType, from, to, pw);
}

void GLogin::from_json(const QJsonObject& object) {
    GAbstractMessage::from_json(object);
    pw = object.value("pw"_L1).toString();
}

void GLogin::to_json(QJsonObject& object) const {
    GAbstractMessage::to_json(object);
    object.insert("pw"_L1, pw);
}

}  // namespace ze::net
