#include "ze/log/LogConfig.h"

#include "ze/log/log.h"
#include "ze/tools/format.h"

#include <iostream>

namespace ze::log {
namespace {

constexpr unsigned ALL_COLUMNS = 0x3C0;
constexpr unsigned STANDARD_CONTROL = 0x3DE;
constexpr unsigned MOBILE_CONTROL = 0x100040;

}  // namespace

void LogConfig::ini() {
    logControl.set_value(STANDARD_CONTROL);
#ifdef Q_OS_ANDROID
    fontSize = 13;
#endif
}

void LogConfig::ini_mobile() {
    logControl.set_value(MOBILE_CONTROL);
}

std::string LogConfig::to_string() const {
    const char* const format =
        is_enabled() ? "LogConfig, $, logControl:$, digits:$, autoScrollHorz:$"
                     : "LogConfig, DISABLED,  $, logControl:$, digits:$, autoScrollHorz:$";
    return str::xprintF(0, format, logLevel_to_string(logLevel), logControl.value(), digits,
                        autoScrollHorz);
}

void LogConfig::show() const {
    std::cout << "LogConfig:\n"
              << "   logControl:" << !logControl.is_zero() << '\n'
              << "   digits:" << digits << '\n'
              << "   logLevel:" << logLevel << '\n'
              << "   fontSize:" << fontSize << '\n'
              << "   autoScrollHorz:" << autoScrollHorz << '\n'
              << std::flush;
}

bool has_trailler_bits(const GBits<unsigned>& bits) noexcept {
    return bits.is_any(ALL_COLUMNS);
}

}  // namespace ze::log
