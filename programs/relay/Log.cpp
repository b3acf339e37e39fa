#include "Log.h"

#include "messages.h"

#include <chrono>
#include <ctime>

namespace relay {

namespace {

/// UTC with milliseconds, as ISO 8601 has it.
std::string stamp() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t seconds = system_clock::to_time_t(now);
    const auto millis = duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char date[32];
    std::strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", &utc);
    const std::string digits = std::to_string(1000 + millis);  // the 1 keeps the zeros behind it
    return std::string(date) + "." + digits.substr(1) + "Z";
}

}  // namespace

Log::Field::Field(std::string_view fieldName, std::string_view text)
    : name(fieldName), value(json_string(text)) {}

Log::Field::Field(std::string_view fieldName, std::uint64_t number)
    : name(fieldName), value(std::to_string(number)) {}

void Log::event(std::string_view word, std::initializer_list<Field> fields) const {
    std::string line = stamp() + " " + std::string(word);
    for (const Field& field : fields) {
        line.append(" ").append(field.name).append("=").append(field.value);
    }
    sink_(line);
}

}  // namespace relay
