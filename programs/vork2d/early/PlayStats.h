// What a flight came to: hits, time, frames. The second generation brings this record; the third
// and the fourth only print it under another header. Each of the three keeps one instance of its
// own.
#pragma once

namespace vork2d::early {

struct PlayStats {
    unsigned frames = 0;  ///< drawn
    unsigned hitsTop = 0;
    unsigned hitsBottom = 0;
    unsigned hitsPaddleLeft = 0;
    unsigned hitsPaddleRight = 0;
    unsigned long long msStart = 0;  ///< start of the flight, milliseconds
    unsigned long long msEnd = 0;    ///< its end
    long long tmRefresh = 0;         ///< interval of the frame timer, milliseconds
    float tmTravel = 0;              ///< time of travel, seconds
    float travelDistance = 0;        ///< of the ball at the end, field units

    [[nodiscard]] unsigned all_hits() const noexcept;

    /// Frames per second of elapsed time; 0 when no time has passed.
    [[nodiscard]] double fps() const noexcept;

    /// Prints the record at level DEBUG, its rows indented under the header.
    void show(const char* header) const;
};

}  // namespace vork2d::early
