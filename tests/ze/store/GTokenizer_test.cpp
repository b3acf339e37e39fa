#include "ze/store/GTokenizer.h"

#include "ze/store/GDelimiter.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

using ze::GTokenizer;

// The tokens, each in brackets, so that blanks and empty tokens show.
std::string joined(const GTokenizer& tokenizer) {
    std::string text;
    for (const QStringView token : tokenizer.tokens) {
        text += '[' + token.toUtf8().toStdString() + ']';
    }
    return text;
}

struct SplitRow {
    const char* name;
    const char* text;
    const char* delimiters;
    bool keepDelimiters;
    bool quotes;
    const char* tokens;
};

class GTokenizerSplit : public testing::TestWithParam<SplitRow> {};

TEST_P(GTokenizerSplit, gives) {
    const SplitRow& row = GetParam();
    const QString text = QString::fromUtf8(row.text);

    EXPECT_EQ(
        joined(GTokenizer(text, QString::fromUtf8(row.delimiters), row.keepDelimiters, row.quotes)),
        row.tokens);
}

INSTANTIATE_TEST_SUITE_P(
    GTokenizer, GTokenizerSplit,
    testing::Values(
        SplitRow{"delimiters_dropped", "a,b", ",", false, false, "[a][b]"},
        SplitRow{"delimiters_kept", "a,b", ",", true, false, "[a][,][b]"},
        SplitRow{"an_empty_text", "", ",", true, true, ""},
        SplitRow{"no_delimiters_at_all", "a,b c", "", true, false, "[a,b c]"},
        SplitRow{"runs_without_empty_tokens", ",,a, ,b,,", ", ", false, false, "[a][b]"},
        SplitRow{"runs_kept_one_by_one", ",,a ", ", ", true, false, "[,][,][a][ ]"},
        SplitRow{"delimiters_only", ",,", ",", false, false, ""},
        SplitRow{"wide_delimiters", "a\u3002b\uFF0C\u3002c", "\u3002\uFF0C", false, false,
                 "[a][b][c]"},
        SplitRow{"wide_characters_that_share_a_low_byte", "a\u3102b", "\u3002", false, false,
                 "[a\u3102b]"},
        SplitRow{"latin_character_with_the_low_byte_of_a_wide_delimiter", "a\u0002b", "\u3002",
                 false, false, "[a\u0002b]"},
        SplitRow{"quotes_as_letters_without_the_flag", "a \"b c\"", " ", false, false,
                 "[a][\"b][c\"]"},
        SplitRow{"a_quoted_token_with_its_quotes", "a \"b c\" d", " ", false, true,
                 "[a][\"b c\"][d]"},
        SplitRow{"an_empty_quoted_token", "\"\"", " ", false, true, "[\"\"]"},
        SplitRow{"a_word_given_up_before_a_quote", "ab\"cd\"", " ", false, true, "[\"cd\"]"},
        SplitRow{"a_word_right_behind_a_quote", "\"cd\"ab", " ", false, true, "[\"cd\"][ab]"},
        SplitRow{"an_open_quote_that_loses_the_rest", "a \"b c", " ", false, true, "[a]"},
        SplitRow{"an_open_quote_inside_a_word_that_keeps_the_rest", "a b\"c d", " ", false, true,
                 "[a][\"c d]"},
        SplitRow{"a_quote_as_the_last_character", "a \"", " ", true, true, "[a][ ]"},
        SplitRow{"the_flag_before_the_delimiter", "\"a\"", "\"", true, true, "[\"a\"]"},
        SplitRow{"the_quote_as_a_delimiter", "\"a\"", "\"", true, false, "[\"][a][\"]"},
        SplitRow{"delimiters_inside_quotes_kept_in_the_token", "\"a,b\",c", ",", true, true,
                 "[\"a,b\"][,][c]"}),
    [](const auto& row) { return row.param.name; });

GTokenizer at_commas(const QString& text) {
    return GTokenizer(text, QStringLiteral(","), false, true);
}

TEST(GTokenizer, build_returns_the_count_and_leaves_the_cursor) {
    const QString first = QStringLiteral("1,2,3");
    const QString second = QStringLiteral("4,5");
    GTokenizer tokenizer = at_commas(first);
    EXPECT_EQ(tokenizer.nextInt(), 1);

    EXPECT_EQ(tokenizer.buildToken(second, QStringLiteral(","), false, false), 2);

    EXPECT_EQ(tokenizer.nextInt(), 5);
}

TEST(GTokenizer, next_int_reads_and_moves_on) {
    const QString text = QStringLiteral("12,-7,2147483647,-2147483648");
    const GTokenizer tokenizer = at_commas(text);

    EXPECT_EQ(tokenizer.nextInt(), 12);
    EXPECT_EQ(tokenizer.nextInt(), -7);
    EXPECT_EQ(tokenizer.nextInt(), 2147483647);
    EXPECT_EQ(tokenizer.nextInt(), -2147483647 - 1);
}

TEST(GTokenizer, next_int_on_no_number_logs_gives_0_and_moves_on) {
    test::LogCapture log;
    const QString text = QStringLiteral("12a,2147483648,1.5,0x10,3");
    const GTokenizer tokenizer = at_commas(text);

    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(tokenizer.nextInt(), 0);
    }

    EXPECT_EQ(tokenizer.nextInt(), 3);
    const std::vector<std::string> lines = {
        "DEB XTokenizer::nextInt, token '12a' is not a number",
        "DEB XTokenizer::nextInt, token '2147483648' is not a number",
        "DEB XTokenizer::nextInt, token '1.5' is not a number",
        "DEB XTokenizer::nextInt, token '0x10' is not a number"};
    EXPECT_EQ(log.lines_with_level(), lines);
}

TEST(GTokenizer, next_int_past_the_end_logs_an_empty_token) {
    test::LogCapture log;
    const GTokenizer tokenizer = at_commas(QString());

    EXPECT_EQ(tokenizer.nextInt(), 0);
    EXPECT_EQ(tokenizer.position, 1);
    EXPECT_EQ(log.lines(),
              std::vector<std::string>{"XTokenizer::nextInt, token '' is not a number"});
}

TEST(GTokenizer, next_double_reads_or_logs) {
    test::LogCapture log;
    const QString text = QStringLiteral("1.5,-2e3,x,4");
    const GTokenizer tokenizer = at_commas(text);

    EXPECT_EQ(tokenizer.nextDouble(), 1.5);
    EXPECT_EQ(tokenizer.nextDouble(), -2000.0);
    EXPECT_EQ(tokenizer.nextDouble(), 0.0);
    EXPECT_EQ(tokenizer.nextDouble(), 4.0);
    EXPECT_EQ(tokenizer.nextDouble(), 0.0);
    const std::vector<std::string> lines = {
        "DEB XTokenizer::nextDouble, token 'x' is not a 'real' number",
        "DEB XTokenizer::nextDouble, token '' is not a 'real' number"};
    EXPECT_EQ(log.lines_with_level(), lines);
}

TEST(GTokenizer, put_back_makes_the_last_token_next_again) {
    const QString text = QStringLiteral("1,2");
    const GTokenizer tokenizer = at_commas(text);
    EXPECT_EQ(tokenizer.nextInt(), 1);

    tokenizer.putBack();

    EXPECT_EQ(tokenizer.nextInt(), 1);
}

TEST(GTokenizer, put_back_at_the_start_stays_there) {
    const QString text = QStringLiteral("1,2");
    const GTokenizer tokenizer = at_commas(text);

    tokenizer.putBack();

    EXPECT_EQ(tokenizer.position, 0);
}

TEST(GTokenizer, a_cursor_at_either_end_of_its_range_reads_empty_tokens) {
    test::LogCapture log;
    const QString text = QStringLiteral("1");
    const GTokenizer tokenizer = at_commas(text);

    for (const int position : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        tokenizer.position = position;
        EXPECT_FALSE(tokenizer.is_Number(0xFFFFFFFFu));
        EXPECT_EQ(tokenizer.nextInt(), 0);
    }
}

TEST(GTokenizer, next_token_is_compared_whole_and_stays_next) {
    const QString text = QStringLiteral("ui,theme");
    const GTokenizer tokenizer = at_commas(text);

    EXPECT_TRUE(tokenizer.is_Next_Token(QStringLiteral("ui")));
    EXPECT_FALSE(tokenizer.is_Next_Token(QStringLiteral("UI")));
    EXPECT_FALSE(tokenizer.is_Next_Token(QStringLiteral("u")));
    EXPECT_FALSE(tokenizer.is_Next_Token(QStringLiteral("theme")));
    EXPECT_EQ(tokenizer.position, 0);
}

TEST(GTokenizer, tests_by_offset_count_from_the_cursor) {
    const QString text = QStringLiteral("1 2.5 \"a b\" ( ) + x");
    const GTokenizer tokenizer(text, QStringLiteral(" "), false, true);
    const QString open = QStringLiteral("{([");
    const QString close = QStringLiteral("})]");
    const QString operators = QStringLiteral("+-");
    EXPECT_EQ(tokenizer.nextInt(), 1);

    EXPECT_FALSE(tokenizer.is_Number(0));
    EXPECT_TRUE(tokenizer.is_RealNumber(0));
    EXPECT_TRUE(tokenizer.is_String(1));
    EXPECT_TRUE(tokenizer.is_Bracket_open(2, open));
    EXPECT_TRUE(tokenizer.is_Bracket_close(3, close));
    EXPECT_TRUE(tokenizer.is_Operator(4, operators));
    EXPECT_TRUE(tokenizer.is_One_of_these_Chars(5, QStringLiteral("xyz")));
    EXPECT_FALSE(tokenizer.is_One_of_these_Chars(6, QStringLiteral("xyz")));
}

TEST(GTokenizer, white_space_test_counts_from_the_first_token) {
    const QString text = QStringLiteral(" a");
    const GTokenizer tokenizer(text, QStringLiteral(" "), true, false);
    tokenizer.position = 1;

    EXPECT_TRUE(tokenizer.is_WhiteSpace(0));
    EXPECT_FALSE(tokenizer.is_WhiteSpace(1));
    EXPECT_TRUE(tokenizer.is_WhiteSpace(2)) << "past the end is an empty token";
}

struct KindRow {
    const char* name;
    const char* token;
    bool isString;
    bool isNumber;
    bool isRealNumber;
    bool isWhiteSpace;
    bool isOneOf;  // of "+-"
    const char* content;
};

class GTokenizerKind : public testing::TestWithParam<KindRow> {};

TEST_P(GTokenizerKind, is_told_by_the_static_tests) {
    const KindRow& row = GetParam();
    const QString text = QString::fromUtf8(row.token);
    const QStringView token = text;
    const QString characters = QStringLiteral("+-");

    EXPECT_EQ(GTokenizer::is_String(token), row.isString);
    EXPECT_EQ(GTokenizer::is_Number(token), row.isNumber);
    EXPECT_EQ(GTokenizer::is_RealNumber(token), row.isRealNumber);
    EXPECT_EQ(GTokenizer::is_WhiteSpace(token), row.isWhiteSpace);
    EXPECT_EQ(GTokenizer::is_One_of_these_Chars(token, characters), row.isOneOf);
    EXPECT_EQ(GTokenizer::is_Operator(token, characters), row.isOneOf);
    EXPECT_EQ(GTokenizer::is_Bracket_open(token, characters), row.isOneOf);
    EXPECT_EQ(GTokenizer::is_Bracket_close(token, characters), row.isOneOf);
    EXPECT_FALSE(GTokenizer::is_One_of_these_Chars(token, QString()));
    EXPECT_EQ(GTokenizer::get_String(token).toString().toStdString(), row.content);
}

INSTANTIATE_TEST_SUITE_P(
    GTokenizer, GTokenizerKind,
    testing::Values(KindRow{"empty", "", false, false, false, true, false, ""},
                    KindRow{"word", "ab", false, false, false, false, false, "ab"},
                    KindRow{"quoted", "\"ab\"", true, false, false, false, false, "ab"},
                    KindRow{"empty_quotes", "\"\"", true, false, false, false, false, ""},
                    KindRow{"one_quote", "\"", true, false, false, false, false, ""},
                    KindRow{"open_quote", "\"ab", false, false, false, false, false, "\"ab"},
                    KindRow{"integer", "42", false, true, true, false, false, "42"},
                    KindRow{"integer_over_32_bits", "4294967296", false, false, true, false, false,
                            "4294967296"},
                    KindRow{"real", "1.5", false, false, true, false, false, "1.5"},
                    KindRow{"blanks_and_tabs", " \t ", false, false, false, true, false, " \t "},
                    KindRow{"line_feed", "\n", false, false, false, false, false, "\n"},
                    KindRow{"one_of_the_characters", "+", false, false, false, false, true, "+"},
                    KindRow{"two_of_the_characters", "+-", false, false, false, false, false,
                            "+-"}),
    [](const auto& row) { return row.param.name; });

TEST(GTokenizer, remove_whitespace_takes_four_characters_out) {
    EXPECT_EQ(GTokenizer::removeWhitespace(QStringLiteral(" a\tb\r\nc\u00A0d ")),
              QStringLiteral("abc\u00A0d"));
}

TEST(GTokenizer, remove_white_space_token_rewinds_and_keeps_the_rest) {
    const QString text = QStringLiteral("a , b\t");
    GTokenizer tokenizer(text, QStringLiteral(", \t"), true, false);
    tokenizer.position = 3;

    tokenizer.remove_White_Space_Token();

    EXPECT_EQ(joined(tokenizer), "[a][,][b]");
    EXPECT_EQ(tokenizer.position, 0);
}

TEST(GTokenizer, fill_adds_every_token_once) {
    const QString text = QStringLiteral("b,a,b");
    std::set<QString> words = {QStringLiteral("c")};

    at_commas(text).fill(words);

    EXPECT_EQ(words,
              (std::set<QString>{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
}

TEST(GTokenizer, show_logs_index_and_text) {
    test::LogCapture log;
    const QString text = QStringLiteral("a,b");

    at_commas(text).show(2, false);

    const std::vector<std::string> lines = {"DEB   Token:2", "DEB   [0] = 'a'", "DEB   [1] = 'b'"};
    EXPECT_EQ(log.lines_with_level(), lines);
}

TEST(GTokenizer, show_names_the_first_kind_that_fits) {
    test::LogCapture log;
    const QString text = QStringLiteral("\"s\",42,1.5,{,(,[,},),],+,-,*,/,^,~,ab,?");

    at_commas(text).show(0, true);

    const std::vector<std::string> lines = {"Token:17",
                                            "[0] = '\"s\"' -  STRING",
                                            "[1] = '42' -  NUMBER",
                                            "[2] = '1.5' -  REAL NUMBER",
                                            "[3] = '{' -  BRACKET OPEN",
                                            "[4] = '(' -  BRACKET OPEN",
                                            "[5] = '[' -  BRACKET OPEN",
                                            "[6] = '}' -  BRACKET CLOSE",
                                            "[7] = ')' -  BRACKET CLOSE",
                                            "[8] = ']' -  BRACKET CLOSE",
                                            "[9] = '+' -  OPERATOR",
                                            "[10] = '-' -  OPERATOR",
                                            "[11] = '*' -  OPERATOR",
                                            "[12] = '/' -  OPERATOR",
                                            "[13] = '^' -  OPERATOR",
                                            "[14] = '~' -  OPERATOR",
                                            "[15] = 'ab' -  OTHER",
                                            "[16] = '?' -  OTHER"};
    EXPECT_EQ(log.lines(), lines);
}

TEST(GTokenizer, splits_a_theme_path_with_the_ascii_table) {
    const QString text = QStringLiteral("ui/theme.dark:2");

    EXPECT_EQ(joined(GTokenizer(text, ze::GDelimiter::sDelimAll(), false, false)),
              "[ui][theme][dark][2]");
}

}  // namespace
