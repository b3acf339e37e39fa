#include "ze/log/pp.h"

#include "support/LogCapture.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace ze {
namespace {

using Lines = std::vector<std::string>;

struct Counted {
    [[nodiscard]] std::string to_string() const {
        ++conversions;
        return "counted";
    }
    mutable int conversions = 0;
};

/// The calls of one level, as one object.
#define CALLS_OF(name)        \
    [](const auto&... args) { \
        name(args...);        \
    }

void log_every_form(const auto& call) {
    call();
    call("a $ stays");
    call(std::string("string"));
    call(QStringLiteral("Größe"));
    call(2, "indent $");
    call("value:$", 7);
    call("value:$", QStringLiteral("text"));
}

Lines every_form(const std::string& level) {
    return {level + " ",
            level + " a $ stays",
            level + " string",
            level +
                " Gr\xC3\xB6\xC3\x9F"
                "e",
            level + "   indent $",
            level + " value:7",
            level + " value:text"};
}

}  // namespace

TEST(pp, every_form_logs_at_the_level_of_its_call) {
    test::LogCapture log(log::TRACE);
    log_every_form(CALLS_OF(pp_warn));
    EXPECT_EQ(log.lines_with_level(), every_form("WRN"));
    log.clear();
    log_every_form(CALLS_OF(pp_info));
    EXPECT_EQ(log.lines_with_level(), every_form("INF"));
    log.clear();
    log_every_form(CALLS_OF(pp));
    EXPECT_EQ(log.lines_with_level(), every_form("DEB"));
    log.clear();
    log_every_form(CALLS_OF(pp_trace));
    EXPECT_EQ(log.lines_with_level(), every_form("TRA"));
    log.clear();
    log_every_form(CALLS_OF(pp_error));
    EXPECT_EQ(log.lines_with_level(), every_form("ERR"));
    for (const std::string& line : log.lines()) {
        log.expect_error(line);
    }
}

TEST(pp, the_type_of_the_value_can_be_named) {
    test::LogCapture log;
    pp<long long>("$", 7);
    pp_info<int>("$", 'a');
    pp_error<unsigned short>("$", 65535);
    log.expect_error("65535");
    EXPECT_EQ(log.lines_with_level(), (Lines{"DEB 7", "INF 97", "ERR 65535"}));
}

TEST(pp_format, takes_any_number_of_values_behind_an_indent) {
    test::LogCapture log;
    pp_format(log::WARN, 0, "$ of $: $", 1, 2U, QStringLiteral("x"));
    pp_format(log::DEBUG, 3, "none $");
    pp_format(log::TRACE, 0, "dropped $", 1);
    EXPECT_EQ(log.lines_with_level(), (Lines{"WRN 1 of 2: x", "DEB    none $"}));
}

TEST(pp, a_dropped_line_is_not_formatted) {
    const test::LogCapture log(log::INFO);
    const Counted value;
    pp("$", value);
    pp_format(log::TRACE, 0, "$", value);
    EXPECT_EQ(value.conversions, 0);
}

TEST(pp, marks_count_on_whether_the_line_passes_or_not) {
    test::LogCapture log(log::INFO);
    pp_line();
    pp_info_line();
    log::set_log_level(log::DEBUG);
    pp_line();
    pp_info_line();
    pp_empty();
    EXPECT_EQ(log.lines_with_level(), (Lines{"INF === [ 1 ] ======", "DEB ---- [ 2 ] ------",
                                             "INF === [ 2 ] ======", "DEB "}));
}

TEST(LogCapture, an_error_line_that_nobody_announced_fails_the_test) {
    EXPECT_NONFATAL_FAILURE(
        {
            const test::LogCapture log;
            pp_error("unannounced");
        },
        "unannounced");
}

TEST(LogCapture, an_announced_error_that_never_came_fails_the_test) {
    EXPECT_NONFATAL_FAILURE(
        {
            test::LogCapture log;
            log.expect_error("never came");
        },
        "never came");
}

TEST(LogCapture, take_forgets_the_lines_and_keeps_the_errors_to_announce) {
    test::LogCapture log;
    log.ignore("noise");
    log.expect_error("broken");
    pp_error("broken");
    pp("noise of others");
    EXPECT_EQ(log.take(), Lines{"broken"});
    EXPECT_EQ(log.lines(), Lines{});
}

TEST(LogCapture, puts_the_level_back) {
    const test::LogCapture outer(log::WARN);
    {
        const test::LogCapture inner(log::TRACE);
        EXPECT_EQ(log::get_log_level(), static_cast<unsigned>(log::TRACE));
    }
    EXPECT_EQ(log::get_log_level(), static_cast<unsigned>(log::WARN));
}

}  // namespace ze
