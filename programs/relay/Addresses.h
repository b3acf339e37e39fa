// What each client address takes: its connections, its handshakes and its failed logins. Holds no
// socket.
#pragma once

#include "Limits.h"
#include "TokenBucket.h"

#include <cstddef>
#include <string>
#include <unordered_map>

namespace relay {

class Addresses {
public:
    explicit Addresses(const Limits& limits) noexcept : limits_(limits) {}

    /// A connection that stands in its handshake.
    void connect(const std::string& address, TimePoint now);
    void finish_handshake(const std::string& address) noexcept;
    void disconnect(const std::string& address, TimePoint now);
    [[nodiscard]] bool is_over_limit(const std::string& address) const noexcept;
    /// True when the address has all it may hold, those included that are only being told to go.
    [[nodiscard]] bool is_at_end(const std::string& address) const noexcept;
    /// False while the address has come too often.
    [[nodiscard]] bool may_connect(const std::string& address, TimePoint now) const noexcept;
    /// False while the address has as many handshakes as it may.
    [[nodiscard]] bool may_begin_handshake(const std::string& address) const noexcept;

    void fail_login(const std::string& address, TimePoint now);
    /// False while the address has failed too often.
    [[nodiscard]] bool may_log_in(const std::string& address, TimePoint now) const noexcept;

    [[nodiscard]] std::size_t size() const noexcept { return entries_.size(); }

private:
    struct Entry {
        std::size_t connections = 0;
        std::size_t halfOpen = 0;  ///< of the connections
        TokenBucket connects;
        TokenBucket failures;

        /// Whether to forget the address would change nothing.
        [[nodiscard]] bool is_idle(TimePoint now) const noexcept;
    };

    Entry& entry(const std::string& address, TimePoint now);
    void sweep(TimePoint now);

    const Limits& limits_;
    std::unordered_map<std::string, Entry> entries_;
    std::size_t sweepAt_ = 1024;  ///< entries at which the idle ones are looked for
};

}  // namespace relay
