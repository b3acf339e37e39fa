#include "LogWriter.h"

#include "Log.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>

#include <poll.h>
#include <unistd.h>

namespace relay {

/// What waits for the thread.
class LogWriter::Queue {
public:
    explicit Queue(std::size_t capacity) : capacity_(capacity) {}

    void push(std::string_view line) {
        const std::lock_guard lock(mutex_);
        // After a loss nothing follows until all is taken: a shorter line that still fits would
        // hide where the gap is.
        if (lost_ > 0 || lines_.size() + line.size() >= capacity_) {
            ++lost_;
        } else {
            lines_.append(line).append("\n");
        }
        news_.notify_one();
    }

    void end() {
        const std::lock_guard lock(mutex_);
        flagEnd_ = true;
        news_.notify_one();
    }

    /// Waits for lines and hands them over, with the number of those lost behind them. False at the
    /// end, when there are no more.
    bool take(std::string& lines, std::uint64_t& lost) {
        std::unique_lock lock(mutex_);
        news_.wait(lock, [this] { return flagEnd_ || lost_ > 0 || !lines_.empty(); });
        lines.clear();
        lines.swap(lines_);
        lost = std::exchange(lost_, 0);
        return lost > 0 || !lines.empty();
    }

private:
    const std::size_t capacity_;
    std::mutex mutex_;
    std::condition_variable news_;
    std::string lines_;
    std::uint64_t lost_ = 0;
    bool flagEnd_ = false;
};

namespace {

/// A descriptor that takes whole lines or is told so.
class LineOutput {
public:
    explicit LineOutput(int descriptor) noexcept : descriptor_(descriptor) {}

    /// How many of the lines could not be written as a whole.
    std::uint64_t write(std::string_view lines) {
        if (flagInsideLine_ && write_some("\n") == 1) {
            flagInsideLine_ = false;
            last_ = '\n';
        }
        while (!flagInsideLine_ && !lines.empty()) {
            const std::size_t count = write_some(lines);
            if (count == 0) {
                break;
            }
            last_ = lines[count - 1];
            lines.remove_prefix(count);
        }
        flagInsideLine_ = last_ != '\n';
        return static_cast<std::uint64_t>(std::count(lines.begin(), lines.end(), '\n'));
    }

private:
    /// How much was written, 0 if nothing can be.
    std::size_t write_some(std::string_view text) const noexcept {
        for (;;) {
            const ssize_t count = ::write(descriptor_, text.data(), text.size());
            if (count >= 0) {
                return static_cast<std::size_t>(count);
            }
            if (errno == EAGAIN) {  // others may have chosen that mode
                pollfd room{descriptor_, POLLOUT, 0};
                poll(&room, 1, -1);
            } else if (errno != EINTR) {
                return 0;
            }
        }
    }

    const int descriptor_;
    char last_ = '\n';  ///< of what was written
    bool flagInsideLine_ = false;
};

std::string loss_line(std::uint64_t lines) {
    std::string text;
    const Log log([&text](std::string_view line) { text.append(line).append("\n"); });
    log.event("lost", {{"lines", lines}});
    return text;
}

}  // namespace

LogWriter::LogWriter(int descriptor, std::size_t capacity)
    : queue_(std::make_shared<Queue>(capacity)) {
    std::promise<void> end;
    end_ = end.get_future();
    thread_ = std::thread([queue = queue_, end = std::move(end), descriptor]() mutable {
        LineOutput output(descriptor);
        std::string lines;
        std::uint64_t lost = 0;
        for (std::uint64_t missing = 0; queue->take(lines, lost);) {
            missing += output.write(lines) + lost;
            if (missing > 0 && output.write(loss_line(missing)) == 0) {
                missing = 0;
            }
        }
        end.set_value();
    });
}

LogWriter::~LogWriter() {
    queue_->end();
    if (end_.wait_for(END_TIME) == std::future_status::ready) {
        thread_.join();
    } else {
        thread_.detach();
    }
}

void LogWriter::write(std::string_view line) {
    queue_->push(line);
}

}  // namespace relay
