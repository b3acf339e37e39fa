#include "ze/store/GAttributes.h"

#include "support/LogCapture.h"

#include <QColor>
#include <QDataStream>
#include <QDateTime>
#include <QIODevice>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QUrl>
#include <QUuid>

#include <limits>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using ze::log::LogConfig;
using ze::store::GAttributes;
using ze::store::GType;

const QString key = QStringLiteral("key");

struct Unregistered {
    int value = 0;
};

GAttributes with_value(const QVariant& value) {
    GAttributes attributes;
    attributes.set(key, value);
    return attributes;
}

QByteArray bytes_of(const GAttributes& attributes) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    attributes.to_stream(stream);
    return bytes;
}

std::string hex_of(const GAttributes& attributes) {
    return bytes_of(attributes).toHex(' ').toStdString();
}

// The head of a stream with one pair, up to its value.
const QByteArray oneKey = QByteArray::fromHex("00000001 00000002 0061");

bool read(GAttributes& attributes, const QByteArray& bytes) {
    QDataStream stream(bytes);
    return attributes.from_stream(stream);
}

// Reads

TEST(GAttributes, get_returns_the_value_of_each_of_its_types) {
    const GType typed{7, "abc"};

    EXPECT_EQ(with_value(QStringLiteral("a")).get(key, QString()), QStringLiteral("a"));
    EXPECT_EQ(with_value(true).get(key, false), true);
    EXPECT_EQ(with_value(-5).get(key, 1), -5);
    EXPECT_EQ(with_value(5u).get(key, 1u), 5u);
    EXPECT_EQ(with_value(QByteArray("ab")).get(key, QByteArray()), QByteArray("ab"));
    EXPECT_EQ(with_value(QVariant::fromValue(typed)).get(key, GType()), typed);
}

TEST(GAttributes, get_of_an_absent_key_is_the_fallback_and_traced) {
    test::LogCapture log(ze::log::TRACE);

    EXPECT_EQ(GAttributes().get(key, 7), 7);
    EXPECT_EQ(log.lines_with_level(),
              std::vector<std::string>{"TRA GAttributes::get, 'key' not found"});
}

struct WrongRow {
    const char* name;
    QVariant value;
};

class GAttributesWrongType : public testing::TestWithParam<WrongRow> {};

TEST_P(GAttributesWrongType, is_the_fallback_for_int_and_traced) {
    test::LogCapture log(ze::log::TRACE);

    EXPECT_EQ(with_value(GetParam().value).get(key, 7), 7);
    EXPECT_EQ(log.lines_with_level(), std::vector<std::string>{"TRA GAttributes::get, wrong type"});
}

INSTANTIATE_TEST_SUITE_P(
    GAttributes, GAttributesWrongType,
    testing::Values(WrongRow{"a_number_as_text", QStringLiteral("12")},
                    WrongRow{"an_unsigned_number", 12u}, WrongRow{"a_longer_number", 12ll},
                    WrongRow{"a_bool", true}, WrongRow{"a_real_number", 12.0},
                    WrongRow{"an_invalid_value", QVariant()},
                    WrongRow{"a_null_int", QVariant(QMetaType(QMetaType::Int))}),
    [](const auto& row) { return row.param.name; });

TEST(GAttributes, get_of_a_null_text_is_the_fallback_and_traced) {
    test::LogCapture log(ze::log::TRACE);
    const GAttributes attributes = with_value(QVariant(QMetaType(QMetaType::QString)));

    EXPECT_EQ(attributes.get(key, QStringLiteral("x")), QStringLiteral("x"));
    EXPECT_EQ(log.lines(), std::vector<std::string>{"GAttributes::get, wrong type"});
}

TEST(GAttributes, keys_differ_by_case) {
    EXPECT_EQ(with_value(1).get(QStringLiteral("Key"), 7), 7);
}

TEST(GAttributes, set_replaces) {
    GAttributes attributes = with_value(1);

    attributes.set(key, QStringLiteral("two"));

    EXPECT_EQ(attributes.size(), 1u);
    EXPECT_EQ(attributes.get(key, QString()), QStringLiteral("two"));
}

TEST(GAttributes, flag_is_a_bool_and_nothing_else) {
    GAttributes attributes;
    attributes.set_flag(key, true);

    EXPECT_TRUE(attributes.is_flag(key, false));
    EXPECT_TRUE(attributes.get(key, false));
    EXPECT_TRUE(with_value(QStringLiteral("false")).is_flag(key, true));
    EXPECT_FALSE(with_value(1).is_flag(key, false));
}

// Plain structures

TEST(GAttributes, pod_comes_back) {
    LogConfig config;
    config.digits = 3;
    config.autoScrollHorz = true;
    GAttributes attributes;

    attributes.set_pod(key, config);

    const LogConfig read_back = attributes.get_pod(key, LogConfig());
    EXPECT_EQ(read_back.digits, 3u);
    EXPECT_TRUE(read_back.autoScrollHorz);
    EXPECT_EQ(attributes.get(key, GType()).id, 99u);
    EXPECT_EQ(attributes.get(key, GType()).data.size(), 20);
}

TEST(GAttributes, pod_of_an_absent_key_is_the_fallback_and_traced) {
    test::LogCapture log(ze::log::TRACE);
    LogConfig fallback;
    fallback.digits = 3;

    EXPECT_EQ(GAttributes().get_pod(key, fallback).digits, 3u);
    EXPECT_EQ(log.lines_with_level(),
              std::vector<std::string>{"TRA GAttributes::get_pod, <<<key>>> not found !"});
}

struct PodRow {
    const char* name;
    QVariant value;
};

class GAttributesWrongPod : public testing::TestWithParam<PodRow> {};

TEST_P(GAttributesWrongPod, gives_the_defaults_of_the_type_not_the_fallback) {
    LogConfig fallback;
    fallback.digits = 3;

    EXPECT_EQ(with_value(GetParam().value).get_pod(key, fallback).digits, LogConfig().digits);
}

INSTANTIATE_TEST_SUITE_P(
    GAttributes, GAttributesWrongPod,
    testing::Values(PodRow{"one_byte_short", QVariant::fromValue(GType{99, QByteArray(19, '\1')})},
                    PodRow{"one_byte_long", QVariant::fromValue(GType{99, QByteArray(21, '\1')})},
                    PodRow{"another_id", QVariant::fromValue(GType{500, QByteArray(20, '\1')})},
                    PodRow{"an_empty_one", QVariant::fromValue(GType())},
                    PodRow{"no_structure", QVariant(QByteArray(20, '\1'))}),
    [](const auto& row) { return row.param.name; });

TEST(GAttributesDeathTest, pod_without_an_id_ends_the_program) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    // The text goes to the standard output; a death test looks at the standard error.
    const auto store = [] {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        GAttributes().set_pod(key, Unregistered());
    };

    EXPECT_EXIT(store(), testing::ExitedWithCode(1), "^GAttributes::set_pod, id == 0\n");
}

// Text

TEST(GAttributes, text_of_nothing_is_empty) {
    EXPECT_EQ(GAttributes().to_string(), QString());
}

TEST(GAttributes, text_lists_the_pairs_in_key_order) {
    GAttributes attributes;
    attributes.set(QStringLiteral("b"), 5);
    attributes.set(QStringLiteral("a"), QStringLiteral("x"));
    attributes.set(QStringLiteral("B"), QByteArray("abc"));

    EXPECT_EQ(attributes.to_string().toStdString(),
              "B=QVariant{QByteArrayvalid=true, null=false, size:3},"
              "a=QVariant{QStringvalid=true, null=false, value:\"x\"},"
              "b=QVariant{intvalid=true, null=false, value:\"5\"}");
}

// The stored form. These bytes stand in settings that people have: a change here loses them.

struct StoredRow {
    const char* name;
    QVariant value;
    const char* bytes;
};

class GAttributesStored : public testing::TestWithParam<StoredRow> {};

TEST_P(GAttributesStored, has_these_bytes) {
    EXPECT_EQ(hex_of(with_value(GetParam().value)),
              std::string("00 00 00 01 00 00 00 06 00 6b 00 65 00 79 ") + GetParam().bytes);
}

TEST_P(GAttributesStored, reads_back_as_the_same) {
    const GAttributes written = with_value(GetParam().value);
    GAttributes read_back;

    EXPECT_TRUE(read(read_back, bytes_of(written)));
    EXPECT_EQ(read_back.attributes(), written.attributes());
    EXPECT_EQ(read_back.attributes().at(key).isNull(), GetParam().value.isNull());
    EXPECT_EQ(hex_of(read_back), hex_of(written));
}

LogConfig stored_config() {
    LogConfig config;
    config.ini();
    return config;
}

QVariant stored_pod() {
    GAttributes attributes;
    attributes.set_pod(key, stored_config());
    return attributes.attributes().at(key);
}

INSTANTIATE_TEST_SUITE_P(
    GAttributes, GAttributesStored,
    testing::Values(
        StoredRow{"invalid", QVariant(), "00 00 00 00 01"},
        StoredRow{"bool", true, "00 00 00 01 00 01"},
        StoredRow{"int", -2, "00 00 00 02 00 ff ff ff fe"},
        StoredRow{"unsigned", 4000000000u, "00 00 00 03 00 ee 6b 28 00"},
        StoredRow{"long_long", -2ll, "00 00 00 04 00 ff ff ff ff ff ff ff fe"},
        StoredRow{"double", 1.5, "00 00 00 06 00 3f f8 00 00 00 00 00 00"},
        StoredRow{"text", QStringLiteral("a\u00E9"), "00 00 00 0a 00 00 00 00 04 00 61 00 e9"},
        StoredRow{"empty_text", QStringLiteral(""), "00 00 00 0a 00 00 00 00 00"},
        StoredRow{"null_text", QVariant(QMetaType(QMetaType::QString)),
                  "00 00 00 0a 01 ff ff ff ff"},
        StoredRow{"bytes", QByteArray("ab"), "00 00 00 0c 00 00 00 00 02 61 62"},
        StoredRow{"rect", QRect(1, 2, 3, 4),
                  "00 00 00 13 00 00 00 00 01 00 00 00 02 00 00 00 03 00 00 00 05"},
        StoredRow{"widest_rect",
                  QRect(QPoint(0, 0), QPoint(std::numeric_limits<int>::max() - 1, 0)),
                  "00 00 00 13 00 00 00 00 00 00 00 00 00 7f ff ff fe 00 00 00 00"},
        StoredRow{"empty_rect", QRect(),
                  "00 00 00 13 00 00 00 00 00 00 00 00 00 ff ff ff ff ff ff ff ff"},
        StoredRow{"rectf", QRectF(1, 2, 3, 4),
                  "00 00 00 14 00 3f f0 00 00 00 00 00 00 40 00 00 00 00 00 00 00 40 08 00 00 00 "
                  "00 00 00 "
                  "40 10 00 00 00 00 00 00"},
        StoredRow{"size", QSize(3, 4), "00 00 00 15 00 00 00 00 03 00 00 00 04"},
        StoredRow{"sizef", QSizeF(3, 4),
                  "00 00 00 16 00 40 08 00 00 00 00 00 00 40 10 00 00 00 00 00 00"},
        StoredRow{"point", QPoint(1, -2), "00 00 00 19 00 00 00 00 01 ff ff ff fe"},
        StoredRow{"pointf", QPointF(1, 2),
                  "00 00 00 1a 00 3f f0 00 00 00 00 00 00 40 00 00 00 00 00 00 00"},
        StoredRow{"colour", QColor(1, 2, 3), "00 00 10 03 00 01 ff ff 01 01 02 02 03 03 00 00"},
        StoredRow{"string_list", QStringList{QStringLiteral("a")},
                  "00 00 00 0b 00 00 00 00 01 00 00 00 02 00 61"},
        StoredRow{"list", QVariantList{1, true},
                  "00 00 00 09 00 00 00 00 02 00 00 00 02 00 00 00 00 01 00 00 00 01 00 01"},
        StoredRow{"map", QVariantMap{{QStringLiteral("a"), 1}},
                  "00 00 00 08 00 00 00 00 01 00 00 00 02 00 61 00 00 00 02 00 00 00 00 01"},
        StoredRow{"log_config", stored_pod(),
                  "00 01 00 00 00 00 00 00 11 7a 65 3a 3a 73 74 6f 72 65 3a 3a 47 54 79 70 65 00 "
                  "00 00 00 63 00 00 00 14 "
                  "06 00 00 00 03 00 00 00 de 03 00 00 0a 00 00 00 00 00 00 00"}),
    [](const auto& row) { return row.param.name; });

TEST(GAttributes, other_safe_types_come_back_too) {
    GAttributes written;
    written.set(QStringLiteral("date"), QDate(2024, 2, 29));
    written.set(QStringLiteral("time"), QTime(12, 34, 56));
    written.set(QStringLiteral("stamp"), QDateTime(QDate(2024, 2, 29), QTime(1, 2, 3)).toUTC());
    written.set(QStringLiteral("url"), QUrl(QStringLiteral("wss://host:8888/ws")));
    written.set(QStringLiteral("uuid"),
                QUuid(QStringLiteral("{67c8770b-44f1-410a-ab9a-f9b5446f13ee}")));
    written.set(QStringLiteral("hash"), QVariantHash{{QStringLiteral("a"), 1}});
    written.set(QStringLiteral("float"), 1.5f);
    GAttributes read_back;

    EXPECT_TRUE(read(read_back, bytes_of(written)));
    EXPECT_EQ(read_back.attributes(), written.attributes());
}

TEST(GAttributes, pairs_are_stored_in_key_order) {
    GAttributes attributes;
    attributes.set_flag(QStringLiteral("b"), true);
    attributes.set_flag(QStringLiteral("a"), false);

    EXPECT_EQ(
        hex_of(attributes),
        "00 00 00 02 00 00 00 02 00 61 00 00 00 01 00 00 00 00 00 02 00 62 00 00 00 01 00 01");
}

TEST(GAttributes, reading_replaces_what_was_there) {
    GAttributes attributes = with_value(1);

    EXPECT_TRUE(read(attributes, QByteArray::fromHex("00000000")));
    EXPECT_EQ(attributes.size(), 0u);
}

TEST(GAttributes, a_negative_count_is_an_empty_record) {
    GAttributes attributes = with_value(1);

    EXPECT_TRUE(read(attributes, QByteArray::fromHex("ffffffff")));
    EXPECT_EQ(attributes.size(), 0u);
}

TEST(GAttributes, the_first_of_two_equal_keys_stays) {
    GAttributes attributes;

    EXPECT_TRUE(read(attributes, QByteArray::fromHex("00000002"
                                                     "0000000200610000000200000000 01"
                                                     "0000000200610000000200000000 02")));

    EXPECT_EQ(attributes.get(QStringLiteral("a"), 0), 1);
}

TEST(GAttributes, keys_out_of_order_are_read_in_order) {
    GAttributes attributes;

    EXPECT_TRUE(read(attributes, QByteArray::fromHex("00000002"
                                                     "0000000200620000000200000000 02"
                                                     "0000000200610000000200000000 01")));

    EXPECT_EQ(attributes.attributes().begin()->first, QStringLiteral("a"));
}

TEST(GAttributes, second_name_of_the_structure_type_is_read) {
    QByteArray bytes = bytes_of(with_value(QVariant::fromValue(GType{7, "abc"})));
    bytes.replace(QByteArray("\x11ze::store::GType", 17), QByteArray("\x12zek::store::GType", 18));
    GAttributes attributes;

    EXPECT_TRUE(read(attributes, bytes));
    EXPECT_EQ(attributes.get(key, GType()), (GType{7, "abc"}));
}

// Qt does not know this kind of time zone, takes the moment for local time and writes it as such.
TEST(GAttributes, a_moment_with_an_unknown_time_zone_settles_at_the_first_reading) {
    GAttributes first;
    GAttributes second;
    EXPECT_TRUE(
        read(first, oneKey + QByteArray::fromHex("00000010 00 00000000258ad295 003821ce f8")));

    EXPECT_TRUE(read(second, bytes_of(first)));

    EXPECT_EQ(hex_of(second), hex_of(first));
}

// Broken and hostile streams

struct BrokenRow {
    const char* name;
    QByteArray bytes;
    const char* error;
    std::size_t pairs = 0;
};

QByteArray nested_lists(int depth) {
    return oneKey + QByteArray::fromHex("00000009 00 00000001").repeated(depth) +
           QByteArray::fromHex("00000002 00 00000007");
}

QByteArray with_nested_templates(int depth) {
    QByteArray bytes = oneKey;
    QDataStream stream(&bytes, QIODevice::Append);
    stream << quint32{QMetaType::User} << false << QByteArray("a<").repeated(depth) + '\0';
    return bytes;
}

class GAttributesBroken : public testing::TestWithParam<BrokenRow> {};

TEST_P(GAttributesBroken, is_a_read_error_that_keeps_the_pairs_before_it) {
    test::LogCapture log;
    log.expect_error(GetParam().error);
    GAttributes attributes = with_value(1);

    EXPECT_FALSE(read(attributes, GetParam().bytes));
    EXPECT_EQ(attributes.size(), GetParam().pairs);
}

INSTANTIATE_TEST_SUITE_P(
    GAttributes, GAttributesBroken,
    testing::Values(
        BrokenRow{"nothing", "", "GAttributes::from_stream, read error!"},
        BrokenRow{"half_a_count", QByteArray::fromHex("0000"),
                  "GAttributes::from_stream, read error!"},
        BrokenRow{"no_key", QByteArray::fromHex("00000001"),
                  "GAttributes::from_stream, key read error!, at index:0"},
        BrokenRow{"half_a_key", QByteArray::fromHex("00000001 00000004 0061"),
                  "GAttributes::from_stream, key read error!, at index:0"},
        BrokenRow{"a_key_of_odd_length", QByteArray::fromHex("00000001 00000003 006100"),
                  "GAttributes::from_stream, key read error!, at index:0"},
        BrokenRow{"a_key_of_4_GB", QByteArray::fromHex("00000001 fffffffe") + QByteArray(155, 'a'),
                  "GAttributes::from_stream, key read error!, at index:0"},
        BrokenRow{"no_value", oneKey, "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"half_a_value", oneKey + QByteArray::fromHex("00000002 00 0000"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"a_text_of_4_GB",
                  oneKey + QByteArray::fromHex("0000000a 00 fffffffe") + QByteArray(155, 'a'),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"bytes_of_4_GB",
                  oneKey + QByteArray::fromHex("0000000c 00 fffffffe") + QByteArray(155, 'a'),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"four_billion_strings", oneKey + QByteArray::fromHex("0000000b 00 ffffffff"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"four_billion_values", oneKey + QByteArray::fromHex("00000009 00 ffffffff"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"four_billion_entries", oneKey + QByteArray::fromHex("00000008 00 ffffffff"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"two_billion_pairs", QByteArray::fromHex("7fffffff"),
                  "GAttributes::from_stream, key read error!, at index:0"},
        BrokenRow{"a_second_pair_that_is_not_there",
                  QByteArray::fromHex("7fffffff 00000002 0061 00000002 00 00000007"),
                  "GAttributes::from_stream, key read error!, at index:1", 1},
        BrokenRow{"a_second_value_that_is_not_there",
                  QByteArray::fromHex("00000002 00000002 0061 00000002 00 00000007 00000002 0062"),
                  "GAttributes::from_stream, val read error!, at index:1", 1},
        BrokenRow{"an_unknown_number_of_a_type",
                  oneKey + QByteArray::fromHex("0000ffff 00 00000007"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"a_type_number_that_only_this_run_knows",
                  oneKey + QByteArray::fromHex("00010001 00 00000007 00000000"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"an_unknown_name_of_a_type",
                  oneKey + QByteArray::fromHex("00010000 00 00000004") + QByteArray("Foo", 4),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"a_name_of_4_GB",
                  oneKey + QByteArray::fromHex("00010000 00 fffffffe") + QByteArray(155, 'a'),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"a_name_of_nested_templates", with_nested_templates(500000),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"no_name_of_a_type", oneKey + QByteArray::fromHex("00010000 00 00000000"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"a_font", oneKey + QByteArray::fromHex("00001000 00 00000000"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"a_picture", oneKey + QByteArray::fromHex("00001006 00 00000001"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"a_rectangle_wider_than_int",
                  oneKey + QByteArray::fromHex("00000013 00 80000000 00000000 00000000 00000000"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"a_rectangle_narrower_than_int",
                  oneKey + QByteArray::fromHex("00000013 00 00000001 00000000 80000000 00000000"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"a_rectangle_higher_than_int",
                  oneKey + QByteArray::fromHex("00000013 00 00000000 fffffffe 00000000 7fffffff"),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"lists_in_lists_100000_deep", nested_lists(100000),
                  "GAttributes::from_stream, val read error!, at index:0"},
        BrokenRow{"one_list_too_many", nested_lists(256),
                  "GAttributes::from_stream, val read error!, at index:0"}),
    [](const auto& row) { return row.param.name; });

TEST(GAttributes, lists_255_deep_are_read) {
    GAttributes attributes;

    EXPECT_TRUE(read(attributes, nested_lists(255)));
    EXPECT_EQ(attributes.size(), 1u);
}

}  // namespace
