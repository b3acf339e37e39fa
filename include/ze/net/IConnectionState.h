// Whether a connection stands, and nothing else: what the play field may know of the socket.
#pragma once

namespace ze::net {

class IConnectionState {
public:
    virtual ~IConnectionState() = default;

    [[nodiscard]] virtual bool is_connected() const = 0;
};

}  // namespace ze::net
