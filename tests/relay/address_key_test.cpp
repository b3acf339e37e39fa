#include "address_key.h"

#include <gtest/gtest.h>

namespace {

struct KeyRow {
    const char* address;
    const char* key;
    const char* network;
};

TEST(AddressKey, an_ipv6_network_counts_as_one_and_lies_in_a_wider_one) {
    const KeyRow rows[] = {
        {"192.0.2.1", "192.0.2.1", "192.0.2.1"},
        {"::ffff:192.0.2.1", "192.0.2.1", "192.0.2.1"},
        {"2001:db8:1:2:3:4:5:6", "2001:db8:1:2::/64", "2001:db8:1::/56"},
        {"2001:db8:1:2::", "2001:db8:1:2::/64", "2001:db8:1::/56"},
        {"2001:db8:1:3::6", "2001:db8:1:3::/64", "2001:db8:1::/56"},
        {"2001:db8:1:ff::6", "2001:db8:1:ff::/64", "2001:db8:1::/56"},
        {"2001:db8:1:100::6", "2001:db8:1:100::/64", "2001:db8:1:100::/56"},
        {"::1", "::/64", "::/56"},
    };
    for (const KeyRow& row : rows) {
        const std::string key = relay::address_key(boost::asio::ip::make_address(row.address));
        EXPECT_EQ(key, row.key) << row.address;
        EXPECT_EQ(relay::network_key(key), row.network) << row.address;
    }
}

TEST(AddressKey, what_is_no_address_stands_for_itself) {
    for (const char* text : {"", "a", "/64", "x/64", "1.2.3.4/64"}) {
        EXPECT_EQ(relay::network_key(text), text);
    }
}

}  // namespace
