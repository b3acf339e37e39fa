// The steady clock of the whole program, moved by hand.
#pragma once

#include <chrono>

namespace fuzz {

inline std::chrono::steady_clock::time_point now;

}  // namespace fuzz
