#include "ze/store/Token.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

using ze::store::Token;

// The texts of the tokens with their words, one behind the other.
std::string tokens_of(const QString& source) {
    std::string text;
    for (const Token& token : Token::token_from_source(source)) {
        text += token.to_string() + "\n";
    }
    return text;
}

struct Row {
    const char* name;
    const char16_t* source;
    const char* tokens;
};

class TokenSource : public testing::TestWithParam<Row> {};

TEST_P(TokenSource, splits_into) {
    const QString source = QString::fromUtf16(GetParam().source);

    EXPECT_EQ(tokens_of(source), GetParam().tokens);
}

INSTANTIATE_TEST_SUITE_P(
    Token, TokenSource,
    testing::Values(
        Row{"nothing", u"", "<<<>>> END\n"}, Row{"blanks_only", u" \t\n ", "<<<>>> END\n"},
        Row{"a_word", u"ab", "<<<ab>>> WORD\n<<<>>> END\n"},
        Row{"words_between_blanks", u"  a  b ", "<<<a>>> WORD\n<<<b>>> WORD\n<<<>>> END\n"},
        Row{"a_quote", u"\"a b\"", "<<<a b>>> QUOTE\n<<<>>> END\n"},
        Row{"an_empty_quote", u"\"\"", "<<<>>> QUOTE\n<<<>>> END\n"},
        Row{"quotes_without_a_blank_between", u"\"a\"\"b\"",
            "<<<a>>> QUOTE\n<<<b>>> QUOTE\n<<<>>> END\n"},
        Row{"a_word_behind_a_quote", u"\"a\"b", "<<<a>>> QUOTE\n<<<b>>> WORD\n<<<>>> END\n"},
        Row{"a_quote_inside_a_word", u"a\"b c\"", "<<<a\"b>>> WORD\n<<<c\">>> WORD\n<<<>>> END\n"},
        Row{"a_backslash_does_not_escape", u"\"a\\\"b",
            "<<<a\\>>> QUOTE\n<<<b>>> WORD\n<<<>>> END\n"},
        Row{"control_characters_9_to_13", u"a\u0009b\u000Ac\u000Bd\u000Ce\u000Df",
            "<<<a>>> WORD\n<<<b>>> WORD\n<<<c>>> WORD\n<<<d>>> WORD\n<<<e>>> WORD\n<<<f>>> WORD\n"
            "<<<>>> END\n"},
        Row{"next_line_133", u"a\u0085b", "<<<a>>> WORD\n<<<b>>> WORD\n<<<>>> END\n"},
        Row{"no_break_space_160", u"a\u00A0b", "<<<a>>> WORD\n<<<b>>> WORD\n<<<>>> END\n"},
        Row{"ideographic_space", u"a\u3000b", "<<<a>>> WORD\n<<<b>>> WORD\n<<<>>> END\n"},
        Row{"line_separator", u"a\u2028b", "<<<a>>> WORD\n<<<b>>> WORD\n<<<>>> END\n"},
        Row{"other_control_characters_belong_to_words", u"a\u000Eb\u0008",
            "<<<a\u000Eb\b>>> WORD\n<<<>>> END\n"}),
    [](const auto& row) { return row.param.name; });

TEST(Token, unterminated_quote_logs_and_gives_no_token_at_all) {
    test::LogCapture log;
    log.expect_error("GArgv::parse, unterminated quote in argument string");

    EXPECT_TRUE(Token::token_from_source(QStringLiteral("-a b \"c")).empty());
}

TEST(Token, a_lone_quote_at_the_end_is_unterminated) {
    test::LogCapture log;
    log.expect_error("GArgv::parse, unterminated quote in argument string");

    EXPECT_TRUE(Token::token_from_source(QStringLiteral("\"")).empty());
}

TEST(Token, text_looks_into_the_source) {
    const QString source = QStringLiteral("-a b");

    EXPECT_EQ(Token::token_from_source(source).at(1).text.data(), source.constData() + 3);
}

}  // namespace
