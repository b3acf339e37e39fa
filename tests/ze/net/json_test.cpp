#include "ze/net/json.h"

#include "ze/net/json_text.h"

#include "support/LogCapture.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

namespace json = ze::net::json;
using test::Lines;
using test::object_of;
using test::value_of;

constexpr float INF = std::numeric_limits<float>::infinity();

TEST(json_dump_value, prints_each_type_in_its_way) {
    const struct {
        QJsonValue value;
        Lines expected;
    } rows[] = {
        {QJsonValue(QJsonValue::Undefined), {"DEB   <undefined>"}},
        {value_of("null"), {"DEB   null"}},
        {value_of("true"), {"DEB   true"}},
        {value_of("false"), {"DEB   false"}},
        {value_of("5"), {"DEB   5"}},
        {value_of("1.5"), {"DEB   1.5"}},
        {value_of(R"("text $")"), {R"(DEB   "text $")"}},
        {value_of(R"("")"), {R"(DEB   "")"}},
        {value_of("[7]"), {"DEB   [0]: 7"}},
        {value_of(R"({"a":7})"), {"DEB   a: 7"}},
        {value_of("[]"), {}},
        {value_of("{}"), {}},
    };
    for (const auto& row : rows) {
        const test::LogCapture log;
        json::dump_value(2, row.value);
        EXPECT_EQ(log.lines_with_level(), row.expected);
    }
}

TEST(json_dump_object, indents_what_is_nested_by_four) {
    const test::LogCapture log;
    json::dump_object(1, object_of(R"({"a":1,"b":{"c":"x","d":[true,[null]]},"e":null,"f":"$"})"));
    EXPECT_EQ(log.lines_with_level(), (Lines{
                                          "DEB  a: 1",
                                          "DEB  b:",
                                          "DEB      c: x",
                                          "DEB      d:",
                                          "DEB          [0]: true",
                                          "DEB          [1]:",
                                          "DEB              [0]: ",
                                          "DEB  e: ",
                                          "DEB  f: $",
                                      }));
}

TEST(json_dump_array, counts_from_0) {
    const test::LogCapture log;
    json::dump_array(0, value_of(R"(["x",{"a":2.5},3])").toArray());
    EXPECT_EQ(log.lines_with_level(),
              (Lines{"DEB [0]: x", "DEB [1]:", "DEB     a: 2.5", "DEB [2]: 3"}));
}

TEST(json_dump_document, names_the_shape) {
    const struct {
        const char* name;
        QJsonDocument document;
        Lines expected;
    } rows[] = {
        {"null document", QJsonDocument(), {"DEB  <empty json document>"}},
        {"broken text", QJsonDocument::fromJson("{"), {"DEB  <empty json document>"}},
        {"empty object", QJsonDocument::fromJson("{}"), {"DEB  object:"}},
        {"object", QJsonDocument::fromJson(R"({"a":1})"), {"DEB  object:", "DEB      a: 1"}},
        {"array", QJsonDocument::fromJson("[1]"), {"DEB  array:", "DEB      [0]: 1"}},
    };
    for (const auto& row : rows) {
        const test::LogCapture log;
        json::dump_document(1, row.document);
        EXPECT_EQ(log.lines_with_level(), row.expected) << row.name;
    }
}

TEST(json_dump_value, walks_as_deep_as_the_parser_reads) {
    const int depth = 500;
    const test::LogCapture log;
    json::dump_value(0, value_of(std::string(depth, '[') + std::string(depth, ']')));
    ASSERT_EQ(log.lines_with_level().size(), depth - 1U);
    EXPECT_EQ(log.lines_with_level().back(), "DEB " + std::string(4 * (depth - 2), ' ') + "[0]:");
}

TEST(json_to_json_string, obeys_the_format) {
    const QJsonObject object = object_of(R"({"a":"ä"})");
    EXPECT_EQ(json::to_json_string(object, QJsonDocument::Compact).toStdString(), R"({"a":"ä"})");
    EXPECT_EQ(json::to_json_string(object, QJsonDocument::Indented).toStdString(),
              "{\n    \"a\": \"ä\"\n}\n");
}

TEST(json_to_float, is_defined_for_every_value) {
    const struct {
        const char* json;
        float expected;
    } rows[] = {
        {"1.5", 1.5F},     {"-3", -3.0F},
        {"1e308", INF},    {"-1e308", -INF},
        {"1e39", INF},     {"3.4028234e38", 3.4028234e38F},
        {"1e-300", 0.0F},  {"9007199254740993", 9007199254740992.0F},
        {"\"1.5\"", 0.0F}, {"null", 0.0F},
        {"true", 0.0F},    {"[1]", 0.0F},
        {"{}", 0.0F},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(json::to_float(value_of(row.json)), row.expected) << row.json;
    }
    EXPECT_TRUE(std::isnan(json::to_float(QJsonValue(std::nan("")))));
}

TEST(json_to_bool, knows_booleans_numbers_and_four_words) {
    const struct {
        const char* json;
        std::optional<bool> expected;
    } rows[] = {
        {"true", true},
        {"false", false},
        {"1", true},
        {"-7", true},
        {"0", false},
        {"0.5", false},
        {"1e300", false},
        {R"("true")", true},
        {R"(" TRUE ")", true},
        {R"("1")", true},
        {R"("False")", false},
        {R"("\t0\n")", false},
        {R"("yes")", std::nullopt},
        {R"("2")", std::nullopt},
        {R"("")", std::nullopt},
        {"null", std::nullopt},
        {"[true]", std::nullopt},
        {"{}", std::nullopt},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(json::to_bool(value_of(row.json)), row.expected) << row.json;
    }
    EXPECT_EQ(json::to_bool(QJsonValue(QJsonValue::Undefined)), std::nullopt);
}

}  // namespace
