// The calls that write to the log: pp_error, pp_warn, pp_info, pp, pp_trace, one for each level.
#pragma once

#include "ze/log/log.h"
#include "ze/tools/format.h"

#include <QString>

#include <string>

namespace ze {

/// Logs a format with any number of values, behind `indent` blanks. Here and below, a line that its
/// level drops is not formatted.
template <typename... Args>
void pp_format(log::LOG_LEVEL level, unsigned indent, const char* format, const Args&... args) {
    if (log::is_on(level)) {
        log::log_string(level, str::xprintF(indent, format, args...));
    }
}

/// Logs a text as it is: its `$` stay.
inline void pp_text(log::LOG_LEVEL level, const char* text) {
    if (log::is_on(level)) {
        log::log_string(level, text);
    }
}

// The calls of one level: an empty line; a text; a text behind `indent` blanks; a format with its
// `$` replaced by the value. They are functions and no objects, so that `pp<long long>` can name
// the type of the value.
#define ZE_LOG_CALLS(name, level)                         \
    inline void name() {                                  \
        pp_text(level, "");                               \
    }                                                     \
    inline void name(const char* text) {                  \
        pp_text(level, text);                             \
    }                                                     \
    inline void name(const std::string& text) {           \
        pp_text(level, text.c_str());                     \
    }                                                     \
    inline void name(const QString& text) {               \
        pp_format(level, 0, "$", text);                   \
    }                                                     \
    inline void name(unsigned indent, const char* text) { \
        pp_format(level, indent, "$", text);              \
    }                                                     \
    template <typename T>                                 \
    void name(const char* format, const T& value) {       \
        pp_format(level, 0, format, value);               \
    }

ZE_LOG_CALLS(pp_error, log::ERROR)
ZE_LOG_CALLS(pp_warn, log::WARN)
ZE_LOG_CALLS(pp_info, log::INFO)
ZE_LOG_CALLS(pp, log::DEBUG)
ZE_LOG_CALLS(pp_trace, log::TRACE)

#undef ZE_LOG_CALLS

/// Numbered marks to find a place in the log again: "---- [ 1 ] ------", "=== [ 1 ] ======".
void pp_line();
void pp_info_line();
/// An empty line at level DEBUG.
void pp_empty();

}  // namespace ze
