#include "vork2d/v5/rules.h"

#include <bit>
#include <cstdint>

#include <gtest/gtest.h>

namespace {

namespace rules = vork2d::v5::rules;

TEST(rules, the_time_of_travel_that_is_silent_is_this_very_float) {
    EXPECT_EQ(std::bit_cast<std::uint32_t>(rules::TM_TRAVEL_SILENT), 0x3F7D70A4U);
}

}  // namespace
