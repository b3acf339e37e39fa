#include "ze/store/GArgv.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

using ze::store::GArgv;

GArgv argv_of(std::vector<std::string> arguments) {
    std::string program = "program";
    std::vector<char*> pointers = {program.data()};
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    GArgv argv;
    argv.set_arguments(static_cast<int>(pointers.size()), pointers.data());
    return argv;
}

// "key:string" or "key!" for a flag that is set, in key order.
std::string pairs_of(const GArgv& argv) {
    std::string text;
    for (const auto& [key, value] : argv.attributes()) {
        const bool isFlag = argv.is_flag(key, false);
        text += key.toStdString() +
                (isFlag ? "!" : ":" + argv.get(key, QStringLiteral("?")).toStdString());
        text += ' ';
    }
    return text;
}

struct SourceRow {
    const char* name;
    std::vector<std::string> arguments;
    const char* source;
};

class GArgvSource : public testing::TestWithParam<SourceRow> {};

TEST_P(GArgvSource, joins_the_arguments) {
    EXPECT_EQ(argv_of(GetParam().arguments).source().toStdString(), GetParam().source);
}

INSTANTIATE_TEST_SUITE_P(
    GArgv, GArgvSource,
    testing::Values(SourceRow{"none", {}, ""}, SourceRow{"one", {"-a"}, "-a"},
                    SourceRow{"two_with_one_blank", {"-a", "b"}, "-a b"},
                    SourceRow{"a_blank_in_quotes", {"b c"}, "\"b c\""},
                    SourceRow{"a_tab_in_quotes", {"b\tc"}, "\"b\tc\""},
                    SourceRow{"other_white_space_as_it_is", {"b\nc"}, "b\nc"},
                    SourceRow{"a_quote_behind_a_backslash", {"b\"c"}, "b\\\"c"},
                    SourceRow{"both", {"b \"c"}, "\"b \\\"c\""},
                    SourceRow{"an_empty_argument_as_nothing", {"-a", "", "b"}, "-a  b"},
                    SourceRow{"utf8", {"-user", "Jos\xC3\xA9"}, "-user Jos\xC3\xA9"}),
    [](const auto& row) { return row.param.name; });

TEST(GArgv, a_null_argument_is_empty) {
    std::string program = "program";
    std::string flag = "-a";
    std::vector<char*> pointers = {program.data(), nullptr, flag.data()};
    GArgv argv;

    argv.set_arguments(3, pointers.data());

    EXPECT_EQ(argv.source().toStdString(), " -a");
}

TEST(GArgv, no_argument_vector_gives_an_empty_source) {
    GArgv argv;

    argv.set_arguments(0, nullptr);

    EXPECT_EQ(argv.source(), QString());
}

struct ParseRow {
    const char* name;
    std::vector<std::string> arguments;
    bool ok;
    const char* pairs;
    std::vector<std::string> errors;
};

class GArgvParse : public testing::TestWithParam<ParseRow> {};

TEST_P(GArgvParse, reads_the_pairs) {
    test::LogCapture log;
    for (const std::string& error : GetParam().errors) {
        log.expect_error(error);
    }
    GArgv argv = argv_of(GetParam().arguments);

    EXPECT_EQ(argv.parse(), GetParam().ok);
    EXPECT_EQ(pairs_of(argv), GetParam().pairs);
}

INSTANTIATE_TEST_SUITE_P(
    GArgv, GArgvParse,
    testing::Values(ParseRow{"nothing", {}, true, "", {}},
                    ParseRow{"a_value_and_a_flag", {"-a", "b", "-c"}, true, "a:b c! ", {}},
                    ParseRow{"a_flag_and_a_value", {"-a", "-b", "c"}, true, "a! b:c ", {}},
                    ParseRow{"any_number_of_hyphens", {"-a", "--b", "---c"}, true, "a! b! c! ", {}},
                    ParseRow{"the_equals_sign_as_part_of_the_key", {"-x=1"}, true, "x=1! ", {}},
                    ParseRow{"a_value_with_a_blank", {"-a", "b c"}, true, "a:b c ", {}},
                    ParseRow{"a_negative_number_as_a_flag", {"-n", "-5"}, true, "5! n! ", {}},
                    ParseRow{"a_quoted_text_with_a_hyphen_as_no_value",
                             {"-n", "-5 x"},
                             false,
                             "n! ",
                             {"GArgv::parse, unexpected token type"}},
                    ParseRow{"the_last_of_equal_keys", {"-a", "b", "-a", "c"}, true, "a:c ", {}},
                    ParseRow{"a_word_in_the_place_of_a_key",
                             {"a"},
                             false,
                             "",
                             {"GArgv::parse, expected key, got 'a'"}},
                    ParseRow{"a_third_word_after_its_pair",
                             {"-a", "b", "c"},
                             false,
                             "a:b ",
                             {"GArgv::parse, expected key, got 'c'"}},
                    ParseRow{"a_quote_in_the_place_of_a_key",
                             {"-a", "b", "c d", "-e"},
                             false,
                             "a:b ",
                             {"GArgv::parse, unexpected token type"}},
                    ParseRow{"hyphens_only", {"--"}, false, "", {"GArgv::parse, empty key"}},
                    ParseRow{"a_blank_and_a_quote_in_one_argument",
                             {"-a", "b \"c"},
                             false,
                             "a:b \\ ",
                             {"GArgv::parse, expected key, got 'c\"'"}},
                    ParseRow{"an_unterminated_quote_as_no_pairs_and_no_failure",
                             {"-a", "b", "-c", "d \""},
                             true,
                             "",
                             {"GArgv::parse, unterminated quote in argument string"}}),
    [](const auto& row) { return row.param.name; });

TEST(GArgv, values_are_texts_that_do_not_read_as_numbers) {
    GArgv argv = argv_of({"-n", "5"});
    ASSERT_TRUE(argv.parse());

    EXPECT_EQ(argv.get(QStringLiteral("n"), 7), 7);
    EXPECT_EQ(argv.get(QStringLiteral("n"), QString()).toInt(), 5);
}

TEST(GArgv, missing_must_have_key_is_named_and_fails) {
    test::LogCapture log;
    log.expect_error("'host' missing");
    GArgv argv = argv_of({"-user", "Ann"});
    argv.set_must_have_keys(
        {QStringLiteral("user"), QStringLiteral("host"), QStringLiteral("pass")});

    EXPECT_FALSE(argv.parse());
}

TEST(GArgv, empty_source_fails_only_for_a_must_have_key) {
    test::LogCapture log;
    log.expect_error("'user' missing");
    GArgv argv;
    EXPECT_TRUE(argv.parse());

    argv.set_must_have_keys({QStringLiteral("user")});

    EXPECT_FALSE(argv.parse());
}

TEST(GArgv, unterminated_quote_fails_only_for_a_must_have_key) {
    test::LogCapture log;
    log.expect_error("GArgv::parse, unterminated quote in argument string");
    log.expect_error("'user' missing");
    GArgv argv = argv_of({"-user", "Ann", "-c", "d \""});
    argv.set_must_have_keys({QStringLiteral("user")});

    EXPECT_FALSE(argv.parse());
}

TEST(GArgv, must_have_keys_that_are_there_pass) {
    GArgv argv = argv_of({"-login", "-user", "Ann"});
    argv.set_must_have_keys({QStringLiteral("user"), QStringLiteral("login")});

    EXPECT_TRUE(argv.parse());
}

TEST(GArgv, optional_keys_are_kept_and_never_consulted) {
    GArgv argv = argv_of({"-other"});
    argv.set_optional_keys({QStringLiteral("user")});

    EXPECT_TRUE(argv.parse());
    EXPECT_EQ(argv.optional_keys(), std::vector<QString>{QStringLiteral("user")});
}

TEST(GArgv, second_parse_adds_to_the_first) {
    GArgv argv = argv_of({"-a", "b"});
    ASSERT_TRUE(argv.parse());
    std::string program = "program";
    std::string flag = "-c";
    std::vector<char*> pointers = {program.data(), flag.data()};

    argv.set_arguments(2, pointers.data());

    EXPECT_TRUE(argv.parse());
    EXPECT_EQ(pairs_of(argv), "a:b c! ");
}

TEST(GArgv, show_logs_the_count_and_each_pair_at_the_indent) {
    test::LogCapture log;
    GArgv argv = argv_of({"-user", "Ann", "-login"});
    ASSERT_TRUE(argv.parse());

    argv.show(2);

    const std::vector<std::string> lines = {
        "DEB   GArgv, arguments:2",
        "DEB   login='QVariant{boolvalid=true, null=false, value:\"true\"}'",
        "DEB   user='QVariant{QStringvalid=true, null=false, value:\"Ann\"}'"};
    EXPECT_EQ(log.lines_with_level(), lines);
}

}  // namespace
