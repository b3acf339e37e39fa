#include "Addresses.h"

#include <string>

#include <gtest/gtest.h>

namespace {

const relay::TimePoint START{std::chrono::hours(1)};

TEST(Addresses, connections_are_counted_for_each_address) {
    relay::Limits limits;
    limits.connectionsPerAddress = 2;
    relay::Addresses addresses(limits);
    addresses.connect("a", START);
    addresses.connect("a", START);
    EXPECT_FALSE(addresses.is_over_limit("a"));
    addresses.connect("a", START);
    EXPECT_TRUE(addresses.is_over_limit("a"));
    EXPECT_FALSE(addresses.is_over_limit("b"));
    addresses.disconnect("a", START);
    EXPECT_FALSE(addresses.is_over_limit("a"));
}

TEST(Addresses, an_address_that_is_over_its_limit_has_an_end) {
    relay::Limits limits;
    limits.connectionsPerAddress = 1;
    limits.halfOpenPerAddress = 2;
    relay::Addresses addresses(limits);
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(addresses.is_at_end("a")) << i;
        addresses.connect("a", START);
        addresses.finish_handshake("a");
    }
    EXPECT_TRUE(addresses.is_at_end("a"));
    EXPECT_FALSE(addresses.is_at_end("b"));
    addresses.disconnect("a", START);
    EXPECT_FALSE(addresses.is_at_end("a"));
}

TEST(Addresses, handshakes_are_counted_for_each_address_until_they_are_over) {
    relay::Limits limits;
    limits.halfOpenPerAddress = 2;
    relay::Addresses addresses(limits);
    EXPECT_TRUE(addresses.may_begin_handshake("a"));
    addresses.connect("a", START);
    EXPECT_TRUE(addresses.may_begin_handshake("a"));
    addresses.connect("a", START);
    EXPECT_FALSE(addresses.may_begin_handshake("a"));
    EXPECT_TRUE(addresses.may_begin_handshake("b"));
    addresses.finish_handshake("a");
    EXPECT_TRUE(addresses.may_begin_handshake("a"));
}

TEST(Addresses, an_address_that_comes_too_often_has_to_wait) {
    relay::Limits limits;
    limits.connectsPerMinute = 2;
    relay::Addresses addresses(limits);
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(addresses.may_connect("a", START));
        addresses.connect("a", START);
        addresses.disconnect("a", START);
    }
    EXPECT_FALSE(addresses.may_connect("a", START + std::chrono::seconds(29)));
    EXPECT_TRUE(addresses.may_connect("a", START + std::chrono::seconds(30)));
    EXPECT_TRUE(addresses.may_connect("b", START));
}

TEST(Addresses, what_has_left_is_forgotten_when_it_has_waited) {
    const relay::Limits limits;
    relay::Addresses addresses(limits);
    addresses.connect("a", START);
    addresses.disconnect("a", START);
    EXPECT_EQ(addresses.size(), 1U);
    addresses.disconnect("a", START + std::chrono::seconds(1));
    EXPECT_EQ(addresses.size(), 0U);
}

TEST(Addresses, a_failed_login_outlives_its_connection_but_not_for_ever) {
    const relay::Limits limits;
    relay::Addresses addresses(limits);
    for (int i = 0; i < 5000; ++i) {
        const std::string address = std::to_string(i);
        addresses.connect(address, START);
        addresses.fail_login(address, START);
        addresses.disconnect(address, START);
    }
    EXPECT_EQ(addresses.size(), 5000U);
    for (int i = 0; i < 5000; ++i) {
        addresses.connect("later" + std::to_string(i), START + std::chrono::minutes(2));
    }
    EXPECT_EQ(addresses.size(), 5000U);
}

}  // namespace
