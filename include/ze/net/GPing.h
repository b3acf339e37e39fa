// The server's heartbeat. The client answers each with a GPong and never starts one.
#pragma once

#include "ze/net/GAbstractMessage.h"

namespace ze::net {

class GPing : public GAbstractMessage {
public:
    GPing();

    [[nodiscard]] QString to_string() const override;
};

}  // namespace ze::net
