#include "ze/store/GNode.h"

#include "ze/tools/GMD5.h"

#include "support/LogCapture.h"

#include <QDataStream>
#include <QIODevice>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <gtest/gtest.h>

namespace {

using ze::store::GNode;
using ze::store::GType;

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");

std::string stored_hex(const GNode& node) {
    return QByteArray::fromBase64(GNode::to_qstring(node).toLatin1()).toHex(' ').toStdString();
}

GNode from_bytes(const QByteArray& bytes) {
    return GNode::from_qstring(QString::fromLatin1(bytes.toBase64()));
}

GNode from_hex(const char* hex) {
    return from_bytes(QByteArray::fromHex(hex));
}

// One value of every kind, and a child in a child.
GNode sample() {
    GNode node;
    node.set(QStringLiteral("bool"), true);
    node.set(QStringLiteral("bytes"), QByteArray("\x01\x02", 2));
    node.set(QStringLiteral("int"), -1);
    node.set(QStringLiteral("point"), QPoint(1, 2));
    node.set_pod(QStringLiteral("pod"), ze::log::LogConfig());
    node.set(QStringLiteral("text"), QStringLiteral("hi"));
    node.set(QStringLiteral("uint"), 7u);
    node[QStringLiteral("win")].set(QStringLiteral("rect"), QRect(10, 20, 300, 200));
    node[QStringLiteral("win")][QStringLiteral("dock")].set_flag(QStringLiteral("open"), false);
    return node;
}

// Tree

TEST(GNode, ensure_node_twice_is_the_same_child) {
    GNode node;

    EXPECT_EQ(&node.ensure_node(a), &node.ensure_node(a));
    EXPECT_EQ(&node[a], &node.ensure_node(a));
    EXPECT_EQ(node.children.size(), 1u);
}

TEST(GNode, moved_from_node_is_empty_and_usable) {
    GNode node = sample();
    GNode other;
    other.set(a, 1);

    const GNode constructed = std::move(node);
    EXPECT_EQ(node.size(), 0u);
    EXPECT_TRUE(node.children.empty());
    EXPECT_EQ(constructed, sample());

    node = std::move(other);
    EXPECT_EQ(other.size(), 0u);
    other.ensure_node(b);
    EXPECT_EQ(other.children.size(), 1u);
    EXPECT_EQ(node.get(a, 0), 1);
}

TEST(GNode, copy_is_a_value_of_its_own) {
    const GNode original = sample();
    GNode copy = original;

    copy[QStringLiteral("win")].set(a, 1);

    EXPECT_EQ(original, sample());
    EXPECT_FALSE(copy == original);
}

// The stored form. These bytes stand in settings that people have: a change here loses them.

TEST(GNode, empty_node_is_stored_in_these_14_bytes) {
    EXPECT_EQ(stored_hex(GNode()), "47 4e 4f 44 00 01 00 00 00 00 00 00 00 00");
    EXPECT_EQ(GNode::to_qstring(GNode()).toStdString(), "R05PRAABAAAAAAAAAAA=");
    EXPECT_EQ(GNode::get_base64_length(GNode()), 20);
}

TEST(GNode, empty_node_reads_back_without_a_log_line) {
    test::LogCapture log(ze::log::TRACE);

    const GNode node = GNode::from_qstring(QStringLiteral("R05PRAABAAAAAAAAAAA="));

    EXPECT_EQ(node.size(), 0u);
    EXPECT_TRUE(node.children.empty());
    EXPECT_EQ(log.lines(), std::vector<std::string>{});
}

TEST(GNode, nested_node_is_stored_in_these_bytes) {
    EXPECT_EQ(stored_hex(sample()),
              "47 4e 4f 44 00 01 "
              "00 00 00 07 "
              "00 00 00 08 00 62 00 6f 00 6f 00 6c 00 00 00 01 00 01 "
              "00 00 00 0a 00 62 00 79 00 74 00 65 00 73 00 00 00 0c 00 00 00 00 02 01 02 "
              "00 00 00 06 00 69 00 6e 00 74 00 00 00 02 00 ff ff ff ff "
              "00 00 00 06 00 70 00 6f 00 64 00 01 00 00 00 00 00 00 11 "
              "7a 65 3a 3a 73 74 6f 72 65 3a 3a 47 54 79 70 65 00 00 00 00 63 00 00 00 14 "
              "06 00 00 00 03 00 00 00 00 00 00 00 0a 00 00 00 00 00 00 00 "
              "00 00 00 0a 00 70 00 6f 00 69 00 6e 00 74 00 00 00 19 00 00 00 00 01 00 00 00 02 "
              "00 00 00 08 00 74 00 65 00 78 00 74 00 00 00 0a 00 00 00 00 04 00 68 00 69 "
              "00 00 00 08 00 75 00 69 00 6e 00 74 00 00 00 03 00 00 00 00 07 "
              "00 00 00 01 00 00 00 06 00 77 00 69 00 6e "
              "00 00 00 01 00 00 00 08 00 72 00 65 00 63 00 74 "
              "00 00 00 13 00 00 00 00 0a 00 00 00 14 00 00 01 35 00 00 00 db "
              "00 00 00 01 00 00 00 08 00 64 00 6f 00 63 00 6b "
              "00 00 00 01 00 00 00 08 00 6f 00 70 00 65 00 6e 00 00 00 01 00 00 "
              "00 00 00 00");
}

TEST(GNode, text_written_by_an_earlier_build_opens) {
    const GNode node = GNode::from_base_64_string(
        QStringLiteral("R05PRAABAAAABwAAAAgAYgBvAG8AbAAAAAEAAQAAAAoAYgB5AHQAZQBzAAAADAAAAAACAQIAAAA"
                       "GAGkAbgB0AAAAAgD/////AAAA"
                       "BgBwAG8AZAABAAAAAAAAEXplOjpzdG9yZTo6R1R5cGUAAAAAYwAAABQGAAAAAwAAAAAAAAAKAAA"
                       "AAAAAAAAAAAoAcABvAGkAbgB0"
                       "AAAAGQAAAAABAAAAAgAAAAgAdABlAHgAdAAAAAoAAAAABABoAGkAAAAIAHUAaQBuAHQAAAADAAA"
                       "AAAcAAAABAAAABgB3AGkAbgAA"
                       "AAEAAAAIAHIAZQBjAHQAAAATAAAAAAoAAAAUAAABNQAAANsAAAABAAAACABkAG8AYwBrAAAAAQA"
                       "AAAgAbwBwAGUAbgAAAAEAAAAA"
                       "AAA="));

    EXPECT_EQ(node.attributes(), sample().attributes());
    EXPECT_EQ(node, sample());
}

TEST(GNode, text_comes_back_as_the_same_text) {
    const QString text = sample().to_base_64_string();

    EXPECT_EQ(GNode::from_base_64_string(text).to_base_64_string(), text);
    EXPECT_EQ(GNode::get_base64_length(sample()), text.size());
}

TEST(GNode, reading_replaces_what_was_there) {
    GNode node = sample();
    QDataStream stream(QByteArray(8, '\0'));

    EXPECT_TRUE(node.from_stream(stream));
    EXPECT_EQ(node, GNode());
    EXPECT_TRUE(node.children.empty());
}

TEST(GNode, the_first_of_two_equal_children_stays) {
    const GNode node = from_hex(
        "474e4f44 0001 00000000 00000002"
        "00000002 0061 00000001 00000002 0062 00000002 00 00000001 00000000"
        "00000002 0061 00000000 00000000");

    EXPECT_EQ(node.children.at(a).get(b, 0), 1);
}

TEST(GNode, bytes_behind_the_tree_are_left_alone) {
    test::LogCapture log(ze::log::TRACE);

    EXPECT_EQ(from_hex("474e4f44 0001 00000000 00000000 ff"), GNode());
    EXPECT_EQ(log.lines(), std::vector<std::string>{});
}

TEST(GNode, a_negative_child_count_is_no_child) {
    test::LogCapture log(ze::log::TRACE);

    EXPECT_EQ(from_hex("474e4f44 0001 00000000 ffffffff"), GNode());
    EXPECT_EQ(log.lines(), std::vector<std::string>{});
}

// Texts that cannot be read

TEST(GNode, empty_text_warns) {
    test::LogCapture log;

    EXPECT_EQ(GNode::from_qstring(QString()), GNode());
    EXPECT_EQ(log.lines_with_level(), std::vector<std::string>{"WRN from_qstring, empty string"});
}

struct BrokenRow {
    const char* name;
    QString text;
    std::vector<std::string> lines;
};

QString base64(const QByteArray& bytes) {
    return QString::fromLatin1(bytes.toBase64());
}

QString hex_text(const char* hex) {
    return base64(QByteArray::fromHex(hex));
}

class GNodeBroken : public testing::TestWithParam<BrokenRow> {};

TEST_P(GNodeBroken, gives_these_lines) {
    test::LogCapture log;
    for (const std::string& line : GetParam().lines) {
        if (line.starts_with("ERR ")) {
            log.expect_error(line.substr(4));
        }
    }

    EXPECT_EQ(GNode::from_qstring(GetParam().text), GNode());
    EXPECT_EQ(log.lines_with_level(), GetParam().lines);
}

const std::vector<std::string> endOfRead = {"ERR from_qstring, node deserialization failed",
                                            "WRN from_qstring, stream ended with non-ok status"};

std::vector<std::string> read_errors(std::vector<std::string> lines) {
    lines.insert(lines.end(), endOfRead.begin(), endOfRead.end());
    return lines;
}

INSTANTIATE_TEST_SUITE_P(
    GNode, GNodeBroken,
    testing::Values(
        BrokenRow{
            "no_base64_at_all", QStringLiteral("!?"), {"ERR from_qstring, base64 decode failed"}},
        BrokenRow{"wide_characters",
                  QStringLiteral("\u4F60"),
                  {"ERR from_qstring, base64 decode failed"}},
        BrokenRow{"too_short_for_the_magic",
                  hex_text("474e4f"),
                  {"ERR from_qstring, failed to read magic"}},
        BrokenRow{"another_magic", hex_text("00000001"), {"ERR from_qstring, wrong magic:1"}},
        BrokenRow{"a_negative_magic", hex_text("ffffffff"), {"ERR from_qstring, wrong magic:-1"}},
        BrokenRow{"a_plain_sentence",
                  QStringLiteral("this is not a node"),
                  {"ERR from_qstring, wrong magic:-1239896950"}},
        BrokenRow{"too_short_for_the_version",
                  hex_text("474e4f44 00"),
                  {"ERR from_qstring, failed to read version"}},
        BrokenRow{
            "version_0", hex_text("474e4f44 0000"), {"ERR from_qstring, unsupported version:0"}},
        BrokenRow{
            "version_2", hex_text("474e4f44 0002"), {"ERR from_qstring, unsupported version:2"}},
        BrokenRow{"no_attributes", hex_text("474e4f44 0001"),
                  read_errors({"ERR GAttributes::from_stream, read error!",
                               "ERR GAttributes::from_stream, read error!"})},
        BrokenRow{"no_child_count", hex_text("474e4f44 0001 00000000"),
                  read_errors({"ERR GAttributes::from_stream, read error!"})},
        BrokenRow{"a_broken_attribute", hex_text("474e4f44 0001 00000001 00000002 0061 00000002"),
                  read_errors({"ERR GAttributes::from_stream, val read error!, at index:0",
                               "ERR GAttributes::from_stream, read error!"})},
        BrokenRow{"a_broken_attribute_before_a_good_child_count",
                  hex_text("474e4f44 0001 00000001 00000002 0061 00001006 00 00000000"),
                  read_errors({"ERR GAttributes::from_stream, val read error!, at index:0",
                               "ERR GAttributes::from_stream, read error!"})},
        BrokenRow{"a_child_key_that_is_not_there", hex_text("474e4f44 0001 00000000 7fffffff"),
                  read_errors({"ERR GAttributes::from_stream, key read error!, at index:0"})}),
    [](const auto& row) { return row.param.name; });

TEST(GNode, stream_that_ends_inside_a_child_reports_the_index_of_that_child) {
    test::LogCapture log;
    const std::vector<std::string> errors = {
        "GAttributes::from_stream, read error!", "GAttributes::from_stream, read error!",
        "GAttributes::from_stream, val read error!, at index:1",
        "from_qstring, node deserialization failed"};
    for (const std::string& error : errors) {
        log.expect_error(error);
    }

    const GNode node = from_hex(
        "474e4f44 0001 00000000 00000002 00000002 0061 00000000 00000000 00000002 0062 0000");

    std::vector<std::string> lines = errors;
    lines.emplace_back("from_qstring, stream ended with non-ok status");
    EXPECT_EQ(log.lines(), lines);
    EXPECT_EQ(node.children.size(), 1u);
    EXPECT_TRUE(node.children.contains(a));
}

// A chain of nodes: each has no attribute and one child with an empty key.
QByteArray chain(int depth) {
    return QByteArray::fromHex("474e4f44 0001") +
           QByteArray::fromHex("00000000 00000001 00000000").repeated(depth - 1) +
           QByteArray::fromHex("00000000 00000000");
}

int depth_of(const GNode& node) {
    int deepest = 0;
    for (const auto& [childKey, child] : node.children) {
        deepest = std::max(deepest, depth_of(child));
    }
    return deepest + 1;
}

TEST(GNode, tree_256_deep_is_read) {
    EXPECT_EQ(depth_of(from_bytes(chain(256))), 256);
}

class GNodeTooDeep : public testing::TestWithParam<int> {};

TEST_P(GNodeTooDeep, is_a_read_error_of_every_node_from_there_up) {
    test::LogCapture log;
    for (int i = 0; i < 256; ++i) {
        log.expect_error("GAttributes::from_stream, val read error!, at index:0");
    }
    log.expect_error("from_qstring, node deserialization failed");

    EXPECT_EQ(depth_of(from_bytes(chain(GetParam()))), 1);
}

INSTANTIATE_TEST_SUITE_P(GNode, GNodeTooDeep, testing::Values(257, 100000));

TEST(GNode, written_in_the_pinned_version_whatever_the_stream_default_is) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    sample().to_stream(stream);

    EXPECT_EQ(QByteArray::fromBase64(sample().to_base_64_string().toLatin1()).mid(6), bytes);
}

// Digests

TEST(GNode, digest_takes_the_texts_and_the_keys_in_order) {
    const GNode node = sample();
    const GNode& window = node.children.at(QStringLiteral("win"));
    const GNode& dock = window.children.at(QStringLiteral("dock"));
    ze::checksum::GMD5 expected;
    expected.add_string(node.to_string());
    expected.add_string(QStringLiteral("win"));
    expected.add_string(window.to_string());
    expected.add_string(QStringLiteral("dock"));
    expected.add_string(dock.to_string());

    EXPECT_EQ(node.get_md5(), expected.get_result());
}

TEST(GNode, short_text_of_the_digest_is_upper_case_with_blanks) {
    const GNode node = sample();

    EXPECT_EQ(node.get_md5_string(6), ze::checksum::GMD5::hash_string(node.get_md5(), 6));
    EXPECT_EQ(node.get_md5_string(6).trimmed(),
              QString::fromLatin1(node.get_md5().toHex(' ').toUpper()));
}

TEST(GNode, change_of_one_value_in_a_child_makes_a_difference) {
    GNode changed = sample();

    changed[QStringLiteral("win")][QStringLiteral("dock")].set_flag(QStringLiteral("open"), true);

    EXPECT_TRUE(sample() == sample());
    EXPECT_FALSE(changed == sample());
    EXPECT_FALSE(changed.equals(sample()));
}

struct AlikeRow {
    const char* name;
    QVariant first;
    QVariant second;
};

class GNodeAlike : public testing::TestWithParam<AlikeRow> {};

TEST_P(GNodeAlike, print_the_same_and_count_as_equal) {
    GNode first;
    first.set(a, GetParam().first);
    GNode second;
    second.set(a, GetParam().second);

    EXPECT_TRUE(first == second);
}

INSTANTIATE_TEST_SUITE_P(
    GNode, GNodeAlike,
    testing::Values(AlikeRow{"bytes_of_one_length", QByteArray("one"), QByteArray("two")},
                    AlikeRow{"values_without_a_text", QRect(1, 2, 3, 4), QRect(5, 6, 7, 8)}),
    [](const auto& row) { return row.param.name; });

TEST(GNode, an_empty_child_makes_a_difference) {
    GNode node = sample();

    node.ensure_node(a);

    EXPECT_FALSE(node == sample());
}

// Display

TEST(GNode, show_logs_the_tree_with_its_children_indented) {
    test::LogCapture log;
    GNode node;
    node.set(a, 1);
    node[b][a].set_flag(b, true);

    node.show(1);

    const std::vector<std::string> lines = {
        "DEB  {a=QVariant{intvalid=true, null=false, value:\"1\"}}",
        "DEB    {b}",
        "DEB      {}",
        "DEB        {a}",
        "DEB          {b=QVariant{boolvalid=true, null=false, value:\"true\"}}",
    };
    EXPECT_EQ(log.lines_with_level(), lines);
}

struct TextRow {
    const char* name;
    QVariant value;
    const char* text;
};

class GNodeValueText : public testing::TestWithParam<TextRow> {};

TEST_P(GNodeValueText, is) {
    EXPECT_EQ(GNode::to_qstring(GetParam().value).toStdString(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    GNode, GNodeValueText,
    testing::Values(TextRow{"invalid", QVariant(), ""}, TextRow{"text", QStringLiteral("hi"), "hi"},
                    TextRow{"int", -5, "-5"}, TextRow{"bool", true, "true"},
                    TextRow{"point", QPoint(1, -2), "1,-2"},
                    TextRow{"pointf", QPointF(1, 2), "1.000000,2.000000"},
                    TextRow{"size", QSize(3, 4), "3,4"},
                    TextRow{"sizef", QSizeF(3, 4), "PP-TYPE?-'6QSizeF'"},
                    TextRow{"rect", QRect(1, 2, 3, 4), "1,2,3,4"},
                    TextRow{"rectf", QRectF(1, 2, 3, 4), "1.000000,2.000000,3.000000,4.000000"},
                    TextRow{"matrix", QVariant::fromValue(GType{500, QByteArray(64, '\0')}),
                            "Matrix4"},
                    TextRow{"ten_bytes", QByteArray("\1\2\3\4\5\6\7\10\11\12", 10),
                            "[10] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}"},
                    TextRow{"eleven_bytes", QByteArray("\1\2\3\4\5\6\7\10\11\12\13", 11),
                            "[11] = {1, 2, 3, 4, 5...,7, 8, 9, 10, 11}"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
