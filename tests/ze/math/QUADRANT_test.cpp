#include "ze/math/QUADRANT.h"

#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace QUADRANT = ze::math::QUADRANT;

TEST(QUADRANT, names_its_values_by_number) {
    const std::vector<std::string> words = {"TOP_RIGHT", "TOP_LEFT",  "BOTTOM_LEFT", "BOTTOM_RIGHT",
                                            "ON_X_AXIS", "ON_Y_AXIS", "ORIGIN"};
    for (unsigned type = 0; type < words.size(); ++type) {
        EXPECT_EQ(QUADRANT::to_string(type), words[type]);
    }
    EXPECT_EQ(QUADRANT::to_string(7), "unknown QUADRANT type:7");
}

TEST(QUADRANT, numbers_its_values_against_the_clock_then_the_axes) {
    const std::vector<unsigned> values = {
        QUADRANT::TOP_RIGHT, QUADRANT::TOP_LEFT,  QUADRANT::BOTTOM_LEFT, QUADRANT::BOTTOM_RIGHT,
        QUADRANT::ON_X_AXIS, QUADRANT::ON_Y_AXIS, QUADRANT::ORIGIN};
    EXPECT_EQ(values, (std::vector<unsigned>{0, 1, 2, 3, 4, 5, 6}));
}

struct Row {
    const char* name;
    glm::vec2 point;
    std::string tests;  ///< those that hold: l(eft), r(ight), t(op), b(ottom), y and x axis
};

std::string tests_of(const glm::vec2& point) {
    std::string tests;
    tests += QUADRANT::is_left(point) ? "l" : "";
    tests += QUADRANT::is_right(point) ? "r" : "";
    tests += QUADRANT::is_top(point) ? "t" : "";
    tests += QUADRANT::is_bottom(point) ? "b" : "";
    tests += QUADRANT::is_on_y_axis(point) ? "y" : "";
    tests += QUADRANT::is_on_x_axis(point) ? "x" : "";
    return tests;
}

TEST(QUADRANT, tests_the_signs_with_a_tolerance) {
    const std::vector<Row> rows = {
        {"top right", {1, 1}, "rt"},
        {"bottom left", {-1, -1}, "lb"},
        {"origin", {0, 0}, "yx"},
        {"a hair right of the y axis", {1e-6f, 1}, "ty"},
        {"a hair left of the y axis", {-1e-6f, 1}, "ty"},
        {"at the tolerance", {1e-5f, -1e-5f}, "yx"},
        {"beyond the tolerance", {1.1e-5f, -1.1e-5f}, "rb"},
        {"not a number", {NAN, NAN}, ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(tests_of(row.point), row.tests) << row.name;
    }
}

}  // namespace
