#include "ze/log/exits.h"

#include "ze/log/thread_id.h"
#include "ze/tools/format.h"

#include <QString>

#include <cstdlib>
#include <iostream>

namespace ze {
namespace {

constexpr unsigned long long READING_TIME_MS = 5000;

void leave_time_to_read() {
    std::cout << "program will exit in 5 sec\n" << std::flush;
    gSleep(READING_TIME_MS);
}

[[noreturn]] void say_exit() {
    std::cout << "program exit !\n" << std::flush;
    std::exit(EXIT_FAILURE);
}

}  // namespace

void exit_fatal(const QString& text) {
    std::cout << str::to_utf8(text) << '\n';
    leave_time_to_read();
    say_exit();
}

void nullPointerHandling(const char* file, int line, const QString& text) {
    std::cout << "nullptr:" << str::to_utf8(text) << '\n' << file << "\nLINE:" << line << '\n';
    leave_time_to_read();
    std::exit(EXIT_FAILURE);
}

void boolExpressionHandling(const char* file, int line) {
    std::cout << "bool expression failure:\n" << file << "\nLINE:" << line << '\n';
    leave_time_to_read();
    say_exit();
}

}  // namespace ze
