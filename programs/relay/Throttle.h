// Keeps a flood of one kind of event from flooding the log: one line a second, with a count.
#pragma once

#include "Limits.h"

#include <cstdint>
#include <utility>

namespace relay {

class Throttle {
public:
    /// Counts an event. Returns how many there were since the last line, this one included, when it
    /// is time for the next line, else 0.
    [[nodiscard]] std::uint64_t count(TimePoint now) noexcept {
        constexpr std::chrono::seconds PAUSE{1};
        ++unlogged_;
        if (flagLogged_ && now - tmLogged_ < PAUSE) {
            return 0;
        }
        flagLogged_ = true;
        tmLogged_ = now;
        return std::exchange(unlogged_, 0);
    }

private:
    TimePoint tmLogged_{};
    std::uint64_t unlogged_ = 0;
    bool flagLogged_ = false;
};

}  // namespace relay
