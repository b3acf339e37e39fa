// The client's answer to a GPing.
#pragma once

#include "ze/net/GAbstractMessage.h"

namespace ze::net {

class GPong : public GAbstractMessage {
public:
    GPong();

    [[nodiscard]] QString to_string() const override;
};

}  // namespace ze::net
