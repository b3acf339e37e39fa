#include "ze/net/GPlay.h"

#include "ze/net/PlayMessage.h"
#include "ze/net/json_text.h"

#include "support/LogCapture.h"

#include <QKeyEvent>

#include <cmath>
#include <functional>
#include <limits>

#include <gtest/gtest.h>

namespace {

using ze::net::GPlay;
namespace ORIENT2D = ze::math::ORIENT2D;

constexpr float INF = std::numeric_limits<float>::infinity();
constexpr unsigned long long TWO_POW_32 = 1ULL << 32;

std::string payload_text(const GPlay& play) {
    return test::text_of(play.payload.toObject());
}

GPlay with_payload(const std::string& json) {
    GPlay play;
    play.payload = test::value_of(json);
    return play;
}

TEST(GPlay, a_fresh_one_writes_a_null_payload) {
    EXPECT_EQ(
        test::wire_text(GPlay()),
        R"({"from":"","game":"","ident":0,"payload":null,"subType":"","to":"","type":"PLAY"})");
}

TEST(GPlay, from_args_fills_three_fields) {
    const GPlay play =
        GPlay::from_args(QStringLiteral("g:a"), QStringLiteral("#"), QStringLiteral("vork"));
    EXPECT_EQ(
        test::wire_text(play),
        R"({"from":"g:a","game":"vork","ident":0,"payload":null,"subType":"","to":"#","type":"PLAY"})");
}

TEST(GPlay, takes_any_payload_as_it_stands) {
    for (const char* payload :
         {"null", "true", "1.5", R"("x")", R"([1,[2]])", R"({"a":{"b":1}})"}) {
        const std::string json = std::string(R"({"from":"","game":"vork","ident":0,"payload":)") +
                                 payload + R"(,"subType":"","to":"","type":"PLAY"})";
        EXPECT_EQ(test::wire_text(test::read<GPlay>(json.c_str())), json);
    }
}

TEST(GPlay, a_missing_payload_goes_out_as_null_and_a_game_of_another_type_as_empty) {
    EXPECT_EQ(
        test::wire_text(test::read<GPlay>(R"({"type":"PLAY","game":5})")),
        R"({"from":"","game":"","ident":0,"payload":null,"subType":"","to":"","type":"PLAY"})");
}

TEST(GPlay_to_string, shows_the_subType_if_there_is_one) {
    const struct {
        const char* json;
        const char* expected;
    } rows[] = {
        {R"({"subType":"LIST_USER","from":"a","to":"+","game":"vork","payload":{"cmd":"stop"}})",
         R"(PLAY/LIST_USER, from:'a', to:'+', game:'vork', payload:'{"cmd":"stop"}')"},
        {R"({"from":"a","to":"#","game":"vork","payload":{"cmd":"stop"},"ident":5})",
         R"(PLAY, from:'a', to:'#', game:'vork', payload:'{"cmd":"stop"}')"},
        {R"({"from":"a","to":"#","payload":"x"})", "PLAY, from:'a', to:'#', game:'', payload:'x'"},
        {"{}", "PLAY, from:'', to:'', game:'', payload:''"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(test::read<GPlay>(row.json).to_string().toStdString(), row.expected);
    }
}

TEST(GPlay, is_subtype_LIST_USER_is_case_sensitive) {
    GPlay play;
    EXPECT_FALSE(play.is_subtype_LIST_USER());
    play.subType = QStringLiteral("LIST_USER");
    EXPECT_TRUE(play.is_subtype_LIST_USER());
    play.subType = QStringLiteral("list_user");
    EXPECT_FALSE(play.is_subtype_LIST_USER());
}

TEST(GPlay_set, each_builder_writes_its_whole_payload) {
    const struct {
        std::function<void(GPlay&)> build;
        const char* expected;
    } rows[] = {
        {[](GPlay& p) { p.set_start(ORIENT2D::LEFT, 5000); },
         R"({"cmd":"start","msTravel":5000,"orient":"LEFT"})"},
        {[](GPlay& p) { p.set_start(ORIENT2D::RIGHT, TWO_POW_32 + 5000); },
         R"({"cmd":"start","msTravel":5000,"orient":"RIGHT"})"},
        {[](GPlay& p) { p.set_stop(); }, R"({"cmd":"stop"})"},
        {[](GPlay& p) { p.set_travel(1500); }, R"({"cmd":"travel","msTravel":1500})"},
        {[](GPlay& p) { p.set_travel(TWO_POW_32 - 1); }, R"({"cmd":"travel","msTravel":-1})"},
        {[](GPlay& p) { p.set_points(3, 7); },
         R"({"cmd":"points","countPointsMe":3,"countPointsOpponent":7})"},
        {[](GPlay& p) { p.set_orient(ORIENT2D::RIGHT); },
         R"({"cmd":"orientation","orient":"RIGHT"})"},
        {[](GPlay& p) { p.set_ball_out_of_field(ORIENT2D::LEFT); },
         R"({"cmd":"out_of_field","orient":"LEFT"})"},
        {[](GPlay& p) {
             p.set_ball({123.4567F, -1.5F}, {0.97014254F, 0.24253564F}, 160.5F);
         },
         R"({"cmd":"setBall","dir":"0.970143,0.242536","pos":"123.457,-1.5","velocity":160.5})"},
        {[](GPlay& p) { p.set_string(QStringLiteral("k"), QStringLiteral("v")); },
         R"({"cmd":"string","k":"v"})"},
    };
    for (const auto& row : rows) {
        GPlay play;
        row.build(play);
        EXPECT_EQ(payload_text(play), row.expected);
    }
}

TEST(GPlay_set, a_second_builder_replaces_the_first_payload) {
    GPlay play = with_payload("[1,2]");
    play.set_start(ORIENT2D::LEFT, 5000);
    play.set_stop();
    EXPECT_EQ(payload_text(play), R"({"cmd":"stop"})");
}

TEST(GPlay_set, a_copy_keeps_its_payload) {
    GPlay play;
    play.set_stop();
    const GPlay copy = play;
    play.set_travel(1);
    EXPECT_EQ(payload_text(copy), R"({"cmd":"stop"})");
}

TEST(GPlay_set, a_velocity_that_is_no_number_goes_out_as_null) {
    GPlay play;
    play.set_ball({INF, 0}, {std::nanf(""), 1}, INF);
    EXPECT_EQ(payload_text(play),
              R"({"cmd":"setBall","dir":"nan,1","pos":"inf,0","velocity":null})");
}

TEST(GPlay_set_key_event, presses_are_told_from_everything_else) {
    const struct {
        QEvent::Type type;
        const char* expected;
    } rows[] = {
        {QEvent::KeyPress, R"({"cmd":"keyPressed","keySequence":"Up"})"},
        {QEvent::KeyRelease, R"({"cmd":"keyReleased","keySequence":"Up"})"},
        {QEvent::ShortcutOverride, R"({"cmd":"keyReleased","keySequence":"Up"})"},
    };
    for (const auto& row : rows) {
        const QKeyEvent event(row.type, Qt::Key_Up, Qt::NoModifier);
        GPlay play;
        play.set_key_event(&event);
        EXPECT_EQ(payload_text(play), row.expected);
    }
}

TEST(GPlay_set_key_event, comes_back_as_the_same_keys) {
    const QKeyEvent event(QEvent::KeyPress, Qt::Key_Down, Qt::ControlModifier);
    GPlay play;
    play.set_key_event(&event);
    QJsonObject object = play.payload.toObject();
    const ze::net::PlayMessage message(object);
    EXPECT_EQ(message.get_key_sequence(), QKeySequence(Qt::CTRL | Qt::Key_Down));
}

TEST(GPlay_set_key_event, a_null_event_leaves_the_payload) {
    GPlay play;
    play.set_stop();
    test::LogCapture log;
    log.expect_error("GPlay::set_key_event, ev == nullptr");
    play.set_key_event(nullptr);
    EXPECT_EQ(payload_text(play), R"({"cmd":"stop"})");
}

TEST(GPlay_payload_as, string_takes_strings_alone) {
    for (const auto& [json, expected] : {std::pair(R"("x")", "x"),
                                         {R"("")", ""},
                                         {"5", ""},
                                         {"true", ""},
                                         {"null", ""},
                                         {R"(["x"])", ""},
                                         {R"({"x":"x"})", ""}}) {
        EXPECT_EQ(with_payload(json).payload_as_string().toStdString(), expected) << json;
    }
}

TEST(GPlay_payload_as, int_takes_numbers_and_decimal_strings) {
    const struct {
        const char* json;
        int expected;
    } rows[] = {
        {"5", 5},
        {"-5.0", -5},
        {"2.5", 42},
        {"2147483648", 42},
        {"1e308", 42},
        {R"("7")", 7},
        {R"("-2147483648")", std::numeric_limits<int>::min()},
        {R"("2147483648")", 42},
        {R"("7a")", 42},
        {R"("0x10")", 42},
        {R"("1.5")", 42},
        {R"("")", 42},
        {"true", 42},
        {"null", 42},
        {"[5]", 42},
        {R"({"a":5})", 42},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(with_payload(row.json).payload_as_int(42), row.expected) << row.json;
    }
}

TEST(GPlay_payload_as, double_takes_numbers_and_real_strings) {
    const struct {
        const char* json;
        double expected;
    } rows[] = {
        {"5", 5.0},           {"-2.5", -2.5},       {"1e308", 1e308},   {R"("2.5")", 2.5},
        {R"("1e3")", 1000.0}, {R"("1e400")", 42.0}, {R"("2,5")", 42.0}, {R"("x")", 42.0},
        {R"("")", 42.0},      {"true", 42.0},       {"null", 42.0},     {"[5]", 42.0},
        {"{}", 42.0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(with_payload(row.json).payload_as_double(42.0), row.expected) << row.json;
    }
}

TEST(GPlay_payload_as, bool_takes_booleans_numbers_and_four_words) {
    const struct {
        const char* json;
        bool expected_of_true;
        bool expected_of_false;
    } rows[] = {
        {"true", true, true},        {"false", false, false},      {"3", true, true},
        {"0", false, false},         {"0.5", false, false},        {R"(" True ")", true, true},
        {R"("1")", true, true},      {R"("FALSE")", false, false}, {R"("0")", false, false},
        {R"("maybe")", true, false}, {"null", true, false},        {"[]", true, false},
        {"{}", true, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(with_payload(row.json).payload_as_bool(true), row.expected_of_true) << row.json;
        EXPECT_EQ(with_payload(row.json).payload_as_bool(false), row.expected_of_false) << row.json;
    }
}

TEST(GPlay_payload_as_array, converts_each_element_or_gives_its_default) {
    const GPlay play = with_payload(R"([1,"a",2.5,1e308,null,true,[7],{"b":8}])");
    const QString none;
    EXPECT_EQ(play.payload_as_array_string(), (std::vector<QString>{none, QStringLiteral("a"), none,
                                                                    none, none, none, none, none}));
    EXPECT_EQ(play.payload_as_array_int(), (std::vector<int>{1, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(play.payload_as_array_float(), (std::vector<float>{1, 0, 2.5F, INF, 0, 0, 0, 0}));
    EXPECT_EQ(play.payload_as_array_double(), (std::vector<double>{1, 0, 2.5, 1e308, 0, 0, 0, 0}));
}

TEST(GPlay_payload_as_array, is_empty_for_every_other_payload) {
    for (const char* json : {"null", "true", "5", R"("[1]")", R"({"a":[1]})", "[]"}) {
        const GPlay play = with_payload(json);
        EXPECT_TRUE(play.payload_as_array_string().empty()) << json;
        EXPECT_TRUE(play.payload_as_array_int().empty()) << json;
        EXPECT_TRUE(play.payload_as_array_float().empty()) << json;
        EXPECT_TRUE(play.payload_as_array_double().empty()) << json;
    }
}

}  // namespace
