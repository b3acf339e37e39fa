#include "messages.h"

#include <utility>

#include <gtest/gtest.h>

namespace {

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

TEST(Messages, what_the_relay_says_itself_is_known_as_its_own) {
    const std::pair<const char*, const char*> rows[] = {{"PING", ""},     {"ERROR", ""},
                                                        {"ADMIN", "x"},   {"CHAT", "welcome"},
                                                        {"CHAT", "join"}, {"CHAT", "bye"}};
    for (const auto& [type, subType] : rows) {
        EXPECT_TRUE(relay::is_of_the_relay_alone(type, subType)) << type << '/' << subType;
    }
}

TEST(Messages, what_a_client_may_say_is_not_the_relays_own) {
    const std::pair<const char*, const char*> rows[] = {
        {"CHAT", "text"}, {"CHAT", ""},    {"CHAT", "Bye"}, {"CHAT", "bye "},
        {"PLAY", ""},     {"PLAY", "bye"}, {"PONG", ""},    {"LOGIN", ""},
        {"ping", ""},     {"PINGS", ""},   {"", "welcome"}, {"GUESS", "bye"}};
    for (const auto& [type, subType] : rows) {
        EXPECT_FALSE(relay::is_of_the_relay_alone(type, subType)) << type << '/' << subType;
    }
}

}  // namespace
