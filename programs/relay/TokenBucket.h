// A rate with a burst: holds up to `capacity` tokens and gains `perSecond` of them.
#pragma once

#include "Limits.h"

#include <algorithm>
#include <chrono>

namespace relay {

class TokenBucket {
public:
    TokenBucket(double capacity, double perSecond, TimePoint now) noexcept
        : capacity_(capacity), perSecond_(perSecond), tokens_(capacity), at_(now) {}

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
