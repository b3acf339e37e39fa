#include "ze/log/LogConsole.h"

#include <iostream>

namespace ze::log {

// Never destroyed: the last objects of a program still log while they go.
LogConsole& consoleLogger = *new LogConsole;

void LogConsole::log_string(unsigned counter, LOG_LEVEL level, const char* text) {
    std::string line = trailler(counter, level, config.logControl);
    line += text != nullptr ? text : "nullptr";
    line += '\n';
    std::cout << line << std::flush;
}

}  // namespace ze::log
