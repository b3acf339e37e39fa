#include "ze/math/Segment.h"

#include "ze/math/Line.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

using glm::vec2;
using ze::math::Line;
using ze::math::Segment;

constexpr float EPS = 1e-5f;

TEST(Segment, is_two_points_or_four_numbers) {
    const Segment segment(1, 2, 4, 6);
    EXPECT_EQ(segment, Segment(vec2(1, 2), vec2(4, 6)));
    EXPECT_EQ(vec2(segment.x1(), segment.y1()), segment.start);
    EXPECT_EQ(vec2(segment.x2(), segment.y2()), segment.end);
}

TEST(Segment, knows_its_direction_length_and_points) {
    const Segment segment(1, 2, 4, 6);
    EXPECT_EQ(segment.dir(), vec2(3, 4));
    EXPECT_EQ(segment.length(), 5);
    EXPECT_EQ(segment.center(), vec2(2.5f, 4));
    EXPECT_EQ(segment.point(0), segment.start);
    EXPECT_EQ(segment.point(1), segment.end);
    EXPECT_EQ(segment.point(2), vec2(7, 10));
}

TEST(Segment, measures_the_distance_to_its_nearest_point) {
    const Segment segment(0, 0, 10, 0);
    EXPECT_EQ(segment.distance_to_point({5, 2}), 2);
    EXPECT_EQ(segment.distance_to_point({-3, 4}), 5);
    EXPECT_EQ(segment.distance_to_point({13, -4}), 5);
    EXPECT_EQ(Segment(1, 1, 1, 1).distance_to_point({4, 5}), 5);
}

struct Crossing {
    const char* name;
    Segment a, b;
    std::optional<vec2> point;
};

TEST(Segment, crosses_another_within_both_ends) {
    const std::vector<Crossing> rows = {
        {"in the middle", {0, 0, 10, 0}, {5, -5, 5, 5}, vec2(5, 0)},
        {"end to end", {0, 0, 10, 0}, {10, 0, 10, 5}, vec2(10, 0)},
        {"start to start", {0, 0, 10, 0}, {0, 0, 0, 5}, vec2(0, 0)},
        {"the first is too short", {0, 0, 4, 0}, {5, -5, 5, 5}, {}},
        {"the second is too short", {0, 0, 10, 0}, {5, 1, 5, 5}, {}},
        {"behind the start", {0, 0, 10, 0}, {-1, -5, -1, 5}, {}},
        {"parallel", {0, 0, 10, 0}, {0, 1, 10, 1}, {}},
        {"the same", {0, 0, 10, 0}, {0, 0, 10, 0}, {}},
        {"a point", {5, 0, 5, 0}, {0, 0, 10, 0}, {}},
        {"cross product below the limit", {0, 0, 1e-4f, 0}, {0, 0, 0, 1e-4f}, {}},
        {"not a number", {0, 0, NAN, 0}, {5, -5, 5, 5}, {}},
    };
    for (const Crossing& row : rows) {
        EXPECT_EQ(row.a.intersects(row.b), row.point) << row.name;
        EXPECT_EQ(Segment::intersects(row.a.start, row.a.end, row.b.start, row.b.end), row.point)
            << row.name;
    }
}

TEST(Segment, contains_the_points_near_it) {
    const Segment segment(0, 0, 10, 0);
    EXPECT_TRUE(segment.contains_point({5, 0}, EPS));
    EXPECT_TRUE(segment.contains_point({0, 0}, 0));
    EXPECT_TRUE(segment.contains_point({10, 0}, 0));
    EXPECT_TRUE(segment.contains_point({5, 0.5f}, 0.5f));
    EXPECT_FALSE(segment.contains_point({5, 0.5f}, 0.25f));
    EXPECT_FALSE(segment.contains_point({-1, 0}, EPS));
    EXPECT_FALSE(segment.contains_point({11, 0}, EPS));
}

TEST(Segment, takes_the_tolerance_along_it_in_squared_units) {
    const Segment segment(0, 0, 10, 0);
    EXPECT_TRUE(segment.contains_point({-0.0625f, 0}, 1));
    EXPECT_FALSE(segment.contains_point({-0.125f, 0}, 1));
    EXPECT_TRUE(segment.contains_point({10.0625f, 0}, 1));
    EXPECT_FALSE(segment.contains_point({10.125f, 0}, 1));
}

TEST(Segment, of_no_length_contains_what_is_near_its_start) {
    const Segment point(1, 1, 1, 1);
    EXPECT_TRUE(point.contains_point({1, 2}, 1));
    EXPECT_FALSE(point.contains_point({1, 2.5f}, 1));
}

TEST(Segment, is_valid_when_longer_than_the_tolerance) {
    EXPECT_TRUE(Segment(0, 0, 3, 4).is_valid(4));
    EXPECT_FALSE(Segment(0, 0, 3, 4).is_valid(5));
    EXPECT_FALSE(Segment(2, 2, 2, 2).is_valid(0));
}

TEST(Segment, compares_directions_wherever_the_other_lies) {
    const Segment right(0, 0, 2, 0);
    const Segment far_right(5, 5, 9, 5);
    const Segment left(9, 5, 5, 5);
    const Segment up(7, 7, 7, 9);
    EXPECT_TRUE(right.is_parallel(far_right, 0));
    EXPECT_TRUE(right.is_parallel(left, 0));
    EXPECT_FALSE(right.is_parallel(up, 3));
    EXPECT_TRUE(right.is_parallel(up, 4));
    EXPECT_TRUE(right.is_orthogonal(up, 0));
    EXPECT_FALSE(right.is_orthogonal(left, 7));
    EXPECT_TRUE(right.is_orthogonal(left, 8));
    EXPECT_TRUE(right.is_same_direction(far_right, 0));
    EXPECT_FALSE(right.is_same_direction(left, 0));
    EXPECT_TRUE(right.is_opposite_direction(left, 0));
    EXPECT_FALSE(right.is_opposite_direction(far_right, 0));
    EXPECT_FALSE(right.is_opposite_direction(up, 0));
}

TEST(Segment, tells_the_side_of_a_point_looking_along_it) {
    const Segment up(1, 0, 1, 2);
    EXPECT_TRUE(up.is_left({0, 5}, 1));
    EXPECT_FALSE(up.is_left({0, 5}, 2));
    EXPECT_FALSE(up.is_left({2, 5}, 0));
    EXPECT_TRUE(up.is_right({2, 5}, 1));
    EXPECT_FALSE(up.is_right({2, 5}, 2));
    EXPECT_FALSE(up.is_right({0, 5}, 0));
    EXPECT_TRUE(up.is_collinear({1, 50}, 0));
    EXPECT_FALSE(up.is_collinear({2, 0}, 1));
    EXPECT_TRUE(up.is_collinear({2, 0}, 2));
}

TEST(Segment, gives_the_line_through_its_points) {
    EXPECT_EQ(Segment(1, 2, 4, 6).line(), Line(1, 2, 3, 4));
}

TEST(Segment, shows_its_points) {
    EXPECT_EQ(Segment(1, 2, 3, 4.5f).to_string(), "1.00, 2.00 === 3.00, 4.50");
}

}  // namespace
