// The one log of the process: levels, appenders, and the prefix of a line. What writes to it is in
// pp.h. Any thread may log; each line gets a number, and every appender gets the lines in the order
// of the numbers.
#pragma once

#include "ze/tools/GBits.h"
#include "ze/tools/duration.h"

#include <atomic>
#include <mutex>
#include <string>

class QString;

namespace ze {

/// Guards the appenders and the line number. Held while an appender runs; not recursive.
extern std::mutex mutexWorker;

/// Date and time of the build, "date - time" as the compiler writes them.
[[nodiscard]] std::string get_build_timestamp();

}  // namespace ze

namespace ze::log {

class LogAppender;

enum LOG_LEVEL : unsigned {
    ERROR = 0,
    WARN = 1,
    INFO = 2,
    DEBUG = 3,
    TRACE = 4,
    NOP = 5,  ///< what "no" and "nop" read as; no line has it and no threshold takes it
};

/// Lines of this level and above are dropped. One word, so that a line that is dropped costs one
/// comparison.
extern std::atomic<unsigned> firstDroppedLevel;

/// True if a line of this level would be written. Before `configure` every line is.
[[nodiscard]] inline bool is_on(LOG_LEVEL level) noexcept {
    return level < firstDroppedLevel.load(std::memory_order_relaxed);
}

/// Hands the text to every enabled appender. Before `configure` it goes straight to the standard
/// error (ERROR, WARN) or the standard output. A null text shows as "nullptr".
void log_string(LOG_LEVEL level, const char* text);
void log_string(LOG_LEVEL level, const std::string& text);

/// Starts the log: adds the console, makes the calling thread the main thread, reads the level from
/// the argument "__log_level". A program without GUI also gets the decimal point of the "C" locale.
void configure(int argc, char** argv, bool gui_app);
void configure();
[[nodiscard]] bool is_configured() noexcept;
[[nodiscard]] bool is_gui_app() noexcept;

/// Not owned: the appender has to be removed before it ends. Adding twice, and removing what is not
/// there, has no effect.
void add_log_appender(LogAppender* appender);
void remove_log_appender(LogAppender* appender);

/// 0 to 4; any other value leaves the level alone and says so on the standard output. An appender
/// may call it, too.
void set_log_level(int level);
[[nodiscard]] unsigned get_log_level() noexcept;
/// The level with which `configure` starts.
void set_log_level_default(LOG_LEVEL level) noexcept;
/// A number, cut to 4, or a word such as "warn", in any case; `fallback` for anything else.
[[nodiscard]] unsigned parse_log_level(const QString& text, unsigned fallback);

/// "ERR", "WRN", "INF", "DEB", "TRA"; empty above 4.
[[nodiscard]] std::string logLevel_to_string(unsigned level);
[[nodiscard]] QString logLevel_to_qstring(unsigned level);

/// Width of the number column, at most 4,000 places; a longer number is never cut.
void set_log_digits(unsigned width);
[[nodiscard]] unsigned get_log_digits() noexcept;

/// The prefix of a line: the columns that the bits ask for (LOG_CONTROL), and one blank.
[[nodiscard]] std::string trailler(unsigned counter, LOG_LEVEL level, const GBits<unsigned>& bits);
[[nodiscard]] QString qs_trailler(unsigned counter, LOG_LEVEL level, const GBits<unsigned>& bits);

/// The time of day in strftime's form with the fraction of the second behind it, or the time since
/// the start of the log, which takes no format.
[[nodiscard]] std::string get_time_stamp(bool absolute, const std::string& format,
                                         time::FORM_SECOND form);

/// Microseconds since the start of the log.
[[nodiscard]] unsigned long long get_time_since_start();
/// Makes now the start of the log.
void start_log_time();

[[nodiscard]] unsigned get_current_threadID() noexcept;
/// Always 0.
[[nodiscard]] unsigned process_ID() noexcept;

}  // namespace ze::log
