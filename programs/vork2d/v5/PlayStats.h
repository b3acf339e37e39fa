// What a rally came to: hits, time, frames. Written by the field, read only by its own report.
#pragma once

#include "vork2d/rally/Hits.h"

namespace vork2d::v5 {

struct PlayStats : rally::Hits {
    unsigned frames = 0;             ///< drawn
    unsigned long long msStart = 0;  ///< start of the rally, milliseconds
    unsigned long long msEnd = 0;    ///< its end
    long long tmRefresh = 0;         ///< interval of the frame timer, milliseconds
    float tmTravel = 0;              ///< time of travel, seconds
    float travelDistance = 0;        ///< of the ball at the end, field units

    /// Frames per second of elapsed time; 0 when no time has passed.
    [[nodiscard]] double fps() const noexcept;

    /// Blanks before a row of the report.
    static constexpr unsigned INDENT = 4;

    /// Prints the record at level DEBUG, its rows indented by so many blanks.
    void show(unsigned indent) const;
};

/// The rally that runs or ran last; main thread only.
extern PlayStats playStats;

}  // namespace vork2d::v5
