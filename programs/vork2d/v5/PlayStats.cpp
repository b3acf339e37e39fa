#include "PlayStats.h"

#include "ze/log/pp.h"

namespace vork2d::v5 {

PlayStats playStats;

namespace {

constexpr double MS_PER_SECOND = 1000.0;

template <typename T>
void show_row(unsigned indent, const char* format, const T& value) {
    ze::pp_format(ze::log::DEBUG, indent, format, value);
}

}  // namespace

double PlayStats::fps() const noexcept {
    const unsigned long long elapsed = msEnd - msStart;
    return elapsed == 0 ? 0.0 : frames / (static_cast<double>(elapsed) / MS_PER_SECOND);
}

void PlayStats::show(unsigned indent) const {
    ze::pp("PlayStats, v5");
    show_row(indent, "hits top:$", hitsTop);
    show_row(indent, "hits bottom:$", hitsBottom);
    show_row(indent, "hits pad left:$", hitsPaddleLeft);
    show_row(indent, "hits pad right:$", hitsPaddleRight);
    show_row(indent, "all hits:$", all_hits());
    show_row(indent, "tmTravel:$ sec", tmTravel);
    show_row(indent, "tmRefresh:$ ms", tmRefresh);
    show_row(indent, "elapsed time:$ ms", msEnd - msStart);
    show_row(indent, "frames:$", frames);
    show_row(indent, "travelDistance:$", travelDistance);
    show_row(indent, "FPS:$", fps());
    ze::pp_empty();
}

}  // namespace vork2d::v5
