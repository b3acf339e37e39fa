#include "hand_clock.h"

// The linker takes what stands in the program before what a shared library has.
std::chrono::steady_clock::time_point std::chrono::steady_clock::now() noexcept {
    return fuzz::now;
}
