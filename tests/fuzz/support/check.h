// What must hold for every input. A check that fails is a finding, like a crash.
#pragma once

#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(expression)                                        \
    do {                                                              \
        if (!(expression)) {                                          \
            std::fprintf(stderr, "does not hold: %s\n", #expression); \
            std::abort();                                             \
        }                                                             \
    } while (false)
