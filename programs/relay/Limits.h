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
    /// Accepted, but not yet through TLS and upgrade. When there are this many, a newcomer takes
    /// the place of another. If each has an address of its own, it is the oldest, which has had as
    /// long as 1,024 take to come: half a second at the 2,000 a second that one processor answers.
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
    /// Per group and minute, by strangers; then logins wait.
    std::size_t failedLoginsPerGroup = 12;
    std::size_t chatLength = 500;  ///< characters of one chat text
    std::size_t chatBurst = 5;     ///< chat texts at once; then one a second

    std::chrono::seconds handshake{10};  ///< from the accept to the end of the upgrade
    std::chrono::seconds login{10};      ///< from the upgrade to the login
    std::chrono::seconds turn{30};       ///< on top of login, for its turn at a busy group
    std::chrono::seconds ping{15};       ///< between two heartbeats
    std::chrono::seconds silence{30};    ///< without a frame, then the client is closed
};

}  // namespace relay
