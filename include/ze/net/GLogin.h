// The first message of a client: enters the group named in front of the colon of `from`.
#pragma once

#include "ze/net/GAbstractMessage.h"

namespace ze::net {

class GLogin : public GAbstractMessage {
public:
    QString pw;  ///< password, in clear on the wire and in the log

    GLogin();

    [[nodiscard]] QString to_string() const override;
    void from_json(const QJsonObject& object) override;
    void to_json(QJsonObject& object) const override;
};

}  // namespace ze::net
