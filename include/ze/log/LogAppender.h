// A sink of log lines. It decides itself how a line looks, from its configuration.
#pragma once

#include "ze/log/LogConfig.h"
#include "ze/log/log.h"

namespace ze::log {

class LogAppender {
public:
    virtual ~LogAppender() = default;

    /// Takes one line; `text` may be null. Called from any thread, one call at a time, with the log
    /// locked: it must not log itself.
    virtual void log_string(unsigned counter, LOG_LEVEL level, const char* text) = 0;

    virtual void set_enabled(bool on) { config.logControl.set_bit(ENABLED, on); }
    [[nodiscard]] bool is_enabled() const noexcept { return config.is_enabled(); }

    LogConfig config;
};

}  // namespace ze::log
