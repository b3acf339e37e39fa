// The connections that are not yet through TLS and upgrade. Anybody can begin a handshake and stand
// still, so a newcomer is never refused for want of a place: who holds the most gives one up.
#pragma once

#include "Limits.h"
#include "address_key.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace relay {

/// `Who` names a connection; it is copied and compared.
template <class Who>
class Handshakes {
public:
    explicit Handshakes(const Limits& limits) noexcept : limits_(limits) {}

    /// `address` as address_key() writes it.
    void enter(Who who, const std::string& address) {
        entries_.push_back({who, take(addresses_, address), take(networks_, network_key(address))});
    }

    void leave(Who who) noexcept {
        const auto found = std::find_if(entries_.begin(), entries_.end(),
                                        [who](const Entry& entry) { return entry.who == who; });
        if (found != entries_.end()) {
            give_back(addresses_, *found->address);
            give_back(networks_, *found->network);
            entries_.erase(found);
        }
    }

    [[nodiscard]] std::size_t size() const noexcept { return entries_.size(); }

    /// Who has to go before one from `address` enters: the oldest of that address if it has its
    /// share, else the first of all if there is no place left. Nothing while there is one.
    [[nodiscard]] std::optional<Who> in_the_way_of(const std::string& address) const noexcept {
        const auto own = addresses_.find(address);
        if (own != addresses_.end() && own->second >= limits_.halfOpenPerAddress) {
            return choose([&own](const Entry& entry) { return entry.address == &*own; });
        }
        return size() >= limits_.halfOpen ? first_to_go() : std::nullopt;
    }

    /// Of the network that holds the most the address that holds the most, and of that the oldest:
    /// a flood pushes out its own, and who came alone is safe while any network holds more. If
    /// each holds one, the oldest goes: it has had the most time.
    [[nodiscard]] std::optional<Who> first_to_go() const noexcept {
        return choose([](const Entry&) { return true; });
    }

private:
    using Shares = std::unordered_map<std::string, std::size_t>;  ///< how many each key holds
    using Share = Shares::value_type;                             ///< stays where it is

    struct Entry {
        Who who;
        Share* address;
        Share* network;

        [[nodiscard]] auto weight() const noexcept {
            return std::pair(network->second, address->second);
        }
    };

    [[nodiscard]] static Share* take(Shares& shares, const std::string& key) {
        Share& taken = *shares.try_emplace(key, 0).first;
        ++taken.second;
        return &taken;
    }

    static void give_back(Shares& shares, Share& share) noexcept {
        if (--share.second == 0) {
            shares.erase(shares.find(share.first));
        }
    }

    template <class Filter>
    [[nodiscard]] std::optional<Who> choose(Filter filter) const noexcept {
        const Entry* chosen = nullptr;
        for (const Entry& entry : entries_) {
            if (filter(entry) && (!chosen || entry.weight() > chosen->weight())) {
                chosen = &entry;
            }
        }
        return chosen ? std::optional(chosen->who) : std::nullopt;
    }

    const Limits& limits_;
    std::vector<Entry> entries_;  ///< the oldest first
    Shares addresses_;
    Shares networks_;
};

}  // namespace relay
