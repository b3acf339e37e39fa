#include "ze/tools/convert.h"

#include "ze/store/GType.h"
#include "ze/tools/format.h"

#include <QByteArray>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QSizeF>
#include <QVariant>

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace convert = ze::convert;

constexpr int INT_LOWEST = std::numeric_limits<int>::min();
constexpr int INT_HIGHEST = std::numeric_limits<int>::max();

TEST(convert, takes_text_as_utf8_both_ways) {
    EXPECT_EQ(convert::to_string(std::string("Grüße")), QStringLiteral("Grüße"));
    EXPECT_EQ(convert::to_std_string(QStringLiteral("Grüße")), "Grüße");
    EXPECT_EQ(convert::to_string(std::string("a\0b", 3)).size(), 3);
}

TEST(convert, writes_points_sizes_and_rectangles_with_commas_only) {
    EXPECT_EQ(convert::to_string(QPoint(1, -2)), QStringLiteral("1,-2"));
    EXPECT_EQ(convert::to_string(QSize(3, 4)), QStringLiteral("3,4"));
    EXPECT_EQ(convert::to_string(QRect(1, -2, 3, 4)), QStringLiteral("1,-2,3,4"));
}

struct PairRow {
    const char* name;
    QString text;
    QPoint expected;
};

TEST(convert, reads_two_numbers_or_gives_the_fallback) {
    const QPoint fallback(7, 8);
    const std::vector<PairRow> rows = {
        {"plain", QStringLiteral("1,-2"), {1, -2}},
        {"blanks around", QStringLiteral(" 1 ,\t2\n"), {1, 2}},
        {"a sign", QStringLiteral("+1,2"), {1, 2}},
        {"the limits", QStringLiteral("2147483647,-2147483648"), {INT_HIGHEST, INT_LOWEST}},
        {"three parts", QStringLiteral("1,2,3"), fallback},
        {"an empty third part", QStringLiteral("1,2,"), fallback},
        {"one part", QStringLiteral("1"), fallback},
        {"an empty part", QStringLiteral("1,"), fallback},
        {"empty", QString(), fallback},
        {"beyond 32 bits", QStringLiteral("2147483648,1"), fallback},
        {"a fraction", QStringLiteral("1.5,2"), fallback},
        {"hexadecimal", QStringLiteral("0x10,2"), fallback},
        {"a word", QStringLiteral("one,2"), fallback},
        {"semicolon", QStringLiteral("1;2"), fallback},
        {"a blank within", QStringLiteral("1 0,2"), fallback},
    };
    for (const PairRow& row : rows) {
        const QSize size(row.expected.x(), row.expected.y());
        EXPECT_EQ(convert::QPoint_from_string(row.text, fallback), row.expected) << row.name;
        EXPECT_EQ(convert::QSize_from_string(row.text, QSize(7, 8)), size) << row.name;
    }
}

struct RectRow {
    const char* name;
    const char* text;
    QRect expected;
};

TEST(convert, reads_a_rectangle_of_position_and_size_or_gives_the_fallback) {
    const QRect fallback(5, 6, 7, 8);
    const std::vector<RectRow> rows = {
        {"plain", "1,2,3,4", {1, 2, 3, 4}},
        {"blanks around", " 1, 2 ,3 , 4 ", {1, 2, 3, 4}},
        {"no area", "1,2,0,-1", {1, 2, 0, -1}},
        {"up to the last pixel", "2147483646,0,1,1", {INT_HIGHEST - 1, 0, 1, 1}},
        {"three parts", "1,2,3", fallback},
        {"five parts", "1,2,3,4,5", fallback},
        {"a word", "1,2,3,x", fallback},
        {"right edge beyond 32 bits", "2147483646,0,2,1", fallback},
        {"width of the lowest number", "10,0,-2147483648,1", fallback},
        {"bottom edge beyond 32 bits", "0,-2147483648,1,0", fallback},
    };
    for (const RectRow& row : rows) {
        EXPECT_EQ(convert::QRect_from_string(QLatin1String(row.text), fallback), row.expected)
            << row.name;
    }
}

TEST(convert, reads_back_what_it_writes) {
    const QRect rect(-5, 6, 70, 80);
    EXPECT_EQ(convert::QRect_from_string(convert::to_string(rect), QRect()), rect);
}

TEST(convert, reads_four_words_for_true_and_four_for_false) {
    for (const char* word : {"1", "true", "yes", "on", "TRUE", "Yes", "  yes ", "\tON\n"}) {
        EXPECT_TRUE(convert::bool_from_string(QLatin1String(word), false)) << word;
    }
    for (const char* word : {"0", "false", "no", "off", "FALSE", "No", "  off "}) {
        EXPECT_FALSE(convert::bool_from_string(QLatin1String(word), true)) << word;
    }
}

TEST(convert, gives_the_fallback_for_other_words) {
    for (const char* word : {"", " ", "2", "y", "t", "yess", "wahr", "01", "true false"}) {
        EXPECT_TRUE(convert::bool_from_string(QLatin1String(word), true)) << word;
        EXPECT_FALSE(convert::bool_from_string(QLatin1String(word), false)) << word;
    }
}

struct DumpRow {
    const char* name;
    QByteArray bytes;
    unsigned max;
    const char* expected;
};

TEST(convert, dumps_bytes_as_signed_numbers_and_leaves_out_the_middle) {
    const QByteArray five("\x01\x02\x03\x04\x05", 5);
    const std::vector<DumpRow> rows = {
        {"empty", {}, 10, "[0] = {}"},
        {"signed", QByteArray("\x00\x7f\x80\xff", 4), 10, "[4] = {0, 127, -128, -1}"},
        {"just all", five, 5, "[5] = {1, 2, 3, 4, 5}"},
        {"one too many", five, 4, "[5] = {1, 2...,4, 5}"},
        {"an odd limit", five, 3, "[5] = {1...,5}"},
        {"none", five, 0, "[5] = {...,}"},
    };
    for (const DumpRow& row : rows) {
        EXPECT_EQ(convert::to_std_string(row.bytes, row.max), row.expected) << row.name;
    }
}

TEST(convert, rounds_halves_away_from_zero_and_stays_within_int) {
    EXPECT_EQ(convert::to_int(2.5), 3);
    EXPECT_EQ(convert::to_int(-2.5), -3);
    EXPECT_EQ(convert::to_int(2.4), 2);
    EXPECT_EQ(convert::to_int(1e300), INT_HIGHEST);
    EXPECT_EQ(convert::to_int(-INFINITY), INT_LOWEST);
    EXPECT_EQ(convert::to_int(NAN), 0);
}

TEST(convert, folds_degrees_into_the_circle) {
    EXPECT_EQ(convert::get_compass_degrees(-90), 270);
    EXPECT_EQ(convert::get_compass_degrees(450), 90);
    EXPECT_EQ(convert::get_compass_degrees(0), 0);
    EXPECT_EQ(convert::get_compass_degrees(359), 359);
    EXPECT_EQ(convert::get_compass_degrees(360), 0);
    EXPECT_EQ(convert::get_compass_degrees(-360), 0);
    EXPECT_EQ(convert::get_compass_degrees(-500), 220);
    EXPECT_EQ(convert::get_compass_degrees(INT_LOWEST), 232);
}

struct InfoRow {
    QVariant value;
    std::string expected;
};

TEST(convert, tells_what_a_variant_holds) {
    const std::vector<InfoRow> rows = {
        {QVariant(), "QVariant{valid=false<unknown type>}"},
        {QVariant(5), "QVariant{intvalid=true, null=false, value:\"5\"}"},
        {QVariant(QStringLiteral("a$b")), "QVariant{QStringvalid=true, null=false, value:\"a$b\"}"},
        {QVariant(QMetaType(QMetaType::Int)), "QVariant{intvalid=true, null=true, value:\"0\"}"},
        {QVariant(QByteArray("abc")), "QVariant{QByteArrayvalid=true, null=false, size:3}"},
        {QVariant(QSizeF(1, 2)),
         "QVariant{QSizeFvalid=true, null=false, value=<not convertible to QString>}"},
    };
    for (const InfoRow& row : rows) {
        EXPECT_EQ(convert::to_string_basic_info(row.value), row.expected);
        EXPECT_EQ(convert::to_qstring_basic_info(row.value), QString::fromStdString(row.expected));
        EXPECT_EQ(ze::str::xprintF(0, "$", row.value), row.expected);
    }
}

TEST(convert, tells_a_stored_structure_by_its_text) {
    const glm::mat4 matrix(1.0f);
    const ze::store::GType type{500, ze::store::pod_to_bytes(matrix)};
    EXPECT_EQ(convert::to_qstring_basic_info(QVariant::fromValue(type)),
              QStringLiteral("QVariant{ze::store::GTypevalid=true, null=false:(") +
                  type.to_string() + QStringLiteral(")}"));
}

}  // namespace
