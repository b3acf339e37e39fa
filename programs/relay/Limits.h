// What one client, one address and all together may take. The defaults are such that a player
// whose mouse reports 1,000 times a second, at about 200 bytes a message, never meets one.
#pragma once

#include <chrono>
#include <cstddef>

namespace relay {

using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;

struct Limits {
    std::size_t connections = 10000;  ///< in all; the descriptors of the process bound it too
    /// An IPv6 /64 network counts as one address, and a /56 network as four.
    std::size_t connectionsPerAddress = 64;
    /// Accepted, but not yet through TLS and upgrade. When they are as many, a newcomer takes the
    /// place of an old one. Where no address holds more than another, each has the time that so
    /// many take to come: half a second at 2,000 a second, about what one processor can answer.
    std::size_t halfOpen = 1024;
    std::size_t halfOpenPerAddress = 64;  ///< the same, of one address
    /// New ones from one address, all at once or evenly: each costs the handshake of TLS.
    std::size_t connectsPerMinute = 600;
    /// Per connection, control frames and the pieces of a message included; empty pieces, which the
    /// WebSocket layer swallows, count by their bytes alone.
    std::size_t framesPerSecond = 2500;
    std::size_t bytesPerSecond = 1 << 20;  ///< per connection, as they come off the wire
    std::size_t burstSeconds = 4;        ///< a stalled line may deliver this much of either at once
    std::size_t frameSize = 16 << 10;    ///< bytes of one message
    std::size_t queuedOutput = 1 << 20;  ///< bytes not yet taken by the kernel, per connection
    std::size_t queuedTotal = 256 << 20;  ///< above this in all, each connection has its share only
    std::size_t failedLogins = 10;        ///< per address and minute
    std::size_t failedLoginsPerGroup = 12;  ///< and minute, of strangers; then logins wait
    std::size_t chatLength = 500;           ///< characters of one chat text
    std::size_t chatBurst = 5;              ///< chat texts at once; then one a second

    std::chrono::seconds handshake{10};  ///< from the accept to the end of the upgrade
    std::chrono::seconds login{10};      ///< from the upgrade to the login
    std::chrono::seconds turn{30};       ///< more, for a login that waits for its turn at a group
    std::chrono::seconds ping{15};       ///< between two heartbeats
    std::chrono::seconds silence{30};    ///< without a frame, then the client is closed
};

}  // namespace relay
