// Password, rate, addresses, texts: the small parts, each with its rules.

#include "Addresses.h"
#include "Deadlines.h"
#include "Log.h"
#include "Metrics.h"
#include "Name.h"
#include "Password.h"
#include "Reason.h"
#include "TokenBucket.h"
#include "address.h"
#include "messages.h"
#include "utf8.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const relay::TimePoint START{std::chrono::hours(1)};

TEST(Password, only_the_same_text_matches) {
    const relay::Password password("secret");
    EXPECT_TRUE(password.matches("secret"));
    for (const char* other : {"", "secre", "secrets", "Secret", "secret "}) {
        EXPECT_FALSE(password.matches(other)) << other;
    }
}

TEST(Password, the_same_text_leaves_another_digest_each_time) {
    const relay::Password one("secret");
    const relay::Password two("secret");
    EXPECT_NE(std::memcmp(&one, &two, sizeof one), 0);
}

TEST(Password, a_long_text_matches_to_its_last_character) {
    const relay::Password password(std::string(10000, 'x'));
    EXPECT_TRUE(password.matches(std::string(10000, 'x')));
    EXPECT_FALSE(password.matches(std::string(9999, 'x') + "y"));
}

TEST(TokenBucket, holds_its_burst_and_no_more) {
    relay::TokenBucket bucket(5, 1, START);
    EXPECT_TRUE(bucket.take(5, START));
    EXPECT_FALSE(bucket.take(1, START));
    EXPECT_TRUE(bucket.is_full(START + seconds(5)));
    EXPECT_FALSE(bucket.has(6, START + seconds(500)));
}

TEST(TokenBucket, a_refused_take_costs_nothing) {
    relay::TokenBucket bucket(1, 1, START);
    EXPECT_TRUE(bucket.take(1, START));
    EXPECT_FALSE(bucket.take(1, START + milliseconds(999)));
    EXPECT_TRUE(bucket.take(1, START + milliseconds(1000)));
}

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

TEST(Addresses, what_has_left_is_forgotten) {
    const relay::Limits limits;
    relay::Addresses addresses(limits);
    addresses.connect("a", START);
    addresses.disconnect("a", START);
    addresses.disconnect("a", START);
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

struct AddressRow {
    const char* address;
    const char* key;
};

TEST(Address, an_ipv6_network_counts_as_one) {
    const AddressRow rows[] = {
        {"192.0.2.1", "192.0.2.1"},
        {"::ffff:192.0.2.1", "192.0.2.1"},
        {"2001:db8:1:2:3:4:5:6", "2001:db8:1:2::/64"},
        {"2001:db8:1:2::", "2001:db8:1:2::/64"},
        {"2001:db8:1:3::6", "2001:db8:1:3::/64"},
        {"::1", "::/64"},
    };
    for (const AddressRow& row : rows) {
        EXPECT_EQ(relay::address_key(boost::asio::ip::make_address(row.address)), row.key);
    }
}

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

TEST(Address, what_is_no_host_and_port_is_refused) {
    for (const char* text : {"", ":", ":1", "host", "host:", "host:x", "host:65536", "host:-1",
                             "host: 1", "::1:443", "[]:1", "[::1]"}) {
        EXPECT_FALSE(relay::split_host_port(text)) << text;
    }
}

TEST(Utf8, code_points_are_taken_one_by_one) {
    std::string_view text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8F\x93";
    EXPECT_EQ(relay::count_code_points(text), 4U);
    for (const char32_t point : {U'a', U'\u00E9', U'\u20AC', U'\U0001F3D3'}) {
        EXPECT_EQ(relay::take_code_point(text), point);
    }
    EXPECT_TRUE(text.empty());
}

TEST(Utf8, a_broken_end_is_taken_too) {
    std::string_view text = "\xF0\x9F";
    static_cast<void>(relay::take_code_point(text));
    EXPECT_TRUE(text.empty());
}

TEST(Messages, what_a_name_holds_can_not_break_the_text) {
    EXPECT_EQ(relay::json_string("a\"b\\c\n\x01\x7F\xC3\xA9"),
              "\"a\\\"b\\\\c\\u000a\\u0001\\u007f\xC3\xA9\"");
}

TEST(Messages, a_ping_has_the_five_fields) {
    EXPECT_EQ(relay::ping_message("g:a"),
              R"({"type":"PING","subType":"","from":"relay","to":"g:a","ident":0})");
}

TEST(Messages, an_error_has_a_code_and_a_text) {
    EXPECT_EQ(relay::error_message("g:a", relay::info(relay::Reason::WRONG_PASSWORD)),
              R"({"type":"ERROR","subType":"","from":"relay","to":"g:a","ident":0,"code":7,)"
              R"("text":"The password is not that of this group."})");
}

TEST(Reason, every_reason_has_its_own_word_and_code_and_fits_into_a_close_frame) {
    constexpr std::size_t CLOSE_FRAME = 123;
    std::set<std::string_view> words;
    for (int i = 0; i < static_cast<int>(relay::Reason::COUNT); ++i) {
        const relay::ReasonInfo& row = relay::info(static_cast<relay::Reason>(i));
        EXPECT_EQ(row.code, i + 1);
        EXPECT_TRUE(words.insert(row.word).second) << row.word;
        EXPECT_LE(row.text.size(), CLOSE_FRAME) << row.word;
    }
}

TEST(Log, a_line_has_a_stamp_a_word_and_fields) {
    std::string line;
    const relay::Log log([&line](std::string_view text) { line = text; });
    log.event("login", {{"name", "a\nb"}, {"members", 2}});
    EXPECT_EQ(line.substr(25), R"(login name="a\u000ab" members=2)");
    EXPECT_EQ(line[4], '-');
    EXPECT_EQ(line[10], 'T');
    EXPECT_EQ(line.substr(23, 2), "Z ");
}

TEST(Metrics, round_trips_are_counted_up_to_each_bound) {
    relay::Metrics metrics;
    for (const int millis : {1, 5, 6, 2000}) {
        metrics.add_round_trip(milliseconds(millis));
    }
    const std::string text = metrics.to_prometheus();
    for (const char* line : {"vork2d_relay_round_trip_seconds_bucket{le=\"0.005\"} 2\n",
                             "vork2d_relay_round_trip_seconds_bucket{le=\"0.01\"} 3\n",
                             "vork2d_relay_round_trip_seconds_bucket{le=\"1\"} 3\n",
                             "vork2d_relay_round_trip_seconds_bucket{le=\"+Inf\"} 4\n",
                             "vork2d_relay_round_trip_seconds_sum 2.012\n",
                             "vork2d_relay_round_trip_seconds_count 4\n"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line;
    }
}

TEST(Metrics, every_reason_has_its_line) {
    relay::Metrics metrics;
    metrics.refuse(relay::Reason::GROUP_FULL);
    const std::string text = metrics.to_prometheus();
    EXPECT_NE(text.find("vork2d_relay_refusals_total{reason=\"group_full\"} 1\n"),
              std::string::npos);
    EXPECT_NE(text.find("vork2d_relay_refusals_total{reason=\"silent\"} 0\n"), std::string::npos);
}

struct Looked : relay::Deadlines::Member {
    void on_deadline(relay::TimePoint) override { ++count; }
    int count = 0;
};

TEST(Deadlines, each_member_is_looked_at_once_at_its_last_deadline) {
    boost::asio::io_context context;
    relay::Deadlines deadlines(context);
    Looked early;
    Looked moved;
    Looked gone;
    const relay::TimePoint now = relay::Clock::now();
    deadlines.set(early, now + milliseconds(1));
    deadlines.set(moved, now + std::chrono::hours(1));
    deadlines.set(moved, now + milliseconds(2));
    deadlines.set(gone, now + milliseconds(2));
    deadlines.clear(gone);
    context.run_for(seconds(5));
    EXPECT_EQ(early.count, 1);
    EXPECT_EQ(moved.count, 1);
    EXPECT_EQ(gone.count, 0);
}

}  // namespace
