// How often the ball of a rally has met what.
#pragma once

namespace vork2d::rally {

struct Hits {
    unsigned hitsTop = 0;
    unsigned hitsBottom = 0;
    unsigned hitsPaddleLeft = 0;
    unsigned hitsPaddleRight = 0;

    [[nodiscard]] unsigned all_hits() const noexcept {
        return hitsTop + hitsBottom + hitsPaddleLeft + hitsPaddleRight;
    }
};

}  // namespace vork2d::rally
