#include "ze/math/Size.h"

#include "ze/tools/format.h"

#include <gtest/gtest.h>

namespace {

using ze::math::Size;

TEST(Size, is_zero_at_the_start) {
    EXPECT_EQ(Size(), Size(0, 0));
}

TEST(Size, gives_its_sides_as_a_vector) {
    EXPECT_EQ(Size(3, 4).to_vec(), glm::vec2(3, 4));
}

TEST(Size, shows_two_decimals_in_the_log) {
    EXPECT_EQ(Size(3, 4.126f).to_string(), "3.00, 4.13");
    EXPECT_EQ(ze::str::xprintF(0, "size:$", Size(1, 2)), "size:1.00, 2.00");
}

}  // namespace
