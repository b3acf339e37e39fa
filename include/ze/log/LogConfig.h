// How an appender shows its lines. The structure is stored as raw bytes: its layout is part of the
// settings.
#pragma once

#include "ze/tools/GBits.h"

#include <cstdint>
#include <string>

namespace ze::log {

/// Bits of LogConfig::logControl, by number. Bits 1 to 3 mean nothing; they stand in the masks
/// below so that stored values compare equal.
enum LOG_CONTROL : unsigned {
    ABSOLUTE_TIME = 4,  ///< the time of day instead of the time since the start of the log
    MICRO_SECONDS = 5,  ///< microseconds instead of milliseconds
    COLUMN_NUMBER = 6,
    COLUMN_LEVEL = 7,
    COLUMN_TIME = 8,
    COLUMN_THREAD = 9,
    ENABLED = 20,
};

struct LogConfig {
    std::uint32_t digits = 6;    ///< width of the line number
    std::uint32_t logLevel = 3;  ///< the appender's own threshold
    GBits<unsigned> logControl;
    std::uint32_t fontSize = 10;  ///< of the log view, in points
    bool autoScrollHorz = false;  ///< scroll left on every new line

    /// All columns, the time of day in milliseconds; the appender stays disabled.
    void ini();
    /// Enabled, with the number column alone.
    void ini_mobile();

    [[nodiscard]] bool is_enabled() const noexcept { return logControl.is_bit(ENABLED); }
    [[nodiscard]] std::string to_string() const;

    /// Writes the values to the standard output.
    void show() const;

    void write_to_settings() const {}
    void read_from_settings() {}
};

static_assert(sizeof(LogConfig) == 20);

/// True if any column is asked for.
[[nodiscard]] bool has_trailler_bits(const GBits<unsigned>& bits) noexcept;

/// A scope that could change the configuration for a while; it has no effect.
class LogConfigTemp {
public:
    explicit LogConfigTemp(const LogConfig&) {}
    LogConfigTemp(unsigned, bool) {}
};

}  // namespace ze::log
