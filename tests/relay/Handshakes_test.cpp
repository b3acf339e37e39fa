#include "Handshakes.h"

#include <deque>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using Handshakes = relay::Handshakes<int>;

relay::Limits limits_of(std::size_t all, std::size_t perAddress) {
    relay::Limits limits;
    limits.halfOpen = all;
    limits.halfOpenPerAddress = perAddress;
    return limits;
}

/// What the server does with a newcomer. Returns who had to go, or 0.
int admit(Handshakes& handshakes, int who, const std::string& address) {
    const int gone = handshakes.in_the_way_of(address).value_or(0);
    handshakes.leave(gone);
    handshakes.enter(who, address);
    return gone;
}

TEST(Handshakes, nobody_has_to_go_while_there_is_a_place) {
    const relay::Limits limits = limits_of(3, 2);
    Handshakes handshakes(limits);
    EXPECT_EQ(admit(handshakes, 1, "a"), 0);
    EXPECT_EQ(admit(handshakes, 2, "a"), 0);
    EXPECT_EQ(admit(handshakes, 3, "b"), 0);
    handshakes.leave(1);
    EXPECT_EQ(admit(handshakes, 4, "c"), 0);
    EXPECT_EQ(handshakes.size(), 3U);
}

TEST(Handshakes, an_address_that_has_its_share_pushes_out_its_own_oldest) {
    const relay::Limits limits = limits_of(8, 2);
    Handshakes handshakes(limits);
    admit(handshakes, 1, "b");
    admit(handshakes, 2, "a");
    admit(handshakes, 3, "a");
    EXPECT_EQ(admit(handshakes, 4, "a"), 2);
    EXPECT_EQ(admit(handshakes, 5, "a"), 3);
    EXPECT_EQ(handshakes.size(), 3U);
}

TEST(Handshakes, in_a_full_table_the_address_that_holds_the_most_loses_its_oldest) {
    const relay::Limits limits = limits_of(4, 8);
    Handshakes handshakes(limits);
    admit(handshakes, 1, "b");
    admit(handshakes, 2, "a");
    admit(handshakes, 3, "a");
    admit(handshakes, 4, "c");
    EXPECT_EQ(admit(handshakes, 5, "d"), 2);
    EXPECT_EQ(admit(handshakes, 6, "e"), 1) << "each holds one: the oldest of all";
}

TEST(Handshakes, in_a_full_table_a_network_counts_by_what_all_its_addresses_hold) {
    const relay::Limits limits = limits_of(5, 8);
    Handshakes handshakes(limits);
    admit(handshakes, 1, "192.0.2.1");
    admit(handshakes, 2, "192.0.2.1");
    admit(handshakes, 3, "2001:db8:0:1201::/64");
    admit(handshakes, 4, "2001:db8:0:1202::/64");
    admit(handshakes, 5, "2001:db8:0:1203::/64");
    EXPECT_EQ(admit(handshakes, 6, "2001:db8:0:1300::/64"), 3);
    EXPECT_EQ(admit(handshakes, 7, "192.0.2.2"), 1) << "both hold two: the oldest of these";
}

TEST(Handshakes, who_is_not_there_can_leave) {
    const relay::Limits limits;
    Handshakes handshakes(limits);
    handshakes.leave(1);
    EXPECT_EQ(handshakes.size(), 0U);
    EXPECT_EQ(handshakes.first_to_go(), std::nullopt);
}

/// Handshakes that nobody means to finish, beside newcomers of an address of their own each.
struct Flood {
    std::string title;
    int addresses;          ///< from so many in turn
    microseconds interval;  ///< between two of them
    int newcomersThatGetIn;
};

constexpr int NEWCOMERS = 170;

/// Time goes from one connection of the flood to the next; every 20 ms comes a newcomer, who needs
/// three round trips of 100 ms.
int newcomers_that_get_in(const Flood& flood) {
    constexpr milliseconds PAUSE{20};
    constexpr milliseconds NEEDED{300};
    const relay::Limits limits;
    Handshakes handshakes(limits);
    std::deque<std::pair<microseconds, int>> done;  // when, and who
    std::set<int> waiting;
    int came = 0;
    int gotIn = 0;
    int attacker = NEWCOMERS;
    const auto admit_and_forget = [&](int who, const std::string& address) {
        waiting.erase(admit(handshakes, who, address));
    };
    for (microseconds now{0}; came < NEWCOMERS || !done.empty(); now += flood.interval) {
        ++attacker;
        admit_and_forget(attacker, "10.0.0." + std::to_string(attacker % flood.addresses));
        // The flood has a second to fill the table before the first newcomer.
        if (came < NEWCOMERS && now >= std::chrono::seconds(1) + came * PAUSE) {
            ++came;
            admit_and_forget(came, "newcomer" + std::to_string(came));
            waiting.insert(came);
            done.emplace_back(now + NEEDED, came);
        }
        for (; !done.empty() && done.front().first <= now; done.pop_front()) {
            gotIn += static_cast<int>(waiting.erase(done.front().second));
            handshakes.leave(done.front().second);
        }
    }
    return gotIn;
}

TEST(Handshakes, newcomers_get_in_beside_a_flood) {
    const Flood floods[] = {
        {"2,000 a second from 4 addresses", 4, microseconds(500), NEWCOMERS},
        {"20,000 a second from 4 addresses", 4, microseconds(50), NEWCOMERS},
        {"2,000 a second from 500 addresses", 500, microseconds(500), NEWCOMERS},
        {"2,000 a second, each from its own address", 1000000, microseconds(500), NEWCOMERS},
        {"3,300 a second, each from its own address", 1000000, microseconds(300), NEWCOMERS},
        // 1,024 places last for 256 ms: here more of them are what it takes.
        {"4,000 a second, each from its own address", 1000000, microseconds(250), 0},
    };
    for (const Flood& flood : floods) {
        EXPECT_EQ(newcomers_that_get_in(flood), flood.newcomersThatGetIn) << flood.title;
    }
}

}  // namespace
