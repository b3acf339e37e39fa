#include "ze/log/log.h"

#include "ze/log/LogAppender.h"
#include "ze/log/LogConsole.h"
#include "ze/log/exits.h"
#include "ze/log/thread_id.h"
#include "ze/tools/format.h"

#include <QString>

#include <array>
#include <chrono>
#include <clocale>
#include <cstdint>
#include <iostream>
#include <set>

namespace ze {

std::mutex mutexWorker;

std::string get_build_timestamp() {
    return str::xprintF(0, "$ - $", __DATE__, __TIME__);
}

}  // namespace ze

namespace ze::log {

std::atomic<unsigned> currentLevel = DEBUG;
std::atomic<bool> flagConfigured = false;

namespace {

constexpr unsigned CONSOLE_CONTROL = 0x1003FE;
constexpr unsigned LARGEST_LEVEL = TRACE;

constexpr std::array<const char*, 5> LEVEL_WORDS = {"ERR", "WRN", "INF", "DEB", "TRA"};

std::atomic<unsigned> defaultLevel = DEBUG;
std::atomic<bool> flagGuiApp = false;
std::atomic<unsigned> digitsOfNumber = 6;
std::atomic<std::int64_t> mcStart = 0;

std::string sNumberFormat = "[%06d] ";
unsigned counterMessage = 0;

// Never destroyed: the last objects of a program still log while they go.
std::set<LogAppender*>& setLogAppender = *new std::set<LogAppender*>;

std::int64_t now() {
    using std::chrono::microseconds;
    using std::chrono::system_clock;
    return std::chrono::duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
}

void write_unconfigured(LOG_LEVEL level, const char* text) {
    std::ostream& out = level <= WARN ? std::cerr : std::cout;
    out << (text != nullptr ? text : "nullptr") << '\n' << std::flush;
}

void store_level(unsigned level) {
    if (level > LARGEST_LEVEL) {
        std::cout << "set_log_level out of range 0-4, level:" << level << " ?\n" << std::flush;
        return;
    }
    currentLevel = level;
}

}  // namespace

void log_string(LOG_LEVEL level, const char* text) {
    if (!is_configured()) {
        write_unconfigured(level, text);
        return;
    }
    if (!is_on(level)) {
        return;
    }
    const std::lock_guard lock(mutexWorker);
    ++counterMessage;
    for (LogAppender* const appender : setLogAppender) {
        if (appender->is_enabled()) {
            appender->log_string(counterMessage, level, text);
        }
    }
}

void log_string(LOG_LEVEL level, const std::string& text) {
    log_string(level, text.c_str());
}

void configure(int, char**, bool gui_app) {
    flagGuiApp = gui_app;
    if (!gui_app) {
        std::setlocale(LC_NUMERIC, "C");
    }
    start_log_time();
    set_main_thread();
    consoleLogger.config.logControl.set_value(CONSOLE_CONTROL);
    add_log_appender(&consoleLogger);
    store_level(defaultLevel);
    flagConfigured = true;
}

void configure() {
    configure(0, nullptr, false);
}

bool is_configured() noexcept {
    return flagConfigured;
}

bool is_gui_app() noexcept {
    return flagGuiApp;
}

void add_log_appender(LogAppender* appender) {
    if (appender == nullptr) {
        nullPointerHandling("src/ze/log/log", __LINE__, QStringLiteral("appender == NULL"));
    }
    const std::lock_guard lock(mutexWorker);
    setLogAppender.insert(appender);
}

void remove_log_appender(LogAppender* appender) {
    if (appender == nullptr) {
        nullPointerHandling("src/ze/log/log", __LINE__, QStringLiteral("appender == NULL"));
    }
    const std::lock_guard lock(mutexWorker);
    setLogAppender.erase(appender);
}

void set_log_level(int level) {
    store_level(static_cast<unsigned>(level));
}

unsigned get_log_level() noexcept {
    return currentLevel;
}

void set_log_level_default(LOG_LEVEL level) noexcept {
    defaultLevel = level;
}

unsigned parse_log_level(const QString& text, unsigned fallback) {
    bool flagNumber = false;
    const unsigned number = text.toUInt(&flagNumber, 10);
    if (flagNumber) {
        return std::min(number, LARGEST_LEVEL);
    }
    struct Words {
        LOG_LEVEL level;
        std::array<const char*, 3> words;
    };
    static constexpr std::array<Words, 6> TABLE = {{
        {ERROR, {"err", "error"}},
        {WARN, {"wrn", "warn", "warning"}},
        {INFO, {"inf", "in", "info"}},
        {DEBUG, {"deb", "debug"}},
        {TRACE, {"tra", "trace"}},
        {NOP, {"no", "nop"}},
    }};
    const QString lower = text.toLower();
    for (const Words& row : TABLE) {
        for (const char* const word : row.words) {
            if (word != nullptr && lower == QLatin1String(word)) {
                return row.level;
            }
        }
    }
    return fallback;
}

std::string logLevel_to_string(unsigned level) {
    return level < LEVEL_WORDS.size() ? LEVEL_WORDS[level] : "";
}

QString logLevel_to_qstring(unsigned level) {
    return QString::fromStdString(logLevel_to_string(level));
}

void set_log_digits(unsigned digits) {
    const std::lock_guard lock(mutexWorker);
    sNumberFormat = str::xprintF(0, "[%0$d] ", digits);
    digitsOfNumber = digits;
}

unsigned get_log_digits() noexcept {
    return digitsOfNumber;
}

std::string trailler(unsigned counter, LOG_LEVEL level, const GBits<unsigned>& bits) {
    std::string text;
    std::array<char, 64> number;
    if (bits.is_bit(COLUMN_NUMBER)) {
        std::snprintf(number.data(), number.size(), sNumberFormat.c_str(), counter);
        text += number.data();
    }
    if (bits.is_bit(COLUMN_LEVEL)) {
        text += '[' + logLevel_to_string(level) + "] ";
    }
    if (bits.is_bit(COLUMN_THREAD)) {
        std::snprintf(number.data(), number.size(), "[%04d]", get_thread_id());
        text += number.data();
    }
    return text + ' ';
}

QString qs_trailler(unsigned counter, LOG_LEVEL level, const GBits<unsigned>& bits) {
    return QString::fromStdString(trailler(counter, level, bits));
}

unsigned long long get_time_since_start() {
    return static_cast<unsigned long long>(now() - mcStart);
}

void start_log_time() {
    mcStart = now();
}

unsigned get_current_threadID() noexcept {
    return get_thread_id();
}

unsigned process_ID() noexcept {
    return 0;
}

}  // namespace ze::log
