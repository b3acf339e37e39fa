#include "PlayStats.h"

#include "ze/log/pp.h"

#include "measures.h"

namespace vork2d::early {

namespace {

constexpr unsigned INDENT = 4;  // blanks before a row

template <typename T>
void show_row(const char* format, const T& value) {
    ze::pp_format(ze::log::DEBUG, INDENT, format, value);
}

}  // namespace

unsigned PlayStats::all_hits() const noexcept {
    return hitsTop + hitsBottom + hitsPaddleLeft + hitsPaddleRight;
}

double PlayStats::fps() const noexcept {
    const unsigned long long elapsed = msEnd - msStart;
    return elapsed == 0 ? 0.0 : frames / (static_cast<double>(elapsed) / MS_PER_SECOND);
}

void PlayStats::show(const char* header) const {
    ze::pp(header);
    show_row("hits top:$", hitsTop);
    show_row("hits bottom:$", hitsBottom);
    show_row("hits pad left:$", hitsPaddleLeft);
    show_row("hits pad right:$", hitsPaddleRight);
    show_row("all hits:$", all_hits());
    show_row("tmTravel:$ sec", tmTravel);
    show_row("tmRefresh:$ ms", tmRefresh);
    show_row("elapsed time:$ ms", msEnd - msStart);
    show_row("frames:$", frames);
    show_row("travelDistance:$", travelDistance);
    show_row("FPS:$", fps());
    ze::pp_empty();
}

}  // namespace vork2d::early
