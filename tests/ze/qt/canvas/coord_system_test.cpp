#include "ze/qt/coord_system.h"

#include <gtest/gtest.h>

namespace coord_system = ze::qt::coord_system;

TEST(coord_system, each_value_has_its_word) {
    EXPECT_EQ(coord_system::to_string(coord_system::SCREEN), "SCREEN");
    EXPECT_EQ(coord_system::to_string(coord_system::CARTESIAN), "CARTESIAN");
    EXPECT_EQ(coord_system::to_string(coord_system::NDC), "NDC");
    EXPECT_EQ(coord_system::to_string(coord_system::UV), "UV");
}

TEST(coord_system, any_other_value_shows_its_number) {
    EXPECT_EQ(coord_system::to_string(static_cast<coord_system::Type>(9)), "COORDINATE_SYSTEM:9");
}
