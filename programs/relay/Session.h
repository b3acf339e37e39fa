// One client as the hub knows it, and the way to answer it. The hub never sees a socket.
#pragma once

#include "Limits.h"
#include "Reason.h"
#include "TokenBucket.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace relay {

struct Group;

/// Where the hub's answers go.
class Peer {
public:
    virtual ~Peer() = default;

    /// Queues one text frame; flush() sends what is queued.
    virtual void send(std::string_view frame) = 0;
    virtual void flush() = 0;
    /// Bytes that were sent and wait for the client to take them.
    [[nodiscard]] virtual std::size_t queued() const noexcept = 0;
    /// Sends a close frame as the last thing; what the client still sends is not looked at.
    virtual void close(CloseCode code, std::string_view reason) = 0;
};

struct Session {
    Session(Peer& sessionPeer, std::string sessionAddress, const Limits& limits, TimePoint now);

    [[nodiscard]] bool is_member() const noexcept { return group != nullptr; }

    Peer& peer;
    const std::string address;
    std::string name;           ///< group:user, empty before the login
    Group* group = nullptr;     ///< null before the login and after the leave
    Group* waitsFor = nullptr;  ///< the group whose answer to the login is still to come
    bool flagClosed = false;
    bool flagChatTold = false;  ///< knows that its chat texts are being dropped
    bool flagForged = false;    ///< has sent what only the relay may say; logged once
    bool flagAwaitsPong = false;
    TokenBucket frames;
    TokenBucket bytes;
    TokenBucket chat;
    TimePoint tmEntered;
    TimePoint tmHeard;
    TimePoint tmPinged;
};

}  // namespace relay
