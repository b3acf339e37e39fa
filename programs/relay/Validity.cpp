#include "Validity.h"

#include <ctime>

namespace relay {

namespace {

std::string text_of(Validity::Time time) {
    const std::time_t seconds = time.time_since_epoch().count();
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char text[64];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M UTC", &utc)};
}

}  // namespace

std::string Validity::fault(Time now) const {
    if (now > until) {
        return "ended on " + text_of(until);
    }
    return now < from ? "is not good before " + text_of(from) : "";
}

std::string Validity::warning(Time now) const {
    if (std::string text = fault(now); !text.empty()) {
        return text;
    }
    return now + WARN_BEFORE >= until ? "ends on " + text_of(until) : "";
}

}  // namespace relay
