#include "ze/log/pp.h"

#include <atomic>

namespace ze {

std::atomic<unsigned> counterDebugLine = 0;
std::atomic<unsigned> counterInfoLine = 0;

void pp_line() {
    pp("---- [ $ ] ------", ++counterDebugLine);
}

void pp_info_line() {
    pp_info("=== [ $ ] ======", ++counterInfoLine);
}

void pp_empty() {
    pp();
}

}  // namespace ze
