#include "ze/net/PlayMessage.h"

#include "ze/net/json_text.h"

#include "support/LogCapture.h"

#include <QKeySequence>

#include <functional>
#include <limits>

#include <gtest/gtest.h>

namespace {

using ze::net::PlayMessage;
namespace ORIENT2D = ze::math::ORIENT2D;
using test::Lines;

constexpr float INF = std::numeric_limits<float>::infinity();
constexpr glm::vec2 DEF{-7, 9};

QString q(const char* text) {
    return QString::fromUtf8(text);
}

/// Reads one JSON object; announces the error lines that the read shall leave.
class Reader {
public:
    explicit Reader(const char* json, const Lines& errors = {}) : object(test::object_of(json)) {
        for (const std::string& line : errors) {
            log.expect_error(line);
        }
    }

    const PlayMessage& operator*() const { return message; }
    const PlayMessage* operator->() const { return &message; }

    test::LogCapture log;

private:
    QJsonObject object;
    PlayMessage message{object};
};

TEST(PlayMessage, its_end_commits_the_object) {
    QJsonValue target = test::value_of(R"({"old":1})");
    QJsonObject object;
    {
        PlayMessage message(object, target);
        message.set_cmd(q("stop"));
        EXPECT_EQ(test::text_of(target.toObject()), R"({"old":1})");
    }
    EXPECT_EQ(test::text_of(target.toObject()), R"({"cmd":"stop"})");
}

TEST(PlayMessage, a_view_for_reading_commits_nothing_and_still_writes_its_object) {
    QJsonObject object;
    { PlayMessage(object).set_cmd(q("stop")); }
    EXPECT_EQ(test::text_of(object), R"({"cmd":"stop"})");
}

TEST(PlayMessage_set, each_setter_writes_its_key) {
    const QKeySequence keys(Qt::CTRL | Qt::Key_Up);
    const struct {
        std::function<void(PlayMessage&)> set;
        const char* expected;
    } rows[] = {
        {[](PlayMessage& m) { m.set_cmd(q("start")); }, R"({"cmd":"start"})"},
        {[](PlayMessage& m) { m.set_name(q("n")); }, R"({"name":"n"})"},
        {[](PlayMessage& m) { m.set_string(q("k"), q("ä")); }, R"({"k":"ä"})"},
        {[](PlayMessage& m) { m.set_std_string(q("k"), "ä"); }, R"({"k":"ä"})"},
        {[](PlayMessage& m) { m.set_int(q("k"), -5); }, R"({"k":-5})"},
        {[](PlayMessage& m) { m.set_float(q("k"), 0.1F); }, R"({"k":0.10000000149011612})"},
        {[](PlayMessage& m) { m.set_double(q("k"), 0.1); }, R"({"k":0.1})"},
        {[](PlayMessage& m) { m.set_bool(q("k"), true); }, "{}"},
        {[](PlayMessage& m) {
             m.set_vector2(q("k"), {123.4567F, -0.5F});
         },
         R"({"k":"123.457,-0.5"})"},
        {[](PlayMessage& m) {
             m.set_vector2(q("k"), {1e10F, 1e-10F});
         },
         R"({"k":"1e+10,1e-10"})"},
        {[](PlayMessage& m) { m.set_orient(ORIENT2D::DOWN); }, R"({"orient":"DOWN"})"},
        {[&](PlayMessage& m) { m.set_key_sequence(keys, true); },
         R"({"cmd":"keyPressed","keySequence":"Ctrl+Up"})"},
        {[&](PlayMessage& m) { m.set_key_sequence(keys, false); },
         R"({"cmd":"keyReleased","keySequence":"Ctrl+Up"})"},
    };
    for (const auto& row : rows) {
        QJsonObject object;
        PlayMessage message(object);
        row.set(message);
        EXPECT_EQ(test::text_of(object), row.expected);
    }
}

TEST(PlayMessage_set, bool_leaves_what_stands_under_the_key) {
    QJsonObject object = test::object_of(R"({"k":1})");
    PlayMessage(object).set_bool(q("k"), true);
    EXPECT_EQ(test::text_of(object), R"({"k":1})");
}

TEST(PlayMessage_is_cmd, each_test_knows_its_word_alone) {
    const struct {
        const char* word;
        bool (PlayMessage::*test)() const;
    } rows[] = {
        {"start", &PlayMessage::is_cmd_start},
        {"stop", &PlayMessage::is_cmd_stop},
        {"setPos", &PlayMessage::is_cmd_setPos},
        {"keyPressed", &PlayMessage::is_cmd_key_pressed},
        {"orientation", &PlayMessage::is_cmd_orient},
        {"out_of_field", &PlayMessage::is_cmd_out_of_field},
        {"travel", &PlayMessage::is_cmd_travel},
        {"setBall", &PlayMessage::is_cmd_setBall},
    };
    for (const auto& row : rows) {
        for (const char* word :
             {"start", "stop", "setPos", "keyPressed", "keyReleased", "orientation", "out_of_field",
              "travel", "setBall", "points", "string", "Start", "setpos", ""}) {
            QJsonObject object{{q("cmd"), q(word)}};
            const PlayMessage message(object);
            EXPECT_EQ((message.*row.test)(), std::string(word) == row.word) << word;
            EXPECT_EQ(message.is_cmd(q(row.word)), std::string(word) == row.word) << word;
        }
    }
}

TEST(PlayMessage_is_cmd, a_command_that_is_no_string_is_none) {
    for (const char* json : {"{}", R"({"cmd":1})", R"({"cmd":null})", R"({"cmd":["stop"]})"}) {
        const Reader read(json);
        EXPECT_FALSE(read->is_cmd_stop()) << json;
        EXPECT_FALSE(read->is_cmd(QString())) << json;
    }
}

TEST(PlayMessage_is_string, wants_the_key_and_the_equal_string) {
    const Reader read(R"({"a":"x","n":5,"e":"","name":"me"})");
    EXPECT_TRUE(read->is_string(q("a"), q("x")));
    EXPECT_FALSE(read->is_string(q("a"), q("X")));
    EXPECT_FALSE(read->is_string(q("b"), q("x")));
    EXPECT_FALSE(read->is_string(q("b"), QString()));
    EXPECT_FALSE(read->is_string(q("n"), q("5")));
    EXPECT_TRUE(read->is_string(q("e"), QString()));
    EXPECT_TRUE(read->is_std_string(q("a"), "x"));
    EXPECT_FALSE(read->is_std_string(q("a"), "xx"));
    EXPECT_TRUE(read->is_name(q("me")));
    EXPECT_FALSE(read->is_name(q("you")));
    EXPECT_EQ(read.log.lines_with_level(), Lines{});
}

TEST(PlayMessage_get_string, reads_a_string) {
    const Reader read(R"({"k":"ä","name":"me"})");
    EXPECT_EQ(read->get_string(q("k")), q("ä"));
    EXPECT_EQ(read->get_std_string(q("k")), "ä");
    EXPECT_EQ(read->get_name(), q("me"));
}

TEST(PlayMessage_get_string, whatever_is_no_string_or_an_empty_one_has_no_value) {
    for (const char* json : {"{}", R"({"k":""})", R"({"k":5})", R"({"k":true})", R"({"k":null})",
                             R"({"k":["x"]})", R"({"k":{"k":"x"}})", R"({"K":"x"})"}) {
        const Reader read(json, {"PlayMessage::get_string('k') , no value",
                                 "PlayMessage::get_std_string('k') , no value"});
        EXPECT_EQ(read->get_string(q("k")), QString()) << json;
        EXPECT_EQ(read->get_std_string(q("k")), "") << json;
    }
}

TEST(PlayMessage_get_string, an_empty_key_is_a_fault_of_its_own) {
    const Reader read(R"({"":"x"})",
                      {"PlayMessage::get_string('') ???", "PlayMessage::get_std_string('') ???"});
    EXPECT_EQ(read->get_string(QString()), QString());
    EXPECT_EQ(read->get_std_string(QString()), "");
}

TEST(PlayMessage_get_string, a_missing_name_has_no_value) {
    const Reader read("{}", {"PlayMessage::get_string('name') , no value"});
    EXPECT_EQ(read->get_name(), QString());
}

TEST(PlayMessage_get_number, reads_numbers_of_any_size) {
    const struct {
        const char* json;
        int as_int;
        float as_float;
        double as_double;
    } rows[] = {
        {R"({"k":7})", 7, 7.0F, 7.0},
        {R"({"k":-7.0})", -7, -7.0F, -7.0},
        {R"({"k":2.5})", 0, 2.5F, 2.5},
        {R"({"k":2147483647})", 2147483647, 2147483648.0F, 2147483647.0},
        {R"({"k":2147483648})", 0, 2147483648.0F, 2147483648.0},
        {R"({"k":-9223372036854775808})", 0, -9223372036854775808.0F, -9223372036854775808.0},
        {R"({"k":1e308})", 0, INF, 1e308},
        {R"({"k":-1e308})", 0, -INF, -1e308},
        {R"({"k":1e-308})", 0, 0.0F, 1e-308},
    };
    for (const auto& row : rows) {
        const Reader read(row.json);
        EXPECT_EQ(read->get_int(q("k"), 42), row.as_int) << row.json;
        EXPECT_EQ(read->get_float(q("k"), 42), row.as_float) << row.json;
        EXPECT_EQ(read->get_double(q("k"), 42), row.as_double) << row.json;
    }
}

TEST(PlayMessage_get_number, whatever_is_no_number_gives_the_default) {
    for (const char* json : {"{}", R"({"k":"7"})", R"({"k":true})", R"({"k":null})", R"({"k":[7]})",
                             R"({"k":{"k":7}})"}) {
        const Reader read(json, {"PlayMessage::get_int, 'k' missing or invalid",
                                 "PlayMessage::get_float, 'k' missing or invalid",
                                 "PlayMessage::get_double, 'k' missing or invalid"});
        EXPECT_EQ(read->get_int(q("k"), 42), 42) << json;
        EXPECT_EQ(read->get_float(q("k"), 4.5F), 4.5F) << json;
        EXPECT_EQ(read->get_double(q("k"), 4.25), 4.25) << json;
    }
}

TEST(PlayMessage_get_bool, knows_booleans_numbers_and_four_words) {
    const struct {
        const char* json;
        bool expected;
    } rows[] = {
        {R"({"k":true})", true},       {R"({"k":false})", false}, {R"({"k":2})", true},
        {R"({"k":0})", false},         {R"({"k":0.5})", false},   {R"({"k":"true"})", true},
        {R"({"k":"  TRUE "})", true},  {R"({"k":"1"})", true},    {R"({"k":"false"})", false},
        {R"({"k":"\tFalse"})", false}, {R"({"k":" 0 "})", false},
    };
    for (const auto& row : rows) {
        const Reader read(row.json);
        EXPECT_EQ(read->get_bool(q("k"), !row.expected), row.expected) << row.json;
    }
}

TEST(PlayMessage_get_bool, anything_else_gives_the_default) {
    for (const char* json : {"{}", R"({"k":"yes"})", R"({"k":""})", R"({"k":"10"})",
                             R"({"k":null})", R"({"k":[true]})", R"({"k":{}})"}) {
        const std::string line = "PlayMessage::get_bool, 'k' missing or invalid";
        const Reader read(json, {line, line});
        EXPECT_TRUE(read->get_bool(q("k"), true)) << json;
        EXPECT_FALSE(read->get_bool(q("k"), false)) << json;
    }
}

TEST(PlayMessage_get_vector2, reads_two_numbers_around_a_comma) {
    const struct {
        const char* json;
        glm::vec2 expected;
    } rows[] = {
        {R"({"k":"12.5,3"})", {12.5F, 3}}, {R"({"k":"-1e2,+.5"})", {-100, 0.5F}},
        {R"({"k":" 1 , 2 "})", {1, 2}},    {R"({"k":"1,2,3"})", {1, 2}},
        {R"({"k":"1,2x"})", {1, 2}},
    };
    for (const auto& row : rows) {
        const Reader read(row.json);
        EXPECT_EQ(read->get_vector2(q("k"), DEF), row.expected) << row.json;
    }
}

TEST(PlayMessage_get_vector2, a_text_that_is_no_vector_gives_the_default_in_silence) {
    for (const char* json :
         {R"({"k":"12.5;3"})", R"({"k":"12.5 3"})", R"({"k":"12.5"})", R"({"k":"12.5,"})",
          R"({"k":",3"})", R"({"k":"x,3"})", R"({"k":"3,x"})", R"({"k":"1e400,1"})",
          R"({"k":"1,1e400"})", R"({"k":"nan,1"})", R"({"k":"1,inf"})", R"({"k":"1e,1"})",
          R"({"k":"1,1e"})", R"({"k":"1,+-1"})", R"({"k":"[1,2]"})"}) {
        const Reader read(json);
        EXPECT_EQ(read->get_vector2(q("k"), DEF), DEF) << json;
        EXPECT_EQ(read.log.lines_with_level(), Lines{}) << json;
    }
}

TEST(PlayMessage_get_vector2, whatever_is_no_string_has_no_value) {
    for (const char* json : {"{}", R"({"k":""})", R"({"k":5})", R"({"k":[1,2]})"}) {
        const Reader read(json, {"PlayMessage::get_std_string('k') , no value"});
        EXPECT_EQ(read->get_vector2(q("k"), DEF), DEF) << json;
    }
}

TEST(PlayMessage_get_vector2, reads_what_set_vector2_wrote) {
    for (const glm::vec2 value : {glm::vec2(0, 0), glm::vec2(-400, 200), glm::vec2(0.25F, -1e-6F),
                                  glm::vec2(1.5e20F, -3e38F)}) {
        QJsonObject object;
        PlayMessage message(object);
        message.set_vector2(q("k"), value);
        EXPECT_EQ(message.get_vector2(q("k"), DEF), value);
    }
}

TEST(PlayMessage_get_orient, knows_the_four_words) {
    for (const auto& [json, expected] : {std::pair(R"({"orient":"LEFT"})", ORIENT2D::LEFT),
                                         {R"({"orient":"RIGHT"})", ORIENT2D::RIGHT},
                                         {R"({"orient":"UP"})", ORIENT2D::UP},
                                         {R"({"orient":"DOWN"})", ORIENT2D::DOWN}}) {
        const Reader read(json);
        EXPECT_EQ(read->get_orient(), expected) << json;
    }
}

TEST(PlayMessage_get_orient, an_unreadable_word_gives_LEFT_and_an_error_line) {
    for (const char* word : {"left", "Right", "UP ", "1"}) {
        const std::string json = std::string(R"({"orient":")") + word + "\"}";
        const Reader read(json.c_str(),
                          {std::string("ORIENT2D::from_string, cannot parse <<<") + word + ">>>"});
        EXPECT_EQ(read->get_orient(), ORIENT2D::LEFT) << word;
    }
}

TEST(PlayMessage_get_orient, a_missing_word_gives_LEFT_and_both_lines) {
    const Reader read(R"({"orient":1})", {"PlayMessage::get_std_string('orient') , no value",
                                          "ORIENT2D::from_string, cannot parse <<<>>>"});
    EXPECT_EQ(read->get_orient(), ORIENT2D::LEFT);
}

TEST(PlayMessage_get_key_sequence, reads_portable_text) {
    const Reader read(R"({"keySequence":"Ctrl+Up"})");
    EXPECT_EQ(read->get_key_sequence(), QKeySequence(Qt::CTRL | Qt::Key_Up));
}

TEST(PlayMessage_get_key_sequence, a_missing_one_is_empty) {
    const Reader read("{}", {"PlayMessage::get_string('keySequence') , no value"});
    EXPECT_EQ(read->get_key_sequence(), QKeySequence());
}

TEST(PlayMessage_get_key_sequence, takes_any_text) {
    for (const char* text : {"no key", "++++", ", , , ,", "Ctrl+", "$", "\\u0000x"}) {
        const std::string json = std::string(R"({"keySequence":")") + text + "\"}";
        const Reader read(json.c_str());
        EXPECT_LE(read->get_key_sequence().count(), 4) << text;
    }
}

TEST(PlayMessage_as_string, joins_keys_and_values) {
    const struct {
        const char* json;
        const char* expected;
    } rows[] = {
        {"{}", ""},
        {R"({"a":1})", "'a'='1'"},
        {R"({"b":"x","a":1.5,"c":[1,2],"d":{"e":true},"f":null})",
         R"('a'='1.5', 'b'='x', 'c'='[1,2]', 'd'='{"e":true}', 'f'='')"},
        {R"({"a":"$, "})", "'a'='$, '"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Reader(row.json)->as_string().toStdString(), row.expected);
    }
}

TEST(PlayMessage_show, logs_the_count_and_each_key) {
    const Reader read(R"({"cmd":"setPos","pos":"1,2","n":[1]})");
    read->show(2);
    EXPECT_EQ(read.log.lines_with_level(), (Lines{
                                               "DEB   PlayMessage, keys:3",
                                               "DEB       'cmd'='setPos'",
                                               "DEB       'n'='[1]'",
                                               "DEB       'pos'='1,2'",
                                           }));
}

}  // namespace
