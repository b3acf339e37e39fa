#include "ze/log/log.h"

#include "ze/log/pp.h"
#include "ze/log/thread_id.h"

#include "support/LogCapture.h"

#include <QString>

#include <array>
#include <clocale>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ze::log {
namespace {

using Lines = std::vector<std::string>;

// Takes back what a test does to the one log of the process.
class LogState : public testing::Test {
protected:
    ~LogState() override {
        remove_log_appender(&consoleLogger);
        set_log_level_default(DEBUG);
        set_log_level(DEBUG);
        set_log_digits(6);
    }

    // What configure writes to the standard output for these arguments.
    static std::string configure_with(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "program");
        std::vector<char*> argv;
        for (std::string& argument : arguments) {
            argv.push_back(argument.data());
        }
        argv.push_back(nullptr);
        testing::internal::CaptureStdout();
        configure(static_cast<int>(arguments.size()), argv.data(), true);
        return testing::internal::GetCapturedStdout();
    }
};

class Collector final : public LogAppender {
public:
    void log_string(unsigned, LOG_LEVEL, const char* text) override {
        texts.emplace_back(text != nullptr ? text : "null");
    }

    Lines texts;
};

std::string columns(unsigned bits, unsigned counter = 42, LOG_LEVEL level = DEBUG) {
    return trailler(counter, level, GBits<unsigned>(bits));
}

}  // namespace

TEST_F(LogState, configure_takes_the_level_from_the_arguments) {
    struct Row {
        const char* name;
        std::vector<std::string> arguments;
        unsigned level;
        const char* output;
    };
    const std::array rows = {
        Row{"no argument: the default", {}, DEBUG, ""},
        Row{"word", {"--__log_level", "trace"}, TRACE, ""},
        Row{"word in capitals", {"--__log_level", "WARN"}, WARN, ""},
        Row{"number", {"--__log_level", "0"}, ERROR, ""},
        Row{"large number", {"--__log_level", "9"}, TRACE, ""},
        Row{"unknown word", {"--__log_level", "loud"}, INFO, ""},
        Row{"flag alone", {"--__log_level"}, INFO, ""},
        Row{"other keys", {"--user", "anna", "--login"}, DEBUG, ""},
        Row{"out of range",
            {"--__log_level", "nop"},
            WARN,
            "set_log_level out of range 0-4, level:5 ?\n"},
    };
    for (const Row& row : rows) {
        set_log_level(WARN);
        EXPECT_EQ(configure_with(row.arguments), row.output) << row.name;
        EXPECT_EQ(get_log_level(), row.level) << row.name;
    }
}

TEST_F(LogState, configure_leaves_the_level_alone_when_the_arguments_do_not_parse) {
    test::LogCapture log(WARN);
    EXPECT_THAT(configure_with({"--__log_level", "trace", "word", "without", "key"}),
                testing::EndsWith("log::configure, GArgv parser error\n"));
    EXPECT_EQ(get_log_level(), static_cast<unsigned>(WARN));
    for (const std::string& line : log.lines()) {
        log.expect_error(line);
    }
}

TEST_F(LogState, configure_starts_from_the_default_level) {
    set_log_level_default(TRACE);
    EXPECT_EQ(configure_with({}), "");
    EXPECT_EQ(get_log_level(), static_cast<unsigned>(TRACE));
}

TEST_F(LogState, configure_refuses_a_default_level_out_of_range) {
    set_log_level(WARN);
    set_log_level_default(NOP);
    EXPECT_EQ(configure_with({}), "set_log_level out of range 0-4, level:5 ?\n");
    EXPECT_EQ(get_log_level(), static_cast<unsigned>(WARN));
}

TEST_F(LogState, configure_marks_the_main_thread_and_the_kind_of_program) {
    configure_with({});
    EXPECT_TRUE(is_configured());
    EXPECT_TRUE(is_gui_app());
    EXPECT_TRUE(is_main_thread());
    std::thread([] { EXPECT_FALSE(is_main_thread()); }).join();
    configure();
    EXPECT_FALSE(is_gui_app());
}

TEST_F(LogState, configure_takes_the_decimal_comma_from_a_program_without_a_gui_only) {
    ASSERT_NE(std::setlocale(LC_NUMERIC, "C.UTF-8"), nullptr);
    configure_with({});
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C.UTF-8");
    configure();
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST_F(LogState, configure_starts_the_time) {
    configure_with({});
    EXPECT_LT(get_time_since_start(), 60'000'000U);
}

TEST_F(LogState, configure_turns_on_the_console_and_its_columns) {
    configure_with({});
    EXPECT_EQ(consoleLogger.config.logControl.value(), 1049598U);
}

TEST_F(LogState, the_console_shows_all_columns_and_the_time_of_day) {
    configure_with({});
    testing::internal::CaptureStdout();
    pp("text");
    const std::string line = testing::internal::GetCapturedStdout();
    EXPECT_THAT(line, testing::MatchesRegex("\\[[0-9]{6}\\] \\[DEB\\] "
                                            "\\[[0-9]{2}:[0-9]{2}:[0-9]{2},[0-9]{6}\\] "
                                            "\\[[0-9]{4}\\] text\n"));
}

TEST_F(LogState, the_console_ignores_its_own_threshold_and_names_a_null_text) {
    LogConsole console;
    console.config.logLevel = ERROR;
    testing::internal::CaptureStdout();
    console.log_string(1, TRACE, "text");
    console.log_string(2, TRACE, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), " text\n nullptr\n");
}

TEST_F(LogState, a_level_out_of_range_is_refused_as_an_unsigned_number) {
    set_log_level(INFO);
    testing::internal::CaptureStdout();
    set_log_level(5);
    set_log_level(-1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "set_log_level out of range 0-4, level:5 ?\n"
              "set_log_level out of range 0-4, level:4294967295 ?\n");
    EXPECT_EQ(get_log_level(), static_cast<unsigned>(INFO));
}

TEST(log, a_level_lets_through_itself_and_what_is_graver) {
    for (const LOG_LEVEL threshold : {ERROR, WARN, INFO, DEBUG, TRACE}) {
        test::LogCapture log(threshold);
        Lines expected;
        for (const LOG_LEVEL level : {ERROR, WARN, INFO, DEBUG, TRACE}) {
            log_string(level, logLevel_to_string(level));
            if (level <= threshold) {
                expected.push_back(logLevel_to_string(level));
            }
        }
        EXPECT_EQ(log.lines(), expected);
        log.expect_error("ERR");
    }
}

TEST(log, a_line_of_no_level_is_dropped_at_every_threshold) {
    const test::LogCapture log(TRACE);
    log_string(NOP, "nothing");
    EXPECT_EQ(log.lines(), Lines{});
}

TEST(log, a_dropped_line_does_not_raise_the_number) {
    test::LogCapture log(INFO);
    pp_info("first");
    pp("dropped");
    pp_info("second");
    const auto records = log.records();
    ASSERT_EQ(log.lines(), (Lines{"first", "second"}));
    EXPECT_EQ(records[1].number, records[0].number + 1);
}

TEST(log, a_disabled_appender_gets_nothing_and_the_line_is_numbered) {
    test::LogCapture log;
    pp("first");
    log.set_enabled(false);
    pp("unseen");
    log.set_enabled(true);
    pp("second");
    const auto records = log.records();
    ASSERT_EQ(log.lines(), (Lines{"first", "second"}));
    EXPECT_EQ(records[1].number, records[0].number + 2);
}

TEST(log, an_appender_added_twice_gets_each_line_once) {
    const test::LogCapture log;
    Collector collector;
    collector.set_enabled(true);
    add_log_appender(&collector);
    add_log_appender(&collector);
    log_string(DEBUG, "text");
    log_string(DEBUG, static_cast<const char*>(nullptr));
    remove_log_appender(&collector);
    remove_log_appender(&collector);
    log_string(DEBUG, "after");
    EXPECT_EQ(collector.texts, (Lines{"text", "null"}));
}

class Muffler final : public LogAppender {
public:
    void log_string(unsigned, LOG_LEVEL, const char*) override { set_log_level(WARN); }
};

TEST(log, an_appender_can_change_the_level) {
    test::LogCapture log(TRACE);
    Muffler muffler;
    muffler.set_enabled(true);
    add_log_appender(&muffler);
    pp("first");
    pp("dropped");
    remove_log_appender(&muffler);
    EXPECT_EQ(log.lines(), Lines{"first"});
    EXPECT_EQ(get_log_level(), static_cast<unsigned>(WARN));
}

TEST(parse_log_level, takes_numbers_and_words) {
    struct Row {
        const char* text;
        unsigned level;
    };
    constexpr unsigned FALLBACK = 77;
    const std::array rows = {
        Row{"0", 0},           Row{"4", 4},          Row{"9", 4},
        Row{"4294967295", 4},  Row{"err", 0},        Row{"error", 0},
        Row{"wrn", 1},         Row{"warn", 1},       Row{"WARN", 1},
        Row{"warning", 1},     Row{"inf", 2},        Row{"in", 2},
        Row{"info", 2},        Row{"deb", 3},        Row{"Debug", 3},
        Row{"tra", 4},         Row{"trace", 4},      Row{"no", 5},
        Row{"nop", 5},         Row{"", FALLBACK},    Row{"-1", FALLBACK},
        Row{"loud", FALLBACK}, Row{"0x2", FALLBACK}, Row{"4294967296", FALLBACK},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parse_log_level(QString::fromUtf8(row.text), FALLBACK), row.level) << row.text;
    }
}

TEST(logLevel_to_string, is_empty_above_4) {
    Lines words;
    for (unsigned level = 0; level < 7; ++level) {
        words.push_back(logLevel_to_string(level));
        EXPECT_EQ(logLevel_to_qstring(level).toStdString(), words.back());
    }
    EXPECT_EQ(words, (Lines{"ERR", "WRN", "INF", "DEB", "TRA", "", ""}));
}

TEST(trailler, columns_stand_in_their_order_with_one_blank_at_the_end) {
    constexpr unsigned NUMBER = 64;
    constexpr unsigned LEVEL = 128;
    EXPECT_EQ(columns(0), " ");
    EXPECT_EQ(columns(~0x3C0U), " ");
    EXPECT_EQ(columns(NUMBER), "[000042]  ");
    EXPECT_EQ(columns(LEVEL, 1, ERROR), "[ERR]  ");
    EXPECT_EQ(columns(LEVEL, 1, NOP), "[]  ");
    EXPECT_EQ(columns(NUMBER | LEVEL, 7, WARN), "[000007] [WRN]  ");
    EXPECT_EQ(columns(512), str::sprintF("[%04u] ", get_thread_id()));
    EXPECT_EQ(qs_trailler(42, DEBUG, GBits<unsigned>(NUMBER)), QStringLiteral("[000042]  "));
}

TEST(trailler, the_bits_of_the_time_choose_its_form) {
    struct Row {
        const char* name;
        unsigned bits;
        const char* pattern;
    };
    start_log_time();
    const std::array rows = {
        Row{"since start", 256, "\\[00:00,[0-9]{2},[0-9]{3}\\]  "},
        Row{"since start, microseconds", 256 | 32, "\\[00:00,[0-9]{2},[0-9]{6}\\]  "},
        Row{"absolute", 256 | 16, "\\[[0-9]{2}:[0-9]{2}:[0-9]{2},[0-9]{3}\\]  "},
        Row{"absolute, microseconds", 256 | 16 | 32, "\\[[0-9]{2}:[0-9]{2}:[0-9]{2},[0-9]{6}\\]  "},
    };
    for (const Row& row : rows) {
        EXPECT_THAT(columns(row.bits), testing::MatchesRegex(row.pattern)) << row.name;
    }
}

TEST_F(LogState, a_number_wider_than_the_digits_is_never_cut) {
    set_log_digits(3);
    EXPECT_EQ(get_log_digits(), 3U);
    EXPECT_EQ(columns(64, 7), "[007]  ");
    EXPECT_EQ(columns(64, 1234), "[1234]  ");
}

TEST_F(LogState, the_number_shows_as_many_places_as_the_digits_say) {
    set_log_digits(100);
    EXPECT_EQ(get_log_digits(), 100U);
    EXPECT_EQ(columns(64, 7), '[' + std::string(99, '0') + "7]  ");
    set_log_digits(4'000'000'000);
    EXPECT_EQ(get_log_digits(), 4'000'000'000U);
    EXPECT_EQ(columns(64, 7), '[' + std::string(3999, '0') + "7]  ");
}

TEST(get_time_stamp, the_fraction_stands_behind_the_format) {
    using testing::MatchesRegex;
    EXPECT_THAT(get_time_stamp(true, "<%%>", time::FORM_MILLISECONDS),
                MatchesRegex("<%>,[0-9]{3}"));
    EXPECT_THAT(get_time_stamp(true, "<%%>", time::FORM_MICROSECONDS),
                MatchesRegex("<%>,[0-9]{6}"));
    EXPECT_EQ(get_time_stamp(true, "<%%>", static_cast<time::FORM_SECOND>(2)), "<%>");
    EXPECT_THAT(get_time_stamp(true, "%Y", time::FORM_MILLISECONDS),
                MatchesRegex("[0-9]{4},[0-9]{3}"));
    EXPECT_EQ(get_time_stamp(true, std::string(511, 'x'), static_cast<time::FORM_SECOND>(2)),
              std::string(511, 'x'));
    EXPECT_EQ(get_time_stamp(true, std::string(512, 'x'), static_cast<time::FORM_SECOND>(2)), "");
}

TEST(get_time_since_start, counts_from_the_last_start) {
    start_log_time();
    EXPECT_LT(get_time_since_start(), 60'000'000U);
}

TEST(process_ID, is_a_stub_that_gives_zero) {
    EXPECT_EQ(process_ID(), 0U);
}

TEST(get_build_timestamp, is_the_date_and_the_time_of_the_compiler) {
    EXPECT_THAT(
        get_build_timestamp(),
        testing::MatchesRegex("[A-Z][a-z]{2} [ 0-9]{2} [0-9]{4} - [0-9]{2}:[0-9]{2}:[0-9]{2}"));
}

}  // namespace ze::log
