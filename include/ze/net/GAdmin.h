// A command of the server to the client; the client logs it and takes no other action.
#pragma once

#include "ze/net/GAbstractMessage.h"

#include <QJsonValue>

namespace ze::net {

class GAdmin : public GAbstractMessage {
public:
    QString cmd;
    QJsonValue payload;  ///< any JSON value, null in a fresh message

    GAdmin();

    [[nodiscard]] QString to_string() const override;
    void from_json(const QJsonObject& object) override;
    void to_json(QJsonObject& object) const override;

    /// Logs the message as indented JSON, line by line at debug level, `indent` blanks in front.
    void show(unsigned indent) const;
};

}  // namespace ze::net
