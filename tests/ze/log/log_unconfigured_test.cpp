// What the log does before anybody configures it; no case of this program does.

#include "ze/log/pp.h"
#include "ze/log/thread_id.h"

#include <gtest/gtest.h>

namespace ze {
namespace {

struct Output {
    std::string out;
    std::string err;

    bool operator==(const Output&) const = default;
    friend void PrintTo(const Output& output, std::ostream* stream) {
        *stream << "out <" << output.out << "> err <" << output.err << '>';
    }
};

template <typename F>
Output output_of(F write) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    write();
    return {testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

}  // namespace

TEST(LogUnconfigured, errors_and_warnings_go_to_the_error_stream_the_rest_to_the_output) {
    ASSERT_FALSE(log::is_configured());
    const Output output = output_of([] {
        pp_error("error");
        pp_warn("warning");
        pp_info("info");
        pp("debug");
        pp_trace("trace");
    });
    EXPECT_EQ(output, (Output{"info\ndebug\ntrace\n", "error\nwarning\n"}));
}

TEST(LogUnconfigured, no_level_filters) {
    log::set_log_level(log::ERROR);
    EXPECT_EQ(output_of([] { pp("x"); }), (Output{"x\n", ""}));
    log::set_log_level(log::DEBUG);
}

TEST(LogUnconfigured, a_null_text_has_a_name) {
    const char* const none = nullptr;
    EXPECT_EQ(output_of([none] { pp(none); }), (Output{"nullptr\n", ""}));
}

TEST(LogUnconfigured, no_thread_is_the_main_thread) {
    EXPECT_FALSE(is_main_thread());
}

}  // namespace ze
