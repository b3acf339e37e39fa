#include "Addresses.h"

#include <algorithm>

namespace relay {

namespace {

constexpr std::size_t MIN_SWEEP = 1024;

}  // namespace

bool Addresses::Entry::is_idle(TimePoint now) const noexcept {
    return connections == 0 && connects.is_full(now) && failures.is_full(now);
}

void Addresses::connect(const std::string& address, TimePoint now) {
    if (entries_.size() >= sweepAt_) {
        sweep(now);
    }
    Entry& entered = entry(address, now);
    ++entered.connections;
    ++entered.halfOpen;
    static_cast<void>(entered.connects.take(1, now));
}

void Addresses::finish_handshake(const std::string& address) noexcept {
    const auto found = entries_.find(address);
    if (found != entries_.end()) {
        found->second.halfOpen -= std::min<std::size_t>(found->second.halfOpen, 1);
    }
}

void Addresses::disconnect(const std::string& address, TimePoint now) {
    const auto found = entries_.find(address);
    if (found == entries_.end()) {
        return;
    }
    Entry& left = found->second;
    left.connections -= std::min<std::size_t>(left.connections, 1);
    if (left.is_idle(now)) {
        entries_.erase(found);
    }
}

bool Addresses::is_over_limit(const std::string& address) const noexcept {
    const auto found = entries_.find(address);
    return found != entries_.end() && found->second.connections > limits_.connectionsPerAddress;
}

bool Addresses::is_at_end(const std::string& address) const noexcept {
    const auto found = entries_.find(address);
    return found != entries_.end() &&
           found->second.connections >= limits_.connectionsPerAddress + limits_.halfOpenPerAddress;
}

bool Addresses::may_connect(const std::string& address, TimePoint now) const noexcept {
    const auto found = entries_.find(address);
    return found == entries_.end() || found->second.connects.has(1, now);
}

bool Addresses::may_begin_handshake(const std::string& address) const noexcept {
    const auto found = entries_.find(address);
    return found == entries_.end() || found->second.halfOpen < limits_.halfOpenPerAddress;
}

void Addresses::fail_login(const std::string& address, TimePoint now) {
    static_cast<void>(entry(address, now).failures.take(1, now));
}

bool Addresses::may_log_in(const std::string& address, TimePoint now) const noexcept {
    const auto found = entries_.find(address);
    return found == entries_.end() || found->second.failures.has(1, now);
}

Addresses::Entry& Addresses::entry(const std::string& address, TimePoint now) {
    return entries_
        .try_emplace(address, Entry{0, 0, TokenBucket::per_minute(limits_.connectsPerMinute, now),
                                    TokenBucket::per_minute(limits_.failedLogins, now)})
        .first->second;
}

void Addresses::sweep(TimePoint now) {
    std::erase_if(entries_, [now](const auto& item) { return item.second.is_idle(now); });
    sweepAt_ = std::max(MIN_SWEEP, 2 * entries_.size());
}

}  // namespace relay
