#include "vork2d/v5/HIT_TYPE.h"

#include <iterator>

#include <gtest/gtest.h>

namespace {

using vork2d::v5::HIT_TYPE;

TEST(HIT_TYPE, types_have_their_numbers_and_print_as_their_enumerators) {
    const char* const texts[] = {"HIT_NONE",        "HIT_TOP",          "HIT_BOTTOM",
                                 "HIT_PADDLE_LEFT", "HIT_PADDLE_RIGHT", "hitType:5 is unknown"};
    for (unsigned type = 0; type < std::size(texts); ++type) {
        EXPECT_EQ(vork2d::v5::to_string(static_cast<HIT_TYPE>(type)), texts[type]);
        EXPECT_EQ(ze::str::xprintF(0, "$", static_cast<HIT_TYPE>(type)), texts[type]);
    }
}

}  // namespace
