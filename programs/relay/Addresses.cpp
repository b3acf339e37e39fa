#include "Addresses.h"

#include "address_key.h"

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
    change_each(address, now,
                [now](Entry& came) { static_cast<void>(came.connects.take(1, now)); });
}

bool Addresses::may_connect(const std::string& address, TimePoint now) const noexcept {
    return !is_any(address, [now](const Entry& coming) { return !coming.connects.has(1, now); });
}

void Addresses::enter(const std::string& address, TimePoint now) {
    change_each(address, now, [](Entry& entered) { ++entered.connections; });
}

void Addresses::leave(const std::string& address, TimePoint now) {
    change_each(address, now, [](Entry& left) {
        left.connections -= std::min<std::size_t>(left.connections, 1);
    });
}

bool Addresses::is_full(const std::string& address) const noexcept {
    return is_any(address, [this](const Entry& held) {
        return held.connections >= held.shares * limits_.connectionsPerAddress;
    });
}

bool Addresses::is_at_end(const std::string& address) const noexcept {
    return is_any(address, [this](const Entry& held) {
        return held.connections >=
               held.shares * (limits_.connectionsPerAddress + limits_.halfOpenPerAddress);
    });
}

void Addresses::fail_login(const std::string& address, TimePoint now) {
    change_each(address, now,
                [now](Entry& failed) { static_cast<void>(failed.failures.take(1, now)); });
}

bool Addresses::may_log_in(const std::string& address, TimePoint now) const noexcept {
    return !is_any(address, [now](const Entry& asking) { return !asking.failures.has(1, now); });
}

Addresses::Entry& Addresses::entry(const std::string& key, std::size_t shares, TimePoint now) {
    return entries_
        .try_emplace(
            key, Entry{shares, 0, TokenBucket::per_minute(shares * limits_.connectsPerMinute, now),
                       TokenBucket::per_minute(shares * limits_.failedLogins, now)})
        .first->second;
}

template <class Change>
void Addresses::change_each(const std::string& address, TimePoint now, Change change) {
    change(entry(address, 1, now));
    if (const std::string network = network_key(address); network != address) {
        change(entry(network, NETWORK_SHARES, now));
    }
}

template <class Test>
bool Addresses::is_any(const std::string& address, Test test) const noexcept {
    const auto is_one = [this, &test](const std::string& key) {
        const auto found = entries_.find(key);
        return found != entries_.end() && test(found->second);
    };
    return is_one(address) || is_one(network_key(address));
}

void Addresses::sweep(TimePoint now) {
    std::erase_if(entries_, [now](const auto& item) { return item.second.is_idle(now); });
    sweepAt_ = std::max(MIN_SWEEP, 2 * entries_.size());
}

}  // namespace relay
