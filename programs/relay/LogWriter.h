// Carries the lines of the log to a descriptor in a thread of its own, so that a reader who stands
// still, a slow disk or a stopped terminal holds up nobody else. O_NONBLOCK is no way to that: it
// would change the descriptor for every program that shares it, and a file knows no such mode.
#pragma once

#include <chrono>
#include <cstddef>
#include <future>
#include <memory>
#include <string_view>
#include <thread>

namespace relay {

class LogWriter {
public:
    /// Bytes that may wait for the thread: ten thousand clients that leave at the same time fit.
    /// While the descriptor takes nothing, the thread holds as many again.
    static constexpr std::size_t CAPACITY = 4 << 20;
    /// How long the end waits for a descriptor that takes nothing.
    static constexpr std::chrono::milliseconds END_TIME{300};

    /// The descriptor belongs to the caller, and its mode stays as it is.
    explicit LogWriter(int descriptor, std::size_t capacity = CAPACITY);
    /// All lines are written by then, unless that takes longer than END_TIME.
    ~LogWriter();
    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;

    /// Takes a line without its line feed and never waits. Lines that find no room, or that the
    /// descriptor refuses, are counted: "lost lines=7" stands in the log as soon as it can.
    void write(std::string_view line);

private:
    class Queue;
    std::shared_ptr<Queue> queue_;  ///< shared with the thread, which may have to be left behind
    std::future<void> end_;
    std::thread thread_;
};

}  // namespace relay
