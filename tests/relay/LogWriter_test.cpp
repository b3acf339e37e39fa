#include "LogWriter.h"

#include <array>
#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

namespace {

using relay::LogWriter;

const std::string LOST = " lost lines=";
constexpr int LIMIT_MILLIS = 20000;  ///< until something that is waited for counts as lost

/// A place to write to and its other end.
struct Ends {
    int in;   ///< the log goes here
    int out;  ///< and is read here
};

Ends make_pipe() {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    fcntl(ends[1], F_SETPIPE_SZ, 4096);
    return {ends[1], ends[0]};
}

Ends make_socket() {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    const int size = 4096;
    setsockopt(ends[0], SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
    return {ends[0], ends[1]};
}

Ends make_terminal() {
    Ends ends{};
    termios raw{};
    cfmakeraw(&raw);
    EXPECT_EQ(openpty(&ends.out, &ends.in, nullptr, &raw, nullptr), 0);
    return ends;
}

std::string read_line(int descriptor) {
    std::string line;
    for (char letter = 0;; line.push_back(letter)) {
        pollfd news{descriptor, POLLIN, 0};
        if (poll(&news, 1, LIMIT_MILLIS) <= 0 || read(descriptor, &letter, 1) != 1) {
            ADD_FAILURE() << "no line came";
            return "no line";
        }
        if (letter == '\n') {
            return line;
        }
    }
}

std::vector<std::string> read_lines(int descriptor, std::size_t count) {
    std::vector<std::string> lines;
    while (lines.size() < count && (lines.empty() || lines.back() != "no line")) {
        lines.push_back(read_line(descriptor));
    }
    return lines;
}

std::vector<std::string> lines_of(const std::string& path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

template <class Number>
std::string numbered(Number number) {
    return "line " + std::to_string(number) + " " + std::string(90, '.');
}

struct Kind {
    const char* name;
    Ends (*make)();
};

void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

class LogWriterTo : public ::testing::TestWithParam<Kind> {
protected:
    LogWriterTo() { std::signal(SIGPIPE, SIG_IGN); }
    ~LogWriterTo() override {
        close(ends.out);  // first: a writer that was left behind ends by it
        close(ends.in);
    }

    Ends ends = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(, LogWriterTo,
                         ::testing::Values(Kind{"pipe", make_pipe}, Kind{"socket", make_socket},
                                           Kind{"terminal", make_terminal}),
                         [](const auto& kind) { return kind.param.name; });

TEST_P(LogWriterTo, lines_arrive_whole_and_in_their_order) {
    LogWriter writer(ends.in);
    writer.write("first");
    writer.write("");
    writer.write("last");
    EXPECT_EQ(read_lines(ends.out, 3), (std::vector<std::string>{"first", "", "last"}));
}

TEST_P(LogWriterTo, a_reader_who_stands_still_holds_nobody_up_and_reads_later_what_was_lost) {
    constexpr int COUNT = 20000;  // about 2 MB, more than any of these takes
    LogWriter writer(ends.in, 100000);
    for (int number = 0; number < COUNT; ++number) {
        writer.write(numbered(number));
    }
    int next = 0;
    while (next < COUNT && !HasFailure()) {
        const std::string line = read_line(ends.out);
        const std::size_t mark = line.find(LOST);
        if (mark == line.npos) {
            EXPECT_EQ(line, numbered(next));
            ++next;
        } else {
            next += std::stoi(line.substr(mark + LOST.size()));
        }
    }
    EXPECT_EQ(next, COUNT);
    writer.write("after");
    EXPECT_EQ(read_line(ends.out), "after");
}

TEST_P(LogWriterTo, the_end_does_not_wait_for_a_reader_who_stands_still) {
    // A descriptor of its own: the thread that is left behind may still write to it.
    auto writer = std::make_unique<LogWriter>(dup(ends.in));
    for (int number = 0; number < 10000; ++number) {
        writer->write(numbered(number));
    }
    const auto begin = std::chrono::steady_clock::now();
    writer.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

TEST_P(LogWriterTo, all_that_was_taken_arrives_at_the_end) {
    constexpr std::size_t COUNT = 2000;
    auto lines = std::async(std::launch::async, read_lines, ends.out, COUNT);
    {
        LogWriter writer(ends.in);
        for (std::size_t number = 0; number < COUNT; ++number) {
            writer.write(numbered(number));
        }
    }
    EXPECT_EQ(lines.get().back(), numbered(COUNT - 1));
}

TEST_P(LogWriterTo, the_mode_of_the_descriptor_stays_as_it_is) {
    for (const int flag : {0, O_NONBLOCK}) {
        const int mode = (fcntl(ends.in, F_GETFL) & ~O_NONBLOCK) | flag;
        ASSERT_EQ(fcntl(ends.in, F_SETFL, mode), 0);
        LogWriter writer(ends.in);
        for (int number = 0; number < 1000; ++number) {
            writer.write(numbered(number));
        }
        EXPECT_EQ(fcntl(ends.in, F_GETFL), mode);
        EXPECT_EQ(read_lines(ends.out, 1000).back(), numbered(999)) << flag;
        EXPECT_EQ(fcntl(ends.in, F_GETFL), mode);
    }
}

TEST_P(LogWriterTo, a_reader_who_is_gone_ends_nothing) {
    const int other = dup(ends.in);
    close(ends.out);
    ends.out = -1;
    {
        LogWriter writer(other);
        for (int number = 0; number < 1000; ++number) {
            writer.write(numbered(number));
        }
    }
    EXPECT_EQ(close(other), 0);
}

/// No file of this process grows beyond a number of bytes: what a full disk is like.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        refusals_ = 0;
        std::signal(SIGXFSZ, [](int) { ++refusals_; });
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limit{bytes, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, SIG_DFL);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

    /// Waits until so many calls have found no room for a single byte.
    static void wait_for_refusals(int count) {
        for (int wait = 0; refusals_ < count && wait < LIMIT_MILLIS; ++wait) {
            poll(nullptr, 0, 1);
        }
        EXPECT_EQ(refusals_, count);
    }

private:
    static inline std::atomic<int> refusals_ = 0;
    rlimit former_{};
};

std::string temporary_file() {
    return std::filesystem::temp_directory_path() / ("log_writer." + std::to_string(getpid()));
}

TEST(LogWriterToFile, all_lines_stand_there_when_the_writer_has_ended) {
    const std::string path = temporary_file();
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR);
    {
        LogWriter writer(file);
        for (int number = 0; number < 1000; ++number) {
            writer.write(numbered(number));
        }
    }
    EXPECT_EQ(lines_of(path).size(), 1000U);
    close(file);
    std::filesystem::remove(path);
}

TEST(LogWriterToFile, what_a_full_disk_refused_is_counted_when_there_is_room_again) {
    constexpr int COUNT = 100;
    const std::string path = temporary_file();
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR);
    {
        LogWriter writer(file);
        {
            const FullDisk full(1000);
            for (int number = 0; number < COUNT; ++number) {
                writer.write(numbered(number));
            }
            for (int wait = 0; std::filesystem::file_size(path) < 1000 && wait < LIMIT_MILLIS;
                 ++wait) {
                poll(nullptr, 0, 1);
            }
        }
        writer.write("after");
    }
    close(file);
    int whole = 0;
    int lost = 0;
    for (const std::string& line : lines_of(path)) {
        const std::size_t mark = line.find(LOST);
        lost += mark == line.npos ? 0 : std::stoi(line.substr(mark + LOST.size()));
        whole += line == numbered(whole) ? 1 : 0;
    }
    EXPECT_EQ(whole + lost, COUNT);
    EXPECT_GE(whole, 9);
    std::filesystem::remove(path);
}

TEST(LogWriterToFile, a_disk_with_room_for_one_byte_gets_no_blank_line) {
    const std::string path = temporary_file();
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, S_IRUSR);
    {
        LogWriter writer(file);
        for (const rlim_t room : {50, 51}) {  // a part of the first line; its line feed
            const FullDisk full(room);
            writer.write(numbered(0));
            FullDisk::wait_for_refusals(2);  // the line, and that it is lost
        }
        writer.write("after");
    }
    close(file);
    const std::vector<std::string> lines = lines_of(path);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], numbered(0).substr(0, 50));
    EXPECT_EQ(lines[1], "after");
    EXPECT_NE(lines[2].find(LOST + "2"), std::string::npos);
    std::filesystem::remove(path);
}

TEST(LogWriter, a_line_longer_than_all_the_room_is_lost_alone) {
    const Ends ends = make_pipe();
    LogWriter writer(ends.in, 50);
    writer.write(numbered(0));
    EXPECT_NE(read_line(ends.out).find(LOST + "1"), std::string::npos);
    writer.write("after");
    EXPECT_EQ(read_line(ends.out), "after");
    close(ends.in);
    close(ends.out);
}

}  // namespace
