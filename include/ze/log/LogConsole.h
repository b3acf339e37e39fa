// The appender that writes to the standard output. It ignores its own threshold.
#pragma once

#include "ze/log/LogAppender.h"

namespace ze::log {

class LogConsole final : public LogAppender {
public:
    void log_string(unsigned counter, LOG_LEVEL level, const char* text) override;
};

/// The console appender that `configure` enables and adds.
extern LogConsole& consoleLogger;

}  // namespace ze::log
