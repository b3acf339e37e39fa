#include "Addresses.h"

#include <string>

#include <gtest/gtest.h>

namespace {

const relay::TimePoint START{std::chrono::hours(1)};

TEST(Addresses, connections_are_counted_for_each_address) {
    relay::Limits limits;
    limits.connectionsPerAddress = 2;
    relay::Addresses addresses(limits);
    addresses.enter("a", START);
    EXPECT_FALSE(addresses.is_full("a"));
    addresses.enter("a", START);
    EXPECT_TRUE(addresses.is_full("a"));
    EXPECT_FALSE(addresses.is_full("b"));
    addresses.leave("a", START);
    EXPECT_FALSE(addresses.is_full("a"));
}

TEST(Addresses, an_address_that_is_over_its_limit_has_an_end) {
    relay::Limits limits;
    limits.connectionsPerAddress = 1;
    limits.halfOpenPerAddress = 2;
    relay::Addresses addresses(limits);
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(addresses.is_at_end("a")) << i;
        addresses.enter("a", START);
    }
    EXPECT_TRUE(addresses.is_at_end("a"));
    EXPECT_FALSE(addresses.is_at_end("b"));
    addresses.leave("a", START);
    EXPECT_FALSE(addresses.is_at_end("a"));
}

TEST(Addresses, a_handshake_takes_no_place_of_those_who_are_in) {
    relay::Limits limits;
    limits.connectionsPerAddress = 1;
    relay::Addresses addresses(limits);
    for (int i = 0; i < 300; ++i) {
        addresses.connect("a", START);
    }
    EXPECT_FALSE(addresses.is_full("a"));
}

/// The /64 network of this number in a /56 network.
std::string part_of_network(std::size_t number, const std::string& network) {
    constexpr const char* DIGITS = "0123456789abcdef";
    const std::string digits{DIGITS[number / 16], DIGITS[number % 16]};
    return "2001:db8:0:" + network + digits + "::/64";
}

TEST(Addresses, a_network_holds_four_times_what_one_of_its_addresses_may) {
    relay::Limits limits;
    limits.connectionsPerAddress = 2;
    relay::Addresses addresses(limits);
    std::size_t entered = 0;
    for (std::size_t number = 16; number < 256; ++number) {
        while (!addresses.is_full(part_of_network(number, "12"))) {
            addresses.enter(part_of_network(number, "12"), START);
            ++entered;
        }
    }
    EXPECT_EQ(entered, 8U);
    EXPECT_FALSE(addresses.is_full(part_of_network(16, "13")));
    addresses.leave(part_of_network(16, "12"), START);
    EXPECT_FALSE(addresses.is_full(part_of_network(255, "12")));
}

TEST(Addresses, a_network_comes_and_fails_four_times_as_often_as_one_of_its_addresses_may) {
    relay::Limits limits;
    limits.connectsPerMinute = 3;
    limits.failedLogins = 2;
    relay::Addresses addresses(limits);
    std::size_t connects = 0;
    std::size_t failures = 0;
    for (std::size_t number = 16; number < 256; ++number) {
        const std::string address = part_of_network(number, "12");
        for (; addresses.may_connect(address, START); ++connects) {
            addresses.connect(address, START);
        }
        for (; addresses.may_log_in(address, START); ++failures) {
            addresses.fail_login(address, START);
        }
    }
    EXPECT_EQ(connects, 12U);
    EXPECT_EQ(failures, 8U);
    EXPECT_TRUE(addresses.may_connect(part_of_network(16, "13"), START));
    EXPECT_TRUE(addresses.may_log_in(part_of_network(16, "13"), START));
}

TEST(Addresses, an_address_that_comes_too_often_has_to_wait) {
    relay::Limits limits;
    limits.connectsPerMinute = 2;
    relay::Addresses addresses(limits);
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(addresses.may_connect("a", START));
        addresses.connect("a", START);
    }
    EXPECT_FALSE(addresses.may_connect("a", START + std::chrono::seconds(29)));
    EXPECT_TRUE(addresses.may_connect("a", START + std::chrono::seconds(30)));
    EXPECT_TRUE(addresses.may_connect("b", START));
}

TEST(Addresses, what_has_left_is_forgotten_when_it_has_waited) {
    const relay::Limits limits;
    relay::Addresses addresses(limits);
    for (int i = 0; i < 1024; ++i) {
        const std::string address = std::to_string(i);
        addresses.connect(address, START);
        addresses.enter(address, START);
        if (i > 0) {
            addresses.leave(address, START);
        }
    }
    EXPECT_EQ(addresses.size(), 1024U);
    addresses.connect("later", START + std::chrono::seconds(1));
    EXPECT_EQ(addresses.size(), 2U) << "the one that stayed and the one that came";
}

TEST(Addresses, a_failed_login_outlives_its_connection_but_not_for_ever) {
    const relay::Limits limits;
    relay::Addresses addresses(limits);
    for (int i = 0; i < 5000; ++i) {
        const std::string address = std::to_string(i);
        addresses.connect(address, START);
        addresses.enter(address, START);
        addresses.fail_login(address, START);
        addresses.leave(address, START);
    }
    EXPECT_EQ(addresses.size(), 5000U);
    for (int i = 0; i < 5000; ++i) {
        addresses.connect("later" + std::to_string(i), START + std::chrono::minutes(2));
    }
    EXPECT_EQ(addresses.size(), 5000U);
}

}  // namespace
