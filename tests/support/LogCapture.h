// Keeps what is logged while it lives, so that a test can compare the lines. It configures the log
// where nobody has, and puts the level back at its end. An error line that the test did not
// announce fails the test, and so does an announced one that never came.
#pragma once

#include "ze/log/LogAppender.h"
#include "ze/log/LogConsole.h"
#include "ze/log/log.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace test {

class LogCapture final : public ze::log::LogAppender {
public:
    struct Line {
        unsigned number = 0;
        ze::log::LOG_LEVEL level = ze::log::DEBUG;
        std::string text;
    };

    /// Captures lines up to this level; ze::log::TRACE for all of them.
    explicit LogCapture(ze::log::LOG_LEVEL level = ze::log::DEBUG) {
        if (!ze::log::is_configured()) {
            ze::log::configure();
            ze::log::remove_log_appender(&ze::log::consoleLogger);
        }
        levelBefore = ze::log::get_log_level();
        ze::log::set_log_level(static_cast<int>(level));
        set_enabled(true);
        ze::log::add_log_appender(this);
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture() override {
        ze::log::remove_log_appender(this);
        ze::log::set_log_level(static_cast<int>(levelBefore));
        EXPECT_EQ(sorted(errors), sorted(announced))
            << "error lines that came, error lines announced";
    }

    /// Announces one error line with exactly this text; before or after it comes.
    void expect_error(std::string text) { announced.push_back(std::move(text)); }

    /// Drops every line, now and later, that starts so: for lines that are not the matter of the
    /// test, such as "Listener::~Listener@".
    void ignore(std::string prefix) {
        const std::lock_guard lock(mutex);
        ignored.push_back(std::move(prefix));
        std::erase_if(kept, [this](const Line& line) { return is_ignored(line.text); });
    }

    /// The texts so far.
    [[nodiscard]] std::vector<std::string> lines() const {
        std::vector<std::string> texts;
        for (const Line& line : records()) {
            texts.push_back(line.text);
        }
        return texts;
    }

    /// The texts so far, each behind the word of its level: "WRN text".
    [[nodiscard]] std::vector<std::string> lines_with_level() const {
        std::vector<std::string> texts;
        for (const Line& line : records()) {
            texts.push_back(ze::log::logLevel_to_string(line.level) + ' ' + line.text);
        }
        return texts;
    }

    [[nodiscard]] std::vector<Line> records() const {
        const std::lock_guard lock(mutex);
        return kept;
    }

    /// The texts so far, which are then forgotten. Error lines still have to be announced.
    std::vector<std::string> take() {
        std::vector<std::string> texts = lines();
        clear();
        return texts;
    }

    void clear() {
        const std::lock_guard lock(mutex);
        kept.clear();
    }

    void log_string(unsigned counter, ze::log::LOG_LEVEL level, const char* text) override {
        const std::lock_guard lock(mutex);
        const std::string line = text != nullptr ? text : "nullptr";
        if (level == ze::log::ERROR) {
            errors.push_back(line);
        }
        if (!is_ignored(line)) {
            kept.push_back({counter, level, line});
        }
    }

private:
    [[nodiscard]] bool is_ignored(const std::string& text) const {
        return std::any_of(ignored.begin(), ignored.end(),
                           [&text](const std::string& prefix) { return text.starts_with(prefix); });
    }

    static std::vector<std::string> sorted(std::vector<std::string> texts) {
        std::sort(texts.begin(), texts.end());
        return texts;
    }

    mutable std::mutex mutex;  // a line may come from another thread
    std::vector<Line> kept;
    std::vector<std::string> errors;
    std::vector<std::string> announced;
    std::vector<std::string> ignored;
    unsigned levelBefore = ze::log::DEBUG;
};

}  // namespace test
