// The log from many threads at once; the thread sanitizer runs this program.

#include "ze/log/pp.h"

#include "support/LogCapture.h"

#include <algorithm>
#include <atomic>
#include <thread>

#include <gtest/gtest.h>

namespace ze::log {
namespace {

constexpr int THREADS = 8;
constexpr int LINES_EACH = 500;

void run_in_threads(const std::function<void(int)>& work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < THREADS; ++i) {
        threads.emplace_back(work, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

std::string line_of(int thread, int number) {
    return str::xprintF(0, "thread $ writes line $, whole", thread, number);
}

void write_lines(int thread) {
    for (int i = 0; i < LINES_EACH; ++i) {
        pp(line_of(thread, i));
    }
}

std::vector<std::string> all_lines() {
    std::vector<std::string> lines;
    for (int thread = 0; thread < THREADS; ++thread) {
        for (int i = 0; i < LINES_EACH; ++i) {
            lines.push_back(line_of(thread, i));
        }
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

}  // namespace

TEST(LogThreads, lines_arrive_whole_each_of_them_once) {
    const test::LogCapture log;
    run_in_threads(write_lines);
    std::vector<std::string> lines = log.lines();
    std::sort(lines.begin(), lines.end());
    EXPECT_EQ(lines, all_lines());
}

TEST(LogThreads, numbers_have_no_gap_and_one_order_in_every_appender) {
    const test::LogCapture first;
    const test::LogCapture second;
    run_in_threads(write_lines);
    const auto records = first.records();
    const auto others = second.records();
    ASSERT_EQ(records.size(), static_cast<std::size_t>(THREADS * LINES_EACH));
    ASSERT_EQ(others.size(), records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        ASSERT_EQ(records[i].number, records[0].number + i);
        ASSERT_EQ(others[i].number, records[i].number);
        ASSERT_EQ(others[i].text, records[i].text);
    }
}

TEST(LogThreads, every_call_may_run_beside_the_others) {
    const test::LogCapture log(TRACE);
    std::atomic<unsigned> shown = 0;
    run_in_threads([&shown](int thread) {
        for (int i = 0; i < LINES_EACH / 10; ++i) {
            const test::LogCapture own(TRACE);
            pp_trace("thread $", thread);
            pp_line();
            set_log_digits(static_cast<unsigned>(4 + thread));
            set_log_level(TRACE);
            shown += trailler(1, DEBUG, GBits<unsigned>(0x3FE)).empty() ? 0 : 1;
        }
    });
    set_log_digits(6);
    EXPECT_EQ(shown, static_cast<unsigned>(THREADS * (LINES_EACH / 10)));
    EXPECT_EQ(log.lines().size(), static_cast<std::size_t>(2 * THREADS * (LINES_EACH / 10)));
}

}  // namespace ze::log
