// An error that the server reports; the client shows it and takes no other action.
#pragma once

#include "ze/net/GAbstractMessage.h"

namespace ze::net {

class GErrorMsg : public GAbstractMessage {
public:
    int code = 0;  ///< the server's own number
    QString text;

    GErrorMsg();

    [[nodiscard]] QString to_string() const override;
    void from_json(const QJsonObject& object) override;
    void to_json(QJsonObject& object) const override;
};

}  // namespace ze::net
