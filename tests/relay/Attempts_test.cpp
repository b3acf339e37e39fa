#include "Attempts.h"

#include "Session.h"
#include "address_key.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using std::chrono::seconds;
using Names = std::vector<std::string>;

struct Mute : relay::Peer {
    void send(std::string_view) override {}
    void flush() override {}
    [[nodiscard]] std::size_t queued() const noexcept override { return 0; }
    void close(relay::CloseCode, std::string_view) override {}
};

/// Twelve failures at once, then one each 5 s.
struct Attempts : ::testing::Test {
    /// A login from the address; its name tells them apart.
    relay::Session* add(const std::string& address, const std::string& name) {
        sessions.push_back(std::make_unique<relay::Session>(mute, address, limits, now));
        return attempts.add({sessions.back().get(), relay::network_key(address), name, false});
    }
    void fail(const std::string& network, int times = 1) {
        for (int i = 0; i < times; ++i) {
            attempts.fail(network, now);
        }
    }
    /// The names that are taken in turn, each of which fails.
    Names take_all_due() {
        Names names;
        while (const auto attempt = attempts.take(now)) {
            names.push_back(attempt->name);
            fail(attempt->network);
        }
        return names;
    }

    Mute mute;
    relay::Limits limits;
    relay::TimePoint now{std::chrono::hours(1)};
    relay::Attempts attempts{limits, now};
    std::vector<std::unique_ptr<relay::Session>> sessions;
};

TEST_F(Attempts, twelve_wrong_ones_are_looked_at_at_once_and_then_one_each_5_seconds) {
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(add(std::to_string(i), "x"), nullptr);
    }
    EXPECT_EQ(take_all_due().size(), 12U);
    now += seconds(5);
    EXPECT_EQ(take_all_due().size(), 1U);
    now += seconds(12);
    EXPECT_EQ(take_all_due().size(), 2U);
}

TEST_F(Attempts, the_next_turn_is_when_one_may_be_looked_at) {
    fail("a", 12);
    add("b", "b");
    EXPECT_EQ(attempts.take(now), std::nullopt);
    now = attempts.next_turn();
    EXPECT_TRUE(attempts.take(now));
}

TEST_F(Attempts, those_that_are_not_wrong_use_up_no_turn) {
    fail("x", 11);
    for (const char* address : {"a", "b", "c"}) {
        add(address, address);
        EXPECT_TRUE(attempts.take(now)) << address;
    }
}

TEST_F(Attempts, the_address_that_has_failed_least_comes_first) {
    fail("a", 3);
    fail("b", 5);
    fail("c", 4);
    add("a", "three");
    add("b", "five");
    add("new", "none");
    add("c", "four");
    Names names;
    for (int i = 0; i < 4; ++i) {
        now += seconds(5);
        for (const std::string& name : take_all_due()) {
            names.push_back(name);
        }
    }
    EXPECT_EQ(names, (Names{"none", "three", "four", "five"}));
}

TEST_F(Attempts, among_equals_the_oldest_and_the_newest_come_by_turns) {
    for (const char* address : {"1", "2", "3", "4", "5"}) {
        add(address, address);
    }
    EXPECT_EQ(take_all_due(), (Names{"1", "5", "2", "4", "3"}));
}

TEST_F(Attempts, who_tries_again_from_the_same_address_gives_up_his_former_turn) {
    add("a", "former");
    relay::Session* former = sessions.back().get();
    EXPECT_EQ(add("a", "later"), former);
    EXPECT_EQ(take_all_due(), Names{"later"});
}

TEST_F(Attempts, who_has_gone_has_no_turn) {
    add("a", "a");
    add("b", "b");
    attempts.remove(*sessions.front());
    EXPECT_EQ(take_all_due(), Names{"b"});
}

TEST_F(Attempts, a_full_line_lets_the_one_go_that_has_failed_most) {
    fail("bad", 2);
    fail("worst", 3);
    add("bad", "bad");
    add("worst", "worst");
    relay::Session* worst = sessions.back().get();
    for (int i = 0; i < 126; ++i) {
        EXPECT_EQ(add(std::to_string(i), "x"), nullptr);
    }
    EXPECT_EQ(add("friend", "friend"), worst);
    EXPECT_EQ(attempts.take_all().size(), 128U);
}

TEST_F(Attempts, a_full_line_of_equals_takes_nobody) {
    for (int i = 0; i < 128; ++i) {
        EXPECT_EQ(add(std::to_string(i), "x"), nullptr);
    }
    relay::Session* leaver = add("late", "late");
    EXPECT_EQ(leaver, sessions.back().get());
}

TEST_F(Attempts, the_last_four_addresses_that_members_came_from_are_known) {
    for (const char* address : {"a", "b", "a", "c", "d", "e"}) {
        attempts.know(address);
    }
    EXPECT_FALSE(attempts.knows("a"));
    for (const char* address : {"b", "c", "d", "e"}) {
        EXPECT_TRUE(attempts.knows(address)) << address;
    }
}

TEST_F(Attempts, an_ipv6_line_of_many_addresses_counts_its_failures_as_one) {
    fail("2001:db8::/56", 2);
    fail("192.0.2.9");
    add("2001:db8:0:7::/64", "same line");
    add("192.0.2.9", "once");
    add("2001:db8:0:100::/64", "next line");
    now += std::chrono::minutes(1);
    EXPECT_EQ(take_all_due(), (Names{"next line", "once", "same line"}));
}

TEST_F(Attempts, failures_are_forgotten_after_128_others) {
    fail("a");
    for (int i = 0; i < 128; ++i) {
        fail("b" + std::to_string(i));
    }
    now += std::chrono::minutes(1);
    add("a", "a");
    add("new", "new");
    EXPECT_EQ(take_all_due(), (Names{"a", "new"}));
}

}  // namespace
