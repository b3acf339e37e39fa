// The ways out of the program, each in a child process.

#include "ze/log/exits.h"

#include "ze/log/LogAppender.h"

#include <QString>

#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ze {
namespace {

using Clock = std::chrono::steady_clock;

struct Ending {
    std::string before_sleep;
    std::string after_sleep;
    int exit_code = -1;
    double seconds = 0.0;
};

constexpr double HALF_OF_THE_SLEEP = 2.5;

void run_child(const std::array<int, 2>& pipe_ends, const std::function<void()>& leave) {
    dup2(pipe_ends[1], STDOUT_FILENO);
    close(pipe_ends[0]);
    close(pipe_ends[1]);
    leave();
    _exit(99);  // it came back
}

// Runs the call in a child and reads its output up to the end of the child.
Ending ending_of(const std::function<void()>& leave) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    std::fflush(nullptr);
    const auto start = Clock::now();
    const auto seconds = [start] {
        return std::chrono::duration<double>(Clock::now() - start).count();
    };
    const pid_t child = fork();
    if (child == 0) {
        run_child(ends, leave);
    }
    close(ends[1]);
    Ending ending;
    std::array<char, 256> buffer{};
    for (ssize_t count = 0; (count = read(ends[0], buffer.data(), buffer.size())) > 0;) {
        std::string& text =
            seconds() < HALF_OF_THE_SLEEP ? ending.before_sleep : ending.after_sleep;
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    ending.seconds = seconds();
    ending.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ending;
}

void expect_ending(const Ending& ending, const std::string& before, const std::string& after) {
    EXPECT_EQ(ending.before_sleep, before);
    EXPECT_EQ(ending.after_sleep, after);
    EXPECT_EQ(ending.exit_code, 1);
    EXPECT_GE(ending.seconds, 5.0);
    EXPECT_LT(ending.seconds, 15.0);
}

}  // namespace

TEST(exits, exit_fatal_prints_its_text_waits_and_says_goodbye) {
    expect_ending(ending_of([] { exit_fatal(QStringLiteral("Größe is wrong")); }),
                  "Gr\xC3\xB6\xC3\x9F"
                  "e is wrong\nprogram will exit in 5 sec\n",
                  "program exit !\n");
}

TEST(exits, nullPointerHandling_names_the_place_and_ends_without_a_closing_line) {
    expect_ending(ending_of([] {
                      nullPointerHandling("src/ze/qt/GPanel", 42, QStringLiteral("parent == NULL"));
                  }),
                  "nullptr:parent == NULL\nsrc/ze/qt/GPanel\nLINE:42\nprogram will exit in 5 sec\n",
                  "");
}

TEST(exits, boolExpressionHandling_names_the_place_and_says_goodbye) {
    expect_ending(
        ending_of([] { boolExpressionHandling("src/ze/qt/GPanel", 7); }),
        "bool expression failure:\nsrc/ze/qt/GPanel\nLINE:7\nprogram will exit in 5 sec\n",
        "program exit !\n");
}

TEST(exits, a_null_appender_is_a_fault_of_the_program) {
    for (const auto call : {log::add_log_appender, log::remove_log_appender}) {
        const Ending ending = ending_of([call] { call(nullptr); });
        EXPECT_EQ(ending.before_sleep.substr(0, ending.before_sleep.find("LINE:")),
                  "nullptr:appender == NULL\nsrc/ze/log/log\n");
        EXPECT_EQ(ending.exit_code, 1);
    }
}

}  // namespace ze
