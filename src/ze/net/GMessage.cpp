#include "ze/net/GMessage.h"

#include "ze/net/MSG_TYPE.h"
#include "ze/store/GTokenizer.h"
#include "ze/tools/format.h"

#include <QJsonObject>

namespace ze::net {

using namespace Qt::StringLiterals;

GMessage::GMessage() : GAbstractMessage(MSG_TYPE::CHAT) {}

QString GMessage::to_string() const {
    const QString envelope = GAbstractMessage::to_string();
    if (extraData.isEmpty()) {
        return str::qprintF("$, text:'$'", envelope, text);
    }
    return str::qprintF("$, text:'$', extradata:'$'", envelope, text, extraData);
}

void GMessage::from_json(const QJsonObject& object) {
    GAbstractMessage::from_json(object);
    text = object.value("text"_L1).toString();
    extraData = object.value("extraData"_L1).toString();
}

void GMessage::to_json(QJsonObject& object) const {
    GAbstractMessage::to_json(object);
    object.insert("text"_L1, text);
    object.insert("extraData"_L1, extraData);
}

std::vector<QString> GMessage::get_user_from_extra_data() const {
    const GTokenizer tokenizer(extraData, u", "_s, false, false);
    std::vector<QString> users;
    for (const QStringView token : tokenizer.tokens) {
        users.push_back(token.toString());
    }
    return users;
}

std::vector<QString> GMessage::get_user_from_extra_data_except(const QString& name) const {
    std::vector<QString> users = get_user_from_extra_data();
    std::erase(users, name);
    return users;
}

QString GMessage::get_the_user(const QString& name) const {
    const std::vector<QString> others = get_user_from_extra_data_except(name);
    return others.size() == 1 ? others.front() : QString();
}

void GMessage::set_flags(unsigned flags) {
    extraData = QString::number(flags);
}

unsigned GMessage::get_flags() const {
    return extraData.toUInt();  // gives 0 on failure
}

void GMessage::set_bit_flags(const GBits<unsigned>& flags) {
    set_flags(flags.value());
}

GBits<unsigned> GMessage::get_bit_flags() const {
    return GBits<unsigned>(get_flags());
}

}  // namespace ze::net
