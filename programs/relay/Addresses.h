// What each client address takes: its connections and its failed logins. Holds no socket.
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

    void connect(const std::string& address, TimePoint now);
    void disconnect(const std::string& address, TimePoint now);
    [[nodiscard]] bool is_over_limit(const std::string& address) const noexcept;

    void fail_login(const std::string& address, TimePoint now);
    /// False while the address has failed too often.
    [[nodiscard]] bool may_log_in(const std::string& address, TimePoint now) const noexcept;

    [[nodiscard]] std::size_t size() const noexcept { return entries_.size(); }

private:
    struct Entry {
        std::size_t connections = 0;
        TokenBucket failures;
    };

    Entry& entry(const std::string& address, TimePoint now);
    void sweep(TimePoint now);

    const Limits& limits_;
    std::unordered_map<std::string, Entry> entries_;
    std::size_t sweepAt_ = 1024;  ///< entries at which the idle ones are looked for
};

}  // namespace relay
