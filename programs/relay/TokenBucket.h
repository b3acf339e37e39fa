// A rate with a burst: holds up to `capacity` tokens and gains `perSecond` of them.
#pragma once

#include "Limits.h"

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace relay {

class TokenBucket {
public:
    TokenBucket(double capacity, double perSecond, TimePoint now) noexcept
        : capacity_(capacity), perSecond_(perSecond), tokens_(capacity), at_(now) {}

    /// `count` at once, or evenly over each minute.
    [[nodiscard]] static TokenBucket per_minute(std::size_t count, TimePoint now) noexcept {
        const auto burst = static_cast<double>(count);
        return {burst, burst / 60, now};
    }

    /// Takes the tokens if they are there; otherwise leaves the bucket as it is.
    [[nodiscard]] bool take(double tokens, TimePoint now) noexcept {
        const double there = level(now);
        if (there < tokens) {
            return false;
        }
        tokens_ = there - tokens;
        at_ = now;
        return true;
    }

    [[nodiscard]] bool has(double tokens, TimePoint now) const noexcept {
        return level(now) >= tokens;
    }
    /// From when on the tokens are there, if nobody takes any; up to 2 ms late, never early.
    [[nodiscard]] TimePoint when(double tokens) const noexcept {
        const std::chrono::duration<double> wait(std::max(0.0, (tokens - tokens_) / perSecond_));
        return at_ + std::chrono::ceil<std::chrono::milliseconds>(wait) +
               std::chrono::milliseconds(1);
    }
    [[nodiscard]] bool is_full(TimePoint now) const noexcept { return has(capacity_, now); }

private:
    [[nodiscard]] double level(TimePoint now) const noexcept {
        const double seconds = std::chrono::duration<double>(now - at_).count();
        return std::clamp(tokens_ + seconds * perSecond_, 0.0, capacity_);
    }

    double capacity_;
    double perSecond_;
    double tokens_;
    TimePoint at_;
};

}  // namespace relay
