// The logins of strangers into one group: how often a wrong password is looked at, whoever tries
// it, and whose login waits for its turn meanwhile.
#pragma once

#include "Limits.h"
#include "TokenBucket.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace relay {

struct Session;

/// A login that was compared with the group's password and is answered at its turn.
struct Attempt {
    Session* session;
    std::string network;  ///< network_key() of its address: by this its failures count
    std::string name;
    bool flagRight;
};

class Attempts {
public:
    Attempts(const Limits& limits, TimePoint now) noexcept;

    /// A member has come from there.
    void know(const std::string& address);
    /// False for a stranger, who has to stand in line.
    [[nodiscard]] bool knows(const std::string& address) const noexcept;

    /// Puts a login into line. The result is who has to leave it, perhaps the newcomer: a former
    /// login from the same address, or the least hopeful one of a line that is full. Null if none.
    [[nodiscard]] Session* add(Attempt attempt);
    void remove(const Session& session) noexcept;
    /// The next in line, if a password may be looked at now: one whose network has failed least
    /// here, and among those the oldest and the newest by turns. To be the oldest takes patience
    /// and to be the newest takes a new connection: who has many addresses needs both, and still
    /// uses one up with each wrong password.
    [[nodiscard]] std::optional<Attempt> take(TimePoint now);
    /// When take() may have something again.
    [[nodiscard]] TimePoint next_turn() const noexcept { return failures_.when(1); }
    /// The whole line, which is empty then.
    [[nodiscard]] std::vector<Attempt> take_all() noexcept { return std::exchange(line_, {}); }

    /// A wrong password of a stranger from this network.
    void fail(const std::string& network, TimePoint now);

private:
    [[nodiscard]] std::size_t count_failures(const Attempt& attempt) const noexcept;

    TokenBucket failures_;
    std::vector<std::string> failed_;  ///< networks, the latest last
    std::vector<std::string> known_;   ///< addresses, the latest last
    std::vector<Attempt> line_;        ///< in the order of arrival
    bool flagNewest_ = false;          ///< whose turn is next among equals
};

}  // namespace relay
