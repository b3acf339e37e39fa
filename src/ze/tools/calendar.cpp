#include "ze/tools/calendar.h"

#include "ze/log/pp.h"
#include "ze/tools/convert.h"

#include <QDateTime>
#include <QLocale>

namespace ze::time {

namespace {

const char* stamp_format(bool with_time) noexcept {
    return with_time ? "%Y-%m-%d  %H:%M:%S" : "%Y-%m-%d";
}

constexpr std::size_t STAMP_CAPACITY = 128;

}  // namespace

#if defined(_WIN32)
std::optional<std::tm> local_calendar(long long seconds) noexcept {
    const std::time_t time = seconds;
    std::tm calendar{};
    return localtime_s(&calendar, &time) == 0 ? std::optional(calendar) : std::nullopt;
}

std::optional<std::tm> utc_calendar(long long seconds) noexcept {
    const std::time_t time = seconds;
    std::tm calendar{};
    return gmtime_s(&calendar, &time) == 0 ? std::optional(calendar) : std::nullopt;
}
#else
std::optional<std::tm> local_calendar(long long seconds) noexcept {
    const std::time_t time = seconds;
    std::tm calendar{};
    return localtime_r(&time, &calendar) != nullptr ? std::optional(calendar) : std::nullopt;
}

std::optional<std::tm> utc_calendar(long long seconds) noexcept {
    const std::time_t time = seconds;
    std::tm calendar{};
    return gmtime_r(&time, &calendar) != nullptr ? std::optional(calendar) : std::nullopt;
}
#endif

std::string format_calendar(const std::tm& calendar, const std::string& format,
                            std::size_t capacity) {
    std::string text(capacity, '\0');
    text.resize(std::strftime(text.data(), text.size(), format.c_str(), &calendar));
    return text;
}

std::string time_as_string(long long seconds, const std::string& format) {
    const std::optional<std::tm> calendar = local_calendar(seconds);
    if (!calendar) {
        pp("GTime::time_as_string, Failed to convert time, problems with <<<$>>>", format);
        return {};
    }
    const std::string text = format_calendar(*calendar, format, STAMP_CAPACITY);
    if (text.empty()) {
        pp("GTime::time_as_string, Failed to format time, problems with <<<$>>>", format);
    }
    return text;
}

std::string local_time_to_string(long long seconds, bool with_time) {
    const std::optional<std::tm> calendar = local_calendar(seconds);
    if (!calendar) {
        return "1970-01-01  01:00:00";
    }
    return format_calendar(*calendar, stamp_format(with_time), STAMP_CAPACITY);
}

std::string utc_time_to_string(long long seconds, bool with_time) {
    const std::optional<std::tm> calendar = utc_calendar(seconds);
    if (!calendar) {
        return {};
    }
    return format_calendar(*calendar, stamp_format(with_time), STAMP_CAPACITY);
}

std::string get_us_datetime() {
    const QLocale locale(QLocale::English, QLocale::UnitedStates);
    return convert::to_std_string(locale.toString(QDateTime::currentDateTime()));
}

}  // namespace ze::time
