// The calls that write to the log: pp_error, pp_warn, pp_info, pp, pp_trace, one for each level.
#pragma once

#include "ze/log/log.h"
#include "ze/tools/format.h"

#include <QString>

#include <string>

namespace ze {

/// Logs at its level; a line that the level drops is not formatted. A plain text is not a format:
/// its `$` stay.
template <log::LOG_LEVEL LEVEL>
class LogCall {
public:
    /// An empty line.
    void operator()() const { (*this)(""); }

    void operator()(const char* text) const {
        if (log::is_on(LEVEL)) {
            log::log_string(LEVEL, text);
        }
    }
    void operator()(const std::string& text) const { (*this)(text.c_str()); }
    void operator()(const QString& text) const {
        if (log::is_on(LEVEL)) {
            log::log_string(LEVEL, str::to_utf8(text));
        }
    }

    /// The text behind `indent` blanks.
    void operator()(unsigned indent, const char* text) const {
        if (log::is_on(LEVEL)) {
            log::log_string(LEVEL, str::xprintF(indent, "$", text));
        }
    }

    /// The format with its `$` replaced by the value. Several values: pp_format.
    template <typename T>
    void operator()(const char* format, const T& value) const {
        if (log::is_on(LEVEL)) {
            log::log_string(LEVEL, str::xprintF(0, format, value));
        }
    }
};

inline constexpr LogCall<log::ERROR> pp_error{};
inline constexpr LogCall<log::WARN> pp_warn{};
inline constexpr LogCall<log::INFO> pp_info{};
inline constexpr LogCall<log::DEBUG> pp{};
inline constexpr LogCall<log::TRACE> pp_trace{};

/// Logs a format with any number of values, behind `indent` blanks.
template <typename... Args>
void pp_format(log::LOG_LEVEL level, unsigned indent, const char* format, const Args&... args) {
    if (log::is_on(level)) {
        log::log_string(level, str::xprintF(indent, format, args...));
    }
}

/// Numbered marks to find a place in the log again: "---- [ 1 ] ------", "=== [ 1 ] ======".
void pp_line();
void pp_info_line();
/// An empty line at level DEBUG.
void pp_empty();

}  // namespace ze
