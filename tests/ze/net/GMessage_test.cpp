#include "ze/net/GMessage.h"

#include "ze/net/json_text.h"

#include <gtest/gtest.h>

namespace {

using ze::net::GMessage;
using Users = std::vector<QString>;

GMessage with_users(const char* list) {
    GMessage message;
    message.extraData = QString::fromUtf8(list);
    return message;
}

TEST(GMessage, a_fresh_one_writes_all_keys) {
    EXPECT_EQ(
        test::wire_text(GMessage()),
        R"({"extraData":"","from":"","ident":0,"subType":"","text":"","to":"","type":"CHAT"})");
}

TEST(GMessage, reads_its_keys_and_leaves_other_types_empty) {
    EXPECT_EQ(
        test::wire_text(test::read<GMessage>(
            R"({"type":"CHAT","from":"g:a","text":"hi","extraData":"g:a, g:b","ident":4})")),
        R"({"extraData":"g:a, g:b","from":"g:a","ident":4,"subType":"","text":"hi","to":"","type":"CHAT"})");
    EXPECT_EQ(
        test::wire_text(test::read<GMessage>(R"({"type":"CHAT","text":7,"extraData":["g:a"]})")),
        R"({"extraData":"","from":"","ident":0,"subType":"","text":"","to":"","type":"CHAT"})");
}

TEST(GMessage_to_string, shows_ident_above_0_and_extraData_if_any) {
    const struct {
        const char* json;
        const char* expected;
    } rows[] = {
        {R"({"type":"CHAT","subType":"text","from":"a","to":"#","text":"hi","extraData":"e","ident":1})",
         "CHAT/text, from:'a', to:'#', ident:1, text:'hi', extradata:'e'"},
        {R"({"type":"CHAT","subType":"text","from":"a","to":"#","text":"hi","extraData":"e","ident":0})",
         "CHAT/text, from:'a', to:'#', text:'hi', extradata:'e'"},
        {R"({"type":"CHAT","subType":"text","from":"a","to":"#","text":"hi","extraData":"e","ident":-1})",
         "CHAT/text, from:'a', to:'#', text:'hi', extradata:'e'"},
        {R"({"type":"CHAT","subType":"text","from":"a","to":"#","text":"hi","ident":1})",
         "CHAT/text, from:'a', to:'#', ident:1, text:'hi'"},
        {R"({"type":"CHAT","subType":"text","from":"a","to":"#","text":"hi"})",
         "CHAT/text, from:'a', to:'#', text:'hi'"},
        {R"({"type":"CHAT"})", "CHAT/, from:'', to:'', text:''"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(test::read<GMessage>(row.json).to_string().toStdString(), row.expected);
    }
}

TEST(GMessage_users, commas_and_blanks_both_separate) {
    const struct {
        const char* list;
        Users expected;
    } rows[] = {
        {"", {}},
        {" , ,", {}},
        {"g:a", {QStringLiteral("g:a")}},
        {"g:a, g:b", {QStringLiteral("g:a"), QStringLiteral("g:b")}},
        {"g:b,g:a g:b", {QStringLiteral("g:b"), QStringLiteral("g:a"), QStringLiteral("g:b")}},
        {"\"g:a, g:b\"", {QStringLiteral("\"g:a"), QStringLiteral("g:b\"")}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(with_users(row.list).get_user_from_extra_data(), row.expected) << row.list;
    }
}

TEST(GMessage_users, except_drops_every_equal_entry) {
    EXPECT_EQ(
        with_users("g:a, g:b, g:a, g:A").get_user_from_extra_data_except(QStringLiteral("g:a")),
        (Users{QStringLiteral("g:b"), QStringLiteral("g:A")}));
}

TEST(GMessage_users, the_user_is_the_one_other_entry) {
    const struct {
        const char* list;
        const char* expected;
    } rows[] = {
        {"g:a, g:b", "g:b"},   {"g:b, g:a", "g:b"}, {"g:b", "g:b"},           {"g:a", ""}, {"", ""},
        {"g:a, g:b, g:c", ""}, {"g:b, g:b", ""},    {"g:a, g:a, g:b", "g:b"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(with_users(row.list).get_the_user(QStringLiteral("g:a")).toStdString(),
                  row.expected)
            << row.list;
    }
}

TEST(GMessage_flags, stand_as_decimal_text_in_place_of_the_user_list) {
    GMessage message = with_users("g:a, g:b");
    message.set_flags(4294967295U);
    EXPECT_EQ(message.extraData.toStdString(), "4294967295");
    EXPECT_EQ(message.get_flags(), 4294967295U);
}

TEST(GMessage_flags, read_as_0_unless_the_text_is_a_number_of_32_bits) {
    const struct {
        const char* text;
        unsigned expected;
    } rows[] = {
        {"0", 0},          {"17", 17},      {"4294967295", 4294967295U},
        {"4294967296", 0}, {"-1", 0},       {"1.5", 0},
        {"0x10", 0},       {"g:a, g:b", 0}, {"", 0},
        {"12a", 0},        {"1e3", 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(with_users(row.text).get_flags(), row.expected) << row.text;
    }
}

TEST(GMessage_flags, pass_through_GBits) {
    GMessage message;
    message.set_bit_flags(ze::GBits<unsigned>(0x80000001U));
    EXPECT_EQ(message.extraData.toStdString(), "2147483649");
    EXPECT_EQ(message.get_bit_flags(), ze::GBits<unsigned>(0x80000001U));
}

}  // namespace
