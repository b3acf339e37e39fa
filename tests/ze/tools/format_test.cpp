#include "ze/tools/format.h"

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <QVariant>

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace {

struct Named {
    [[nodiscard]] std::string to_string() const { return "Named " + std::to_string(number); }
    int number = 7;
};

struct QtNamed {
    [[nodiscard]] QString to_string() const { return QStringLiteral("Größe"); }
};

struct Counted {
    [[nodiscard]] std::string to_string() const {
        ++conversions;
        return "counted";
    }
    mutable int conversions = 0;
};

struct Specialised {
    [[nodiscard]] static std::string to_string() { return "not this one"; }
};

struct Unknown {};

enum class Kind { FIRST };

}  // namespace

template <>
void ze::obj_to_stream(std::stringstream& out, const Specialised&) {
    out << "specialised";
}

template <>
void ze::obj_to_stream(std::stringstream& out, QSizeF* const& size) {
    out << (size != nullptr ? "a size" : "nullptr");
}

namespace ze::str {

TEST(xprintF, placeholders_take_the_arguments_in_turn) {
    struct Row {
        const char* name;
        std::string text;
        std::string expected;
    };
    const std::array rows = {
        Row{"no argument", xprintF(0, "a$b"), "a$b"},
        Row{"no placeholder", xprintF(0, "x", 1, 2), "x"},
        Row{"too few arguments", xprintF(0, "$-$", 1), "1-$"},
        Row{"too many arguments", xprintF(0, "$", 1, 2), "1"},
        Row{"indent", xprintF(2, "$", 1), "  1"},
        Row{"indent alone", xprintF(3, ""), "   "},
        Row{"empty format", xprintF(0, "", 1), ""},
        Row{"null format", xprintF(0, nullptr, 1), ""},
        Row{"null format with indent", xprintF(4, nullptr), ""},
        Row{"no escape", xprintF(0, "$$", 1), "1$"},
        Row{"two at once", xprintF(0, "$$", 1, 2), "12"},
        Row{"text around", xprintF(0, "a $ b $ c", 1, 2), "a 1 b 2 c"},
        Row{"placeholder inside an argument", xprintF(0, "$ $", QStringLiteral("$"), 2), "$ 2"},
        Row{"pattern with a width", xprintF(0, "%0$ld", 6), "%06ld"},
        Row{"pattern with decimals", xprintF(0, "%2.$f", 3U), "%2.3f"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.text, row.expected) << row.name;
    }
}

TEST(xprintF, the_type_of_the_argument_decides_the_conversion) {
    struct Row {
        const char* name;
        std::string text;
        std::string expected;
    };
    const char* const none = nullptr;
    char word[] = "word";
    char* const mutable_word = word;
    const char holes[8] = {'a', 'b', '\0', 'c', 'd', '\0', '\0', 'e'};
    const QString umlaut = QStringLiteral("Größe");
    const std::array rows = {
        Row{"int", xprintF(0, "$", std::numeric_limits<int>::min()), "-2147483648"},
        Row{"unsigned", xprintF(0, "$", std::numeric_limits<unsigned>::max()), "4294967295"},
        Row{"long long", xprintF(0, "$", std::numeric_limits<long long>::min()),
            "-9223372036854775808"},
        Row{"unsigned long long", xprintF(0, "$", std::numeric_limits<unsigned long long>::max()),
            "18446744073709551615"},
        Row{"unsigned short", xprintF(0, "$", static_cast<unsigned short>(65535)), "65535"},
        Row{"64-bit integer of any name", xprintF(0, "$ $", std::int64_t{-5}, std::uint64_t{5}),
            "-5 5"},
        Row{"float", xprintF(0, "$", 1.5F), "1.50"},
        Row{"negative float", xprintF(0, "$", -0.004F), "-0.00"},
        Row{"float not a number", xprintF(0, "$", std::numeric_limits<float>::quiet_NaN()), "nan"},
        Row{"infinite float", xprintF(0, "$", -std::numeric_limits<float>::infinity()), "-inf"},
        Row{"double", xprintF(0, "$", 1.5), "1.500000"},
        Row{"true", xprintF(0, "$", true), "true"},
        Row{"false", xprintF(0, "$", false), "false"},
        Row{"const char*", xprintF(0, "$", static_cast<const char*>(word)), "word"},
        Row{"char*", xprintF(0, "$", mutable_word), "word"},
        Row{"null const char*", xprintF(0, "$", none), "nullptr"},
        Row{"literal", xprintF(0, "$", "text"), "text"},
        Row{"char array with holes", xprintF(0, "$", holes), "abcde"},
        Row{"std::string", xprintF(0, "$", std::string("a\0b", 3)), std::string("a\0b", 3)},
        Row{"QString", xprintF(0, "$", umlaut),
            "Gr\xC3\xB6\xC3\x9F"
            "e"},
        Row{"empty QString", xprintF(0, "<$>", QString()), "<>"},
        Row{"QStringView", xprintF(0, "$", QStringView(umlaut).left(3)), "Gr\xC3\xB6"},
        Row{"glm::vec2", xprintF(0, "$", glm::vec2(1.0F, 2.0F)), "1.00, 2.00"},
        Row{"QPoint", xprintF(0, "$", QPoint(-1, 2)), "-1,2"},
        Row{"QSize", xprintF(0, "$", QSize(3, 4)), "3,4"},
        Row{"QPointF", xprintF(0, "$", QPointF(1.0, 2.0)), "1.000000,2.000000"},
        Row{"QRect", xprintF(0, "$", QRect(QPoint(10, 20), QPoint(19, 24))), "10,20,10,5"},
        Row{"QRectF", xprintF(0, "$", QRectF(1.0, 2.0, 3.5, 4.0)),
            "1.000000,2.000000,3.500000,4.000000"},
        Row{"QVariant", xprintF(0, "$", QVariant(true)),
            "QVariant{boolvalid=true, null=false, value:\"true\"}"},
        Row{"own to_string", xprintF(0, "$", Named()), "Named 7"},
        Row{"own to_string as QString", xprintF(0, "$", QtNamed()),
            "Gr\xC3\xB6\xC3\x9F"
            "e"},
        Row{"specialised", xprintF(0, "$", Specialised()), "specialised"},
        Row{"specialised pointer", xprintF(0, "$", static_cast<QSizeF*>(nullptr)), "nullptr"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.text, row.expected) << row.name;
    }
}

TEST(xprintF, a_type_without_a_conversion_shows_as_the_marker) {
    const auto marker = [](const std::type_info& type) {
        return std::string("PP-TYPE?-'") + type.name() + '\'';
    };
    EXPECT_EQ(xprintF(0, "$", QSizeF(1.0, 2.0)), marker(typeid(QSizeF)));
    EXPECT_EQ(xprintF(0, "<$>", Unknown()), '<' + marker(typeid(Unknown)) + '>');
    EXPECT_EQ(xprintF(0, "$", Kind::FIRST), marker(typeid(Kind)));
    EXPECT_EQ(xprintF(0, "$", 'c'), marker(typeid(char)));
}

TEST(xprintF, arguments_over_are_never_converted) {
    const Counted counted;
    EXPECT_EQ(xprintF(0, "no placeholder", counted), "no placeholder");
    EXPECT_EQ(counted.conversions, 0);
}

TEST(qprintF, gives_the_text_as_QString) {
    EXPECT_EQ(qprintF("$ is $", QStringLiteral("Größe"), 1), QStringLiteral("Größe is 1"));
    EXPECT_EQ(qprintF(nullptr, 1), QString());
}

TEST(streamIt, writes_behind_what_the_stream_holds) {
    std::stringstream out;
    out << "before ";
    streamIt(out, "$-$-$", 1, std::string("two"));
    EXPECT_EQ(out.str(), "before 1-two-$");
}

TEST(obj_to_stream, writes_what_the_formatter_prints) {
    std::stringstream out;
    const char field[4] = {'a', '\0', 'b', '\0'};
    obj_to_stream(out, field);
    obj_to_stream(out, 1.5F);
    obj_to_stream(out, Named());
    obj_to_stream(out, QSizeF());
    EXPECT_EQ(out.str(), std::string("ab1.50Named 7PP-TYPE?-'") + typeid(QSizeF).name() + '\'');
}

// The text must be that of the standard's own formatting, value by value.
TEST(xprintF, a_million_random_values_read_as_a_plain_stream_writes_them) {
    constexpr int ITERATIONS = 150'000;  // of seven values each
    std::mt19937_64 engine(20);
    std::uniform_real_distribution<double> exponent(-20.0, 37.0);
    std::stringstream stream;
    std::array<char, 512> buffer{};
    for (int i = 0; i < ITERATIONS; ++i) {
        const auto bits = engine();
        const auto number = static_cast<int>(bits);
        const auto large = static_cast<long long>(bits);
        const auto real = std::pow(10.0, exponent(engine)) * (number < 0 ? -1.0 : 1.0);
        const auto coarse = static_cast<double>(number) / 1000.0;  // many of them halves to round
        const auto single = static_cast<float>(real);
        std::snprintf(buffer.data(), buffer.size(), "%f %f %2.2f %2.2f", real, coarse,
                      static_cast<double>(single), static_cast<double>(static_cast<float>(coarse)));
        stream.str({});
        stream << number << ' ' << large << ' ' << bits << ' ' << buffer.data();
        ASSERT_EQ(xprintF(0, "$ $ $ $ $ $ $", number, large, static_cast<unsigned long long>(bits),
                          real, coarse, single, static_cast<float>(coarse)),
                  stream.str());
    }
}

TEST(sprintF, guards_the_format_and_cuts_the_result) {
    const char* const none = nullptr;
    EXPECT_EQ(sprintF("%d %s", 1, "a"), "1 a");
    EXPECT_EQ(sprintF(none), "<<<sprintF,nullpointer>>>");
    EXPECT_EQ(sprintF(std::string(4095, 'x').c_str()), std::string(4095, 'x'));
    EXPECT_EQ(sprintF(std::string(4096, 'x').c_str()), "");
    EXPECT_EQ(sprintF("%s", std::string(5000, 'x').c_str()), std::string(4095, 'x'));
}

TEST(to_string, gives_what_a_stream_gives) {
    EXPECT_EQ(to_string(-1), "-1");
    EXPECT_EQ(to_string(1LL << 40), "1099511627776");
    EXPECT_EQ(to_string(4000000000U), "4000000000");
}

TEST(to_utf8, encodes_what_lies_outside_the_basic_plane) {
    EXPECT_EQ(to_utf8(QString::fromUcs4(U"\U0001F3D3")), "\xF0\x9F\x8F\x93");
}

}  // namespace ze::str
