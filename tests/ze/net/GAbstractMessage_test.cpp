#include "ze/net/GAbstractMessage.h"

#include "ze/net/GAdmin.h"
#include "ze/net/GErrorMsg.h"
#include "ze/net/GLogin.h"
#include "ze/net/GMessage.h"
#include "ze/net/GPing.h"
#include "ze/net/GPlay.h"
#include "ze/net/GPong.h"
#include "ze/net/json_text.h"

#include "support/LogCapture.h"

#include <memory>
#include <typeinfo>

#include <gtest/gtest.h>

namespace {

using namespace ze::net;
using test::object_of;
using test::value_of;

std::unique_ptr<GAbstractMessage> create(const char* json) {
    return std::unique_ptr<GAbstractMessage>(GAbstractMessage::create_from_json(object_of(json)));
}

TEST(GAbstractMessage_create_from_json, makes_the_class_that_the_word_names) {
    const struct {
        const char* json;
        const std::type_info& expected;
    } rows[] = {
        {R"({"type":"ERROR"})", typeid(GErrorMsg)}, {R"({"type":"CHAT"})", typeid(GMessage)},
        {R"({"type":"PING"})", typeid(GPing)},      {R"({"type":"PONG"})", typeid(GPong)},
        {R"({"type":"PLAY"})", typeid(GPlay)},      {R"({"type":"ADMIN"})", typeid(GAdmin)},
        {R"({"type":"LOGIN"})", typeid(GLogin)},
    };
    for (const auto& row : rows) {
        const auto message = create(row.json);
        ASSERT_TRUE(message) << row.json;
        const GAbstractMessage& made = *message;
        EXPECT_STREQ(typeid(made).name(), row.expected.name()) << row.json;
    }
}

TEST(GAbstractMessage_create_from_json, gives_null_in_silence_for_any_other_word) {
    const test::LogCapture log;
    for (const char* json :
         {"{}", R"({"type":"chat"})", R"({"type":"Play"})", R"({"type":" CHAT"})",
          R"({"type":"CHAT "})", R"({"type":""})", R"({"type":null})", R"({"type":7})",
          R"({"type":true})", R"({"type":["CHAT"]})", R"({"type":{"type":"CHAT"}})",
          R"({"Type":"CHAT"})", R"({"subType":"CHAT"})"}) {
        EXPECT_FALSE(create(json)) << json;
    }
    EXPECT_EQ(log.lines_with_level(), test::Lines{});
}

TEST(GAbstractMessage_create_from_json, fills_what_is_missing_with_empty_values) {
    const auto message = create(R"({"type":"CHAT"})");
    const auto* const chat = dynamic_cast<GMessage*>(message.get());
    ASSERT_TRUE(chat);
    EXPECT_EQ(
        test::wire_text(*chat),
        R"({"extraData":"","from":"","ident":0,"subType":"","text":"","to":"","type":"CHAT"})");
}

TEST(GAbstractMessage_create_from_json, carries_everything_through_to_the_same_wire_text) {
    for (
        const char* json :
        {R"({"code":404,"from":"*","ident":3,"subType":"x","text":"t","to":"g:a","type":"ERROR"})",
         R"({"extraData":"e","from":"a","ident":0,"subType":"text","text":"t","to":"#","type":"CHAT"})",
         R"({"from":"","ident":-1,"subType":"","to":"","type":"PING"})",
         R"({"from":"g:a","ident":0,"subType":"","to":"+","type":"PONG"})",
         R"({"from":"a","game":"vork","ident":0,"payload":{"cmd":"stop"},"subType":"","to":"#","type":"PLAY"})",
         R"({"cmd":"c","from":"a","ident":0,"payload":[1,"2",null],"subType":"","to":"#","type":"ADMIN"})",
         R"({"from":"g:a","ident":0,"pw":"p","subType":"login","to":"+","type":"LOGIN"})"}) {
        const auto message = create(json);
        ASSERT_TRUE(message) << json;
        EXPECT_EQ(test::wire_text(*message), json);
    }
}

TEST(GAbstractMessage_from_json, replaces_every_field) {
    GPing ping;
    ping.from = QStringLiteral("old");
    ping.ident = 9;
    ping.from_json(object_of(R"({"type":"T","subType":"S","to":"+"})"));
    EXPECT_EQ(test::wire_text(ping), R"({"from":"","ident":0,"subType":"S","to":"+","type":"T"})");
}

TEST(GAbstractMessage_from_json, reads_values_of_another_type_as_empty) {
    const test::LogCapture log;
    for (const char* json :
         {R"({"type":1,"subType":true,"from":null,"to":[],"ident":"7"})",
          R"({"type":{},"subType":[""],"from":{},"to":1e308,"ident":{}})",
          R"({"type":null,"subType":0,"from":false,"to":{"to":"+"},"ident":[1]})"}) {
        EXPECT_EQ(test::wire_text(test::read<GPing>(json)),
                  R"({"from":"","ident":0,"subType":"","to":"","type":""})")
            << json;
    }
    EXPECT_EQ(log.lines_with_level(), test::Lines{});
}

TEST(GAbstractMessage_from_json, reads_ident_as_a_whole_number_of_32_bits_or_as_0) {
    const struct {
        const char* json;
        int expected;
    } rows[] = {
        {R"({"ident":1})", 1},
        {R"({"ident":-3})", -3},
        {R"({"ident":5.0})", 5},
        {R"({"ident":2.5})", 0},
        {R"({"ident":2147483647})", 2147483647},
        {R"({"ident":-2147483648})", -2147483647 - 1},
        {R"({"ident":2147483648})", 0},
        {R"({"ident":9223372036854775807})", 0},
        {R"({"ident":1e308})", 0},
        {R"({"ident":-1e308})", 0},
        {R"({"ident":1e-308})", 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(test::read<GPing>(row.json).ident, row.expected) << row.json;
    }
}

TEST(GAbstractMessage_to_json, writes_all_five_keys_of_a_fresh_message) {
    EXPECT_EQ(test::wire_text(GPing()),
              R"({"from":"","ident":0,"subType":"","to":"","type":"PING"})");
}

/// Shows the envelope as it is: no concrete message of the system leaves to_string alone.
class Envelope : public GAbstractMessage {
public:
    explicit Envelope(const char* word) : GAbstractMessage(QString::fromUtf8(word)) {}
};

TEST(GAbstractMessage_to_string, shows_ident_only_above_0) {
    const struct {
        int ident;
        const char* expected;
    } rows[] = {
        {-1, "T/S, from:'g:a', to:'#'"},
        {0, "T/S, from:'g:a', to:'#'"},
        {1, "T/S, from:'g:a', to:'#', ident:1"},
    };
    for (const auto& row : rows) {
        Envelope message("T");
        message.subType = QStringLiteral("S");
        message.from = QStringLiteral("g:a");
        message.to = QStringLiteral("#");
        message.ident = row.ident;
        EXPECT_EQ(message.to_string().toStdString(), row.expected);
    }
}

TEST(GAbstractMessage_to_string, does_not_scan_the_fields_for_placeholders) {
    Envelope message("$");
    message.from = QStringLiteral("$$");
    EXPECT_EQ(message.to_string().toStdString(), "$/, from:'$$', to:''");
}

TEST(GAbstractMessage_is, each_test_knows_its_word_alone) {
    const struct {
        const char* word;
        bool ping, pong, play, message, admin, show;
    } rows[] = {
        {"PING", true, false, false, false, false, false},
        {"PONG", false, true, false, false, false, false},
        {"PLAY", false, false, true, false, false, true},
        {"CHAT", false, false, false, true, false, true},
        {"ADMIN", false, false, false, false, true, true},
        {"LOGIN", false, false, false, false, false, true},
        {"ERROR", false, false, false, false, false, true},
        {"ping", false, false, false, false, false, true},
        {"", false, false, false, false, false, true},
    };
    for (const auto& row : rows) {
        const Envelope message(row.word);
        EXPECT_EQ(message.is_GPing(), row.ping) << row.word;
        EXPECT_EQ(message.is_GPong(), row.pong) << row.word;
        EXPECT_EQ(message.is_GPlay(), row.play) << row.word;
        EXPECT_EQ(message.is_GMessage(), row.message) << row.word;
        EXPECT_EQ(message.is_GAdmin(), row.admin) << row.word;
        EXPECT_EQ(message.is_show_msg(), row.show) << row.word;
        EXPECT_TRUE(message.is_type(QString::fromUtf8(row.word)));
        EXPECT_FALSE(message.is_type(QStringLiteral("other")));
    }
}

TEST(GAbstractMessage_is, bye_is_a_case_sensitive_subType) {
    GMessage message;
    for (const auto& [word, expected] :
         {std::pair("bye", true), {"Bye", false}, {"bye ", false}, {"", false}}) {
        message.subType = QString::fromUtf8(word);
        EXPECT_EQ(message.is_bye(), expected) << word;
    }
}

TEST(GAbstractMessage_is, broadcast_is_one_single_character) {
    GMessage message;
    for (const auto& [word, expected] : {std::pair("*", true),
                                         {"#", true},
                                         {"##", false},
                                         {"**", false},
                                         {"# ", false},
                                         {"+", false},
                                         {"", false}}) {
        message.to = QString::fromUtf8(word);
        EXPECT_EQ(message.is_kind_of_broadcast(), expected) << word;
    }
}

TEST(GAbstractMessage_obj_to_string, obeys_the_flag) {
    const QJsonObject object = object_of(R"({"b":[1,2],"a":"x"})");
    EXPECT_EQ(GAbstractMessage::obj_to_string(object, true).toStdString(),
              R"({"a":"x","b":[1,2]})");
    EXPECT_EQ(GAbstractMessage::obj_to_string(object, false).toStdString(),
              "{\n    \"a\": \"x\",\n    \"b\": [\n        1,\n        2\n    ]\n}\n");
}

TEST(GAbstractMessage_value_to_string, goes_by_the_type_of_the_value) {
    const struct {
        const char* json;
        const char* compact;
        const char* indented;
    } rows[] = {
        {R"({"a":1})", R"({"a":1})", "{\n    \"a\": 1\n}\n"},
        {R"([1,{"a":2}])", R"([1,{"a":2}])", R"([1,{"a":2}])"},
        {R"("text")", "text", "text"},
        {R"("")", "", ""},
        {"5", "5", "5"},
        {"-0.25", "-0.25", "-0.25"},
        {"123.4567", "123.457", "123.457"},
        {"12345678", "1.23457e+07", "1.23457e+07"},
        {"1e308", "1e+308", "1e+308"},
        {"true", "true", "true"},
        {"false", "false", "false"},
        {"null", "", ""},
    };
    for (const auto& row : rows) {
        const QJsonValue value = value_of(row.json);
        EXPECT_EQ(GAbstractMessage::value_to_string(value, true).toStdString(), row.compact);
        EXPECT_EQ(GAbstractMessage::value_to_string(value, false).toStdString(), row.indented);
    }
    EXPECT_EQ(GAbstractMessage::value_to_string(QJsonValue(QJsonValue::Undefined), true),
              QString());
}

TEST(GAbstractMessage_show_obj, logs_the_compact_text) {
    const test::LogCapture log;
    GAbstractMessage::show_obj(object_of(R"({"a":{"b":"$"}})"));
    EXPECT_EQ(log.lines_with_level(), test::Lines{R"(DEB {"a":{"b":"$"}})"});
}

}  // namespace
