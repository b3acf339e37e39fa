#include "ze/log/log.h"

#include "ze/log/LogAppender.h"
#include "ze/log/LogConsole.h"
#include "ze/log/exits.h"
#include "ze/log/thread_id.h"
#include "ze/store/GArgv.h"
#include "ze/tools/format.h"
#include "ze/tools/os.h"

#include <QString>

#include <clocale>
#include <iostream>
#include <set>

namespace ze {

std::mutex mutexWorker;

std::string get_build_timestamp() {
    return str::xprintF(0, "$ - $", __DATE__, __TIME__);
}

}  // namespace ze

namespace ze::log {

namespace {

// Above all levels, so that nothing is dropped before `configure`; the bits below already hold the
// level from then on. One word for both: set_log_level takes no lock, since an appender, which runs
// with the log locked, may call it.
constexpr unsigned UNCONFIGURED = 0x80000000;

}  // namespace

std::atomic<unsigned> firstDroppedLevel = UNCONFIGURED | (DEBUG + 1);

namespace {

constexpr unsigned CONSOLE_CONTROL = 0x1003FE;  // enabled, all columns, time of day in microseconds
constexpr unsigned DIGITS_MOBILE = 3;

std::atomic<unsigned> defaultLevel = DEBUG;
std::atomic<bool> flagGuiApp = false;

// Guarded by mutexWorker. The set is never destroyed: the last objects of a program still log while
// they go.
std::set<LogAppender*>& setLogAppender = *new std::set<LogAppender*>;
unsigned counterMessage = 0;

void write_unconfigured(LOG_LEVEL level, const char* text) {
    std::ostream& out = level <= WARN ? std::cerr : std::cout;
    out << (text != nullptr ? text : "nullptr") << '\n' << std::flush;
}

void store_level(unsigned level) {
    if (level > TRACE) {
        std::cout << "set_log_level out of range 0-4, level:" << level << " ?\n" << std::flush;
        return;
    }
    unsigned before = firstDroppedLevel;
    while (
        !firstDroppedLevel.compare_exchange_weak(before, (before & UNCONFIGURED) | (level + 1))) {
    }
}

void read_level(int argc, char** argv) {
    const QString key = QStringLiteral("__log_level");
    store::GArgv arguments;
    arguments.set_arguments(argc, argv);
    if (!arguments.parse()) {
        std::cout << "log::configure, GArgv parser error\n" << std::flush;
    } else if (arguments.contains(key)) {
        store_level(parse_log_level(arguments.get<QString>(key, QString()), INFO));
    } else {
        store_level(defaultLevel);
    }
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

void configure(int argc, char** argv, bool gui_app) {
    flagGuiApp = gui_app;
    if (!gui_app) {
        std::setlocale(LC_NUMERIC, "C");
    }
    start_log_time();
    set_main_thread();
    consoleLogger.config.logControl.set_value(CONSOLE_CONTROL);
    add_log_appender(&consoleLogger);
    read_level(argc, argv);
    if (os::is_mobile()) {
        set_log_digits(DIGITS_MOBILE);
    }
    firstDroppedLevel &= ~UNCONFIGURED;
}

void configure() {
    configure(0, nullptr, false);
}

bool is_configured() noexcept {
    return (firstDroppedLevel & UNCONFIGURED) == 0;
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
    return (firstDroppedLevel & ~UNCONFIGURED) - 1;
}

void set_log_level_default(LOG_LEVEL level) noexcept {
    defaultLevel = level;
}

unsigned get_current_threadID() noexcept {
    return get_thread_id();
}

unsigned process_ID() noexcept {
    return 0;
}

}  // namespace ze::log
