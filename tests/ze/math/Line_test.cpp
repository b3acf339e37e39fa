#include "ze/math/Line.h"

#include <gtest/gtest.h>

namespace {

using glm::vec2;
using ze::math::Line;

TEST(Line, is_made_from_a_point_and_a_direction_or_from_two_points) {
    EXPECT_EQ(Line(1, 2, 3, 4), Line(vec2(1, 2), vec2(3, 4)));
    EXPECT_EQ(Line::from_points({1, 2}, {4, 6}), Line(1, 2, 3, 4));
}

TEST(Line, is_valid_when_longer_than_the_tolerance) {
    EXPECT_TRUE(Line(0, 0, 0, 0.5f).is_valid(0.25f));
    EXPECT_FALSE(Line(0, 0, 0, 0.25f).is_valid(0.25f));
    EXPECT_FALSE(Line(0, 0, 0, 0).is_valid(0));
}

TEST(Line, counts_points_in_lengths_of_the_direction) {
    EXPECT_EQ(Line(1, 2, 3, 4).point(-2), vec2(-5, -6));
}

TEST(Line, is_as_far_from_a_point_on_either_side) {
    const Line line = Line::from_points({0, 0}, {1, 0});
    EXPECT_EQ(line.distance_to_point({5, 1}), 1);
    EXPECT_EQ(line.distance_to_point({-5, -1}), 1);
    EXPECT_EQ(Line(0, 0, 10, 0).distance_to_point({5, 1}), 1);
}

TEST(Line, without_a_direction_is_a_point_that_meets_nothing) {
    const Line point(1, 1, 0, 0);
    EXPECT_EQ(point.distance_to_point({4, 5}), 5);
    EXPECT_FALSE(point.intersects(Line(0, 0, 1, 0)));
    EXPECT_FALSE(Line(0, 0, 1, 0).intersects(point));
}

TEST(Line, meets_another_wherever_that_is) {
    EXPECT_EQ(Line(0, 0, 1, 0).intersects(Line(5, 5, 0, -1)), vec2(5, 0));
    EXPECT_EQ(Line(0, 0, 1, 0).intersects(Line(-500, 5, 0, 1)), vec2(-500, 0));
    EXPECT_EQ(Line::intersects({0, 0}, {1, 1}, {4, 0}, {-1, 1}), vec2(2, 2));
}

TEST(Line, does_not_meet_a_parallel_not_even_itself) {
    EXPECT_FALSE(Line(0, 0, 1, 0).intersects(Line(0, 1, 2, 0)));
    EXPECT_FALSE(Line(0, 0, 1, 0).intersects(Line(0, 0, 2, 0)));
}

TEST(Line, has_absolute_tolerances_that_refuse_short_directions) {
    EXPECT_FALSE(Line(0, 0, 1e-5f, 0).intersects(Line(0, 0, 0, 1)));
    EXPECT_FALSE(Line(0, 0, 1e-3f, 0).intersects(Line(0, 0, 0, 1e-3f)));
    EXPECT_TRUE(Line(0, 0, 1e-2f, 0).intersects(Line(0, 0, 0, 1e-2f)));
}

TEST(Line, shows_its_point_and_direction) {
    EXPECT_EQ(Line(1, 2, 3, 4.5f).to_string(), "Line{p:1.00, 2.00, dir:3.00, 4.50}");
}

}  // namespace
