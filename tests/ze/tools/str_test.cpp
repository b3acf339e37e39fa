#include "ze/tools/str.h"

#include <QTemporaryDir>

#include <array>
#include <clocale>
#include <cstdlib>
#include <limits>

#include <gtest/gtest.h>

namespace ze::str {

using Lines = std::vector<std::string>;

TEST(to_lower, changes_ascii_letters_alone) {
    EXPECT_EQ(to_lower("WARN_3 \xC3\x96"), "warn_3 \xC3\x96");
}

TEST(trim, takes_white_space_from_both_ends) {
    EXPECT_EQ(trim(" \t a b \r\n"), "a b");
    EXPECT_EQ(trim("a"), "a");
    EXPECT_EQ(trim(" \t\n"), "");
    EXPECT_EQ(trim(""), "");
}

TEST(replace_tab, writes_four_blanks) {
    EXPECT_EQ(replace_tab("\ta\t"), "    a    ");
}

TEST(contains, finds_texts_and_characters) {
    EXPECT_TRUE(contains("paddle", "add"));
    EXPECT_TRUE(contains("paddle", ""));
    EXPECT_FALSE(contains("paddle", "ball"));
    EXPECT_TRUE(contains("paddle", 'p'));
    EXPECT_FALSE(contains("paddle", 'x'));
}

TEST(split_lines, lines_grow_and_the_limit_drops_its_own_line) {
    struct Row {
        const char* name;
        std::string text;
        int max;
        Lines expected;
    };
    const std::array rows = {
        Row{"no limit", "a\nb\nc", -1, {"a", "ab", "abc"}},
        Row{"line feed at the end", "a\nb\n", -1, {"a", "ab", "ab"}},
        Row{"limit 3", "a\nb\nc", 3, {"a", "ab", "abc"}},
        Row{"limit 2", "a\nb\nc", 2, {"a"}},
        Row{"limit 1", "a\nb\nc", 1, {}},
        Row{"limit 0", "a\nb\nc", 0, {}},
        Row{"limit without a line feed", "a", 1, {"a"}},
        Row{"carriage return", "a\r\nb", -1, {"a", "a\rb"}},
        Row{"carriage return at the end", "a\r", -1, {"a\r"}},
        Row{"line feed alone", "\n", -1, {""}},
        Row{"empty", "", -1, {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(split_lines(row.text, row.max), row.expected) << row.name;
    }
}

TEST(remove_part, erases_the_last_occurrence) {
    std::string text = "a-b-c";
    EXPECT_TRUE(remove_part(text, "-"));
    EXPECT_EQ(text, "a-bc");
}

TEST(remove_part, leaves_the_text_without_an_occurrence) {
    std::string text = "abc";
    EXPECT_FALSE(remove_part(text, "x"));
    EXPECT_TRUE(remove_part(text, ""));
    EXPECT_EQ(text, "abc");
}

TEST(remove_last_chars, what_follows_is_appended) {
    std::stringstream out;
    out << "a, b, ";
    remove_last_chars(out, 2);
    out << ';';
    EXPECT_EQ(out.str(), "a, b;");
    EXPECT_EQ(count_chars(out), 5U);
}

TEST(remove_last_chars, needs_enough_characters) {
    std::stringstream out;
    out << "abc";
    remove_last_chars(out, 4);
    EXPECT_EQ(out.str(), "abc");
    remove_last_chars(out, 3);
    EXPECT_EQ(out.str(), "");
}

TEST(remove_last_chars, works_on_a_stream_that_has_been_read_to_its_end) {
    std::stringstream out;
    out << "abc";
    std::string word;
    out >> word;
    ASSERT_TRUE(out.eof());
    remove_last_chars(out, 9);
    EXPECT_EQ(out.str(), "abc");
    remove_last_chars(out, 1);
    EXPECT_EQ(out.str(), "ab");
}

TEST(format_1000, groups_digits_by_three) {
    EXPECT_EQ(format_1000(0, '.'), "0");
    EXPECT_EQ(format_1000(999, '.'), "999");
    EXPECT_EQ(format_1000(1000, '.'), "1.000");
    EXPECT_EQ(format_1000(-1234, '.'), "-1.234");
    EXPECT_EQ(format_1000(-123, '.'), "-123");
    EXPECT_EQ(format_1000(1234567, '.'), "1.234.567");
    EXPECT_EQ(format_1000(std::numeric_limits<long long>::min(), ','),
              "-9,223,372,036,854,775,808");
}

TEST(format_str_1000, counts_a_sign_as_a_character) {
    EXPECT_EQ(format_str_1000("-123", '.'), "-.123");
    EXPECT_EQ(format_str_1000("abcdefg", ' '), "a bcd efg");
    EXPECT_EQ(format_str_1000("", '.'), "");
}

TEST(format_magnitude, names_the_largest_scale) {
    struct Row {
        unsigned long long value;
        const char* with_number;
        const char* word;
    };
    const std::array rows = {
        Row{0, "0", "0"},
        Row{999, "999", "999"},
        Row{1000, "1 thousand", "thousand"},
        Row{12'999, "12 thousand", "thousand"},
        Row{999'999, "999 thousand", "thousand"},
        Row{1'000'000, "1 million", "million"},
        Row{1'000'000'000, "1 billion", "billion"},
        Row{1'000'000'000'000, "1 trillion", "trillion"},
        Row{1'000'000'000'000'000, "1 quadrillion", "quadrillion"},
        Row{std::numeric_limits<unsigned long long>::max(), "18 quintillion", "quintillion"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(format_magnitude(row.value, true), row.with_number);
        EXPECT_EQ(format_magnitude(row.value, false), row.word);
    }
}

TEST(format_real, has_the_decimals_asked_for) {
    EXPECT_EQ(format_real(3.14159, 2, false), "3.14");
    EXPECT_EQ(format_real(-2.5, 0, true), "-2");
    EXPECT_EQ(format_real(1.0, 3, true), "1.000");
}

TEST(format_real, has_a_dot_where_it_is_told_to) {
    // Few machines have a locale with a decimal comma: this one is made for the test.
    const QTemporaryDir locales;
    const std::string place = locales.path().toStdString();
    const std::string command =
        "localedef --no-archive -i de_DE -f UTF-8 '" + place + "/de_DE.UTF-8'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    ASSERT_EQ(setenv("LOCPATH", place.c_str(), 1), 0);
    ASSERT_NE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), nullptr);
    const std::string by_locale = format_real(1.5, 3, false);
    const std::string with_dot = format_real(1.5, 3, true);
    std::setlocale(LC_NUMERIC, "C");
    unsetenv("LOCPATH");
    EXPECT_EQ(by_locale, "1,500");
    EXPECT_EQ(with_dot, "1.500");
}

TEST(format_fill, fills_on_the_left_and_never_cuts) {
    EXPECT_EQ(format_fill('.', 5, 42), "...42");
    EXPECT_EQ(format_fill('*', 4, -42), "*-42");
    EXPECT_EQ(format_fill('.', 2, 1234), "1234");
}

TEST(format_fill_zero, writes_what_printf_writes) {
    const std::array values = {0LL,      7LL,       -7LL,
                               123456LL, -123456LL, std::numeric_limits<long long>::min()};
    for (const long long value : values) {
        for (unsigned width = 0; width < 25; ++width) {
            EXPECT_EQ(format_fill_zero(width, value),
                      sprintF(xprintF(0, "%0$lld", width).c_str(), value));
        }
    }
    EXPECT_EQ(format_fill_zero_microseconds(1234), "001234");
    EXPECT_EQ(format_fill_zero_milliseconds(7), "007");
}

TEST(format_bytes, a_terabyte_counts_gigabytes) {
    struct Row {
        double bytes;
        const char* decimal;
        const char* binary;
    };
    const std::array rows = {
        Row{0.0, "0.00 KB", "0.00 KB"},
        Row{500.0, "0.50 KB", "0.49 KB"},
        Row{1e6, "1000.00 KB", "976.56 KB"},
        Row{2e6, "2.00 MB", "1.91 MB"},
        Row{1048576.0, "1.05 MB", "1024.00 KB"},
        Row{2e9, "2.00 GB", "1.86 GB"},
        Row{1e12, "1000.00 GB", "931.32 GB"},
        Row{2e12, "2000.00 TB", "1862.65 TB"},
        Row{1e9, "1000.00 MB", "953.67 MB"},
        Row{1073741824.0, "1.07 GB", "1024.00 MB"},
        Row{1099511627776.0, "1099.51 TB", "1024.00 GB"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(format_bytes(row.bytes), row.decimal);
        EXPECT_EQ(format_bytes_1024(row.bytes), row.binary);
    }
}

TEST(format_array_as_hex, shows_head_and_tail) {
    std::array<unsigned char, 1234> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<unsigned char>(i);
    }
    constexpr auto HUGE_COUNT = std::numeric_limits<unsigned long long>::max();
    struct Row {
        const char* name;
        unsigned size;
        unsigned long long head;
        unsigned long long tail;
        const char* expected;
    };
    const std::array rows = {
        Row{"gap", 10, 2, 2, "[10] = {00 01  .. 08 09}"},
        Row{"all, just", 4, 2, 2, "[4] = {00 01 02 03}"},
        Row{"one hidden", 5, 2, 2, "[5] = {00 01  .. 03 04}"},
        Row{"all", 3, 8, 8, "[3] = {00 01 02}"},
        Row{"no head", 4, 0, 1, "[4] = { .. 03}"},
        Row{"no tail", 4, 1, 0, "[4] = {00  .. }"},
        Row{"empty", 0, 2, 2, "[0] = {}"},
        Row{"counts that overflow", 2, HUGE_COUNT, HUGE_COUNT, "[2] = {00 01}"},
        Row{"grouped size", 1234, 1, 1, "[1.234] = {00  .. D1}"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(format_array_as_hex(bytes.data(), row.size, row.head, row.tail), row.expected)
            << row.name;
    }
}

}  // namespace ze::str
