// From when until when a certificate is good, and what its host should hear of that.
#pragma once

#include <chrono>
#include <string>

namespace relay {

struct Validity {
    /// Seconds since 1970: a certificate may end in the year 9999, beyond the nanoseconds of a
    /// clock.
    using Time = std::chrono::sys_seconds;
    static constexpr std::chrono::days WARN_BEFORE{14};

    Time from;
    Time until;

    /// "ended on 2026-11-20 10:00 UTC", "is not good before ...", or an empty text.
    [[nodiscard]] std::string fault(Time now) const;
    /// The fault, or from WARN_BEFORE on "ends on ...", or an empty text.
    [[nodiscard]] std::string warning(Time now) const;

    [[nodiscard]] static Time now() noexcept {
        return std::chrono::time_point_cast<std::chrono::seconds>(std::chrono::system_clock::now());
    }
};

}  // namespace relay
