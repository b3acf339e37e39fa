// The prefix of a line: its number, level, time and thread.
#include "ze/log/LogConfig.h"
#include "ze/log/log.h"
#include "ze/log/thread_id.h"
#include "ze/tools/calendar.h"
#include "ze/tools/clock.h"
#include "ze/tools/duration.h"
#include "ze/tools/str.h"

#include <QString>

#include <algorithm>
#include <cstdint>
#include <optional>

namespace ze::log {
namespace {

constexpr unsigned THREAD_DIGITS = 4;
constexpr unsigned LARGEST_NUMBER_WIDTH = 4000;  // more would only fill the log
constexpr std::size_t USUAL_PREFIX = 64;
constexpr std::size_t TIME_CAPACITY = 512;

constexpr const char* sFormatTimeSimple = "%H:%M:%S";

std::atomic<std::uint32_t> digits = 6;
std::atomic<std::int64_t> mcStart = 0;

std::string local_time(long long seconds, const std::string& format) {
    const std::optional<std::tm> calendar = time::local_calendar(seconds);
    return calendar ? time::format_calendar(*calendar, format, TIME_CAPACITY) : std::string();
}

// Kept for the second that it stays the same: the calendar costs more than the rest of a line.
std::string time_of_day(long long seconds, const std::string& format) {
    struct Last {
        long long seconds = 0;
        std::string format;
        std::string text;
    };
    static std::mutex mutex;
    static Last& last = *new Last;  // never destroyed: the last objects of a program still log
    const std::lock_guard lock(mutex);
    if (last.seconds != seconds || last.format != format) {
        last = {seconds, format, local_time(seconds, format)};
    }
    return last.text;
}

std::string fraction_of_second(unsigned long long mc, time::FORM_SECOND form) {
    switch (form) {
        case time::FORM_MILLISECONDS:
            return ',' + str::format_fill_zero_milliseconds(mc % time::SECOND / 1000);
        case time::FORM_MICROSECONDS:
            return ',' + str::format_fill_zero_microseconds(mc % time::SECOND);
    }
    return {};
}

}  // namespace

void set_log_digits(unsigned width) {
    digits = width;
}

unsigned get_log_digits() noexcept {
    return digits;
}

std::string trailler(unsigned counter, LOG_LEVEL level, const GBits<unsigned>& bits) {
    std::string text;
    text.reserve(USUAL_PREFIX);
    if (bits.is_bit(COLUMN_NUMBER)) {
        text += '[';
        text += str::format_fill_zero(std::min(get_log_digits(), LARGEST_NUMBER_WIDTH), counter);
        text += "] ";
    }
    if (bits.is_bit(COLUMN_LEVEL)) {
        text += '[';
        text += logLevel_to_string(level);
        text += "] ";
    }
    if (bits.is_bit(COLUMN_TIME)) {
        const auto form =
            bits.is_bit(MICRO_SECONDS) ? time::FORM_MICROSECONDS : time::FORM_MILLISECONDS;
        text += '[';
        text += get_time_stamp(bits.is_bit(ABSOLUTE_TIME), sFormatTimeSimple, form);
        text += "] ";
    }
    if (bits.is_bit(COLUMN_THREAD)) {
        text += '[';
        text += str::format_fill_zero(THREAD_DIGITS, get_thread_id());
        text += ']';
    }
    text += ' ';
    return text;
}

QString qs_trailler(unsigned counter, LOG_LEVEL level, const GBits<unsigned>& bits) {
    return QString::fromStdString(trailler(counter, level, bits));
}

std::string get_time_stamp(bool absolute, const std::string& format, time::FORM_SECOND form) {
    if (!absolute) {
        return time::formatMicrosecond_as_Hour_compact_mc(get_time_since_start(), form);
    }
    const unsigned long long now = time::get_micro_seconds();
    const auto seconds = static_cast<long long>(time::get_seconds(now));
    return time_of_day(seconds, format) + fraction_of_second(now, form);
}

unsigned long long get_time_since_start() {
    return time::get_micro_seconds() - static_cast<unsigned long long>(mcStart);
}

void start_log_time() {
    mcStart = static_cast<std::int64_t>(time::get_micro_seconds());
}

}  // namespace ze::log
