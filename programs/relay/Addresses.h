// What each client address takes: its connections, how often it comes, and its failed logins. Each
// IPv6 address counts for its wider network too. Holds no socket.
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

    /// A new connection, which still has its handshake before it.
    void connect(const std::string& address, TimePoint now);
    /// False while the address has come too often.
    [[nodiscard]] bool may_connect(const std::string& address, TimePoint now) const noexcept;

    /// One that has its handshake behind it, until it leaves.
    void enter(const std::string& address, TimePoint now);
    void leave(const std::string& address, TimePoint now);
    /// True when the address has all it may hold.
    [[nodiscard]] bool is_full(const std::string& address) const noexcept;
    /// True when it has so many above that as may be on their way out.
    [[nodiscard]] bool is_at_end(const std::string& address) const noexcept;

    void fail_login(const std::string& address, TimePoint now);
    /// False while the address has failed too often.
    [[nodiscard]] bool may_log_in(const std::string& address, TimePoint now) const noexcept;

    [[nodiscard]] std::size_t size() const noexcept { return entries_.size(); }

private:
    struct Entry {
        std::size_t shares = 1;  ///< how many times what one address may take
        std::size_t connections = 0;
        TokenBucket connects;
        TokenBucket failures;

        /// Whether to forget the address would change nothing.
        [[nodiscard]] bool is_idle(TimePoint now) const noexcept;
    };

    Entry& entry(const std::string& key, std::size_t shares, TimePoint now);
    /// Calls `change` with the entry of the address and that of its wider network, if it has one.
    template <class Change>
    void change_each(const std::string& address, TimePoint now, Change change);
    /// Whether `test` holds for an entry of these.
    template <class Test>
    [[nodiscard]] bool is_any(const std::string& address, Test test) const noexcept;
    void sweep(TimePoint now);

    const Limits& limits_;
    std::unordered_map<std::string, Entry> entries_;  ///< addresses and wider networks
    std::size_t sweepAt_ = 1024;  ///< entries at which the idle ones are looked for
};

}  // namespace relay
