// The log without an appender: texts are built, so that the formatter sees the input too, and go
// nowhere.
#pragma once

#include "ze/log/LogConsole.h"
#include "ze/log/log.h"

namespace fuzz {

inline void quiet_log() {
    ze::log::configure();
    ze::log::remove_log_appender(&ze::log::consoleLogger);
    ze::log::set_log_level(ze::log::TRACE);
}

}  // namespace fuzz
