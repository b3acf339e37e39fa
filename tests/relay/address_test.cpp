#include "address.h"

#include <gtest/gtest.h>

namespace {

struct HostPortRow {
    const char* text;
    const char* host;
    const char* port;
};

TEST(Address, host_and_port_are_split) {
    const HostPortRow rows[] = {
        {"127.0.0.1:8888", "127.0.0.1", "8888"},
        {"localhost:0", "localhost", "0"},
        {"[::1]:443", "::1", "443"},
        {"[::]:65535", "::", "65535"},
    };
    for (const HostPortRow& row : rows) {
        const auto parts = relay::split_host_port(row.text);
        ASSERT_TRUE(parts) << row.text;
        EXPECT_EQ(parts->host, row.host);
        EXPECT_EQ(parts->port, row.port);
    }
}

TEST(Address, a_loopback_address_is_one_that_only_this_machine_reaches) {
    std::string fault;
    EXPECT_EQ(relay::host_port(relay::resolve_loopback("[::1]:9188", fault)), "[::1]:9188");
    EXPECT_EQ(fault, "");
    static_cast<void>(relay::resolve_loopback("0.0.0.0:9188", fault));
    EXPECT_EQ(fault, "0.0.0.0:9188 is no loopback address; the status is not for others");
}

TEST(Address, what_is_no_host_and_port_is_refused) {
    for (const char* text : {"", ":", ":1", "host", "host:", "host:x", "host:65536", "host:-1",
                             "host: 1", "::1:443", "[]:1", "[::1]"}) {
        EXPECT_FALSE(relay::split_host_port(text)) << text;
    }
}

}  // namespace
