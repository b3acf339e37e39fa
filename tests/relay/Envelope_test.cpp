#include "Envelope.h"

#include <string>

#include <gtest/gtest.h>

namespace {

std::string read(std::string_view frame) {
    relay::EnvelopeReader reader;
    const relay::Envelope* found = reader.read(frame);
    if (found == nullptr) {
        return "refused";
    }
    return found->type + "|" + found->subType + "|" + found->from + "|" + found->to + "|" +
           found->pw + "|" + std::to_string(found->textLength);
}

struct Row {
    const char* title;
    std::string frame;
    const char* fields;
};

TEST(Envelope, fields_are_read) {
    const Row rows[] = {
        {"all", R"({"type":"A","subType":"b","from":"c","to":"d","pw":"e","text":"xy"})",
         "A|b|c|d|e|2"},
        {"empty object", "{}", "|||||0"},
        {"blanks around", " \t\r\n{ \"type\" : \"A\" } \n", "A|||||0"},
        {"number", R"({"type":1,"to":"#"})", "|||#||0"},
        {"null", R"({"type":null,"to":"#"})", "|||#||0"},
        {"object", R"({"type":{"to":"x","type":"y"},"to":"#"})", "|||#||0"},
        {"array", R"({"type":["x"],"to":"#"})", "|||#||0"},
        {"deeper ones are others", R"({"payload":{"from":"x"},"from":"c"})", "||c|||0"},
        {"escaped key", R"({"\u0074ype":"A"})", "A|||||0"},
        {"escaped value", R"({"type":"\u0041\n\"\\"})", "A\n\"\\|||||0"},
        {"surrogates", R"({"from":"\ud83c\udfd3"})", "||\xF0\x9F\x8F\x93|||0"},
        {"case counts", R"({"Type":"A"})", "|||||0"},
        {"characters, not bytes", "{\"text\":\"\xC3\xA9\xE2\x82\xAC\"}", "|||||2"},
        {"numbers of all kinds", R"({"a":-1.5e300,"b":18446744073709551615,"c":true})", "|||||0"},
        {"same foreign key twice", R"({"x":"1","x":"2"})", "|||||0"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(read(row.frame), row.fields) << row.title;
    }
}

TEST(Envelope, what_is_no_single_object_is_refused) {
    const Row rows[] = {
        {"nothing", "", ""},
        {"blanks", "  ", ""},
        {"array", "[]", ""},
        {"array of objects", R"([{"type":"A"}])", ""},
        {"string", R"("type")", ""},
        {"number", "1", ""},
        {"double", "1.5", ""},
        {"true", "true", ""},
        {"null", "null", ""},
        {"half an object", R"({"type":"A")", ""},
        {"half a string", R"({"type":"A)", ""},
        {"no value", R"({"type":})", ""},
        {"trailing comma", R"({"type":"A",})", ""},
        {"trailing text", R"({"type":"A"} x)", ""},
        {"two objects", "{}{}", ""},
        {"comment", "{} // x", ""},
        {"single quotes", "{'type':'A'}", ""},
        {"bare key", "{type:1}", ""},
        {"leading zero", R"({"x":01})", ""},
        {"not a number", R"({"x":NaN})", ""},
        {"control character", "{\"type\":\"a\nb\"}", ""},
        {"bad escape", R"({"type":"\x"})", ""},
        {"lone high surrogate", R"({"type":"\ud83c"})", ""},
        {"lone low surrogate", R"({"type":"\udfd3"})", ""},
        {"overlong UTF-8", "{\"type\":\"\xC0\x80\"}", ""},
        {"surrogate in UTF-8", "{\"type\":\"\xED\xA0\x80\"}", ""},
        {"same field twice", R"({"from":"a","from":"a"})", ""},
        {"same field twice, escaped", R"({"to":"#","t\u006f":"+"})", ""},
        {"text twice", R"({"text":"","text":"long"})", ""},
        {"too deep", "{\"x\":" + std::string(40, '[') + std::string(40, ']') + "}", ""},
        {"byte order mark", "\xEF\xBB\xBF{}", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(read(row.frame), "refused") << row.title;
    }
}

TEST(Envelope, a_reader_keeps_nothing_of_the_message_before) {
    relay::EnvelopeReader reader;
    ASSERT_NE(reader.read(R"({"type":"A","from":"b","pw":"c","text":"d"})"), nullptr);
    ASSERT_EQ(reader.read(R"({"type":"A","from":)"), nullptr);
    const relay::Envelope* next = reader.read("{}");
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(next->type + next->from + next->pw + std::to_string(next->textLength), "0");
}

TEST(Envelope, a_forgotten_password_is_overwritten) {
    relay::EnvelopeReader reader;
    const relay::Envelope* login = reader.read(R"({"pw":"secret"})");
    ASSERT_NE(login, nullptr);
    reader.forget_password();
    EXPECT_EQ(login->pw, std::string(6, '\0'));
}

}  // namespace
