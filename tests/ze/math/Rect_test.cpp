#include "ze/math/Rect.h"

#include "support/LogCapture.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using glm::vec2;
using ze::math::Rect;
using ze::math::Segment;
using ze::math::Size;

const Rect R(10, 20, 30, 40);  // left 10, right 40, bottom 20, top 60

TEST(Rect, is_made_from_numbers_vectors_or_a_size) {
    EXPECT_EQ(Rect(vec2(10, 20), vec2(30, 40)), R);
    EXPECT_EQ(Rect(vec2(10, 20), Size(30, 40)), R);
    EXPECT_EQ(Rect(), Rect(0, 0, 0, 0));
}

TEST(Rect, has_its_position_at_the_lower_left_and_its_top_at_the_larger_y) {
    EXPECT_EQ(R.pos(), vec2(10, 20));
    EXPECT_EQ(R.size(), Size(30, 40));
    EXPECT_EQ(R.left(), 10);
    EXPECT_EQ(R.right(), 40);
    EXPECT_EQ(R.bottom(), 20);
    EXPECT_EQ(R.top(), 60);
}

TEST(Rect, names_its_corners_and_centre) {
    EXPECT_EQ(R.top_left(), vec2(10, 60));
    EXPECT_EQ(R.top_right(), vec2(40, 60));
    EXPECT_EQ(R.bottom_left(), vec2(10, 20));
    EXPECT_EQ(R.bottom_right(), vec2(40, 20));
    EXPECT_EQ(R.center(), vec2(25, 40));
}

TEST(Rect, draws_edges_from_the_left_and_from_the_top) {
    EXPECT_EQ(R.line_top(), Segment(10, 60, 40, 60));
    EXPECT_EQ(R.line_bottom(), Segment(10, 20, 40, 20));
    EXPECT_EQ(R.line_left(), Segment(10, 60, 10, 20));
    EXPECT_EQ(R.line_right(), Segment(40, 60, 40, 20));
}

TEST(Rect, numbers_the_border_clockwise_from_the_top) {
    const std::vector<vec2> points = {{25, 60}, {40, 60}, {40, 40}, {40, 20},
                                      {25, 20}, {10, 20}, {10, 40}, {10, 60}};
    for (unsigned compass = 0; compass < points.size(); ++compass) {
        EXPECT_EQ(R.pos_compass(compass), points[compass]) << compass;
    }
}

TEST(Rect, logs_an_unknown_compass_number_and_gives_the_top_left) {
    test::LogCapture log;
    const std::string line = "Rect::pos_compass, compass:8 unknown ! - must be 0...7";
    log.expect_error(line);
    EXPECT_EQ(R.pos_compass(8), R.top_left());
    EXPECT_EQ(log.lines_with_level(), std::vector<std::string>{"ERR " + line});
}

TEST(Rect, gives_points_by_fractions_of_its_sides) {
    EXPECT_EQ(R.point(0, 0), vec2(10, 20));
    EXPECT_EQ(R.point(0.5f, 0.25f), vec2(25, 30));
    EXPECT_EQ(R.point(2, -1), vec2(70, -20));
}

TEST(Rect, contains_points_borders_included) {
    EXPECT_TRUE(R.contains(vec2(25, 40)));
    EXPECT_TRUE(R.contains(vec2(10, 20)));
    EXPECT_TRUE(R.contains(vec2(40, 60)));
    EXPECT_FALSE(R.contains(vec2(41, 40)));
    EXPECT_FALSE(R.contains(vec2(25, 61)));
    EXPECT_TRUE(R.contains(vec2(41, 61), 1));
    EXPECT_FALSE(R.contains(vec2(9, 40), 0.5f));
    EXPECT_FALSE(R.contains(vec2(NAN, 40), 1));
}

TEST(Rect, contains_another_that_lies_wholly_inside) {
    EXPECT_TRUE(R.contains(R));
    EXPECT_TRUE(R.contains(Rect(15, 25, 5, 5)));
    EXPECT_FALSE(R.contains(Rect(15, 25, 30, 5)));
    EXPECT_FALSE(R.contains(Rect(9, 20, 30, 40)));
    EXPECT_TRUE(R.contains(Rect(9, 19, 32, 42), 1));
}

TEST(Rect, has_points_on_its_border_within_the_tolerance) {
    EXPECT_TRUE(R.contains_on_border({10, 30}, 0));
    EXPECT_TRUE(R.contains_on_border({25, 60}, 0));
    EXPECT_TRUE(R.contains_on_border({12, 30}, 2));
    EXPECT_TRUE(R.contains_on_border({41, 61}, 1));
    EXPECT_FALSE(R.contains_on_border({25, 40}, 2));
    EXPECT_FALSE(R.contains_on_border({10, 70}, 2));
}

struct Pair {
    const char* name;
    Rect other;
    bool overlaps;
    bool intersects;
    Rect common;
};

TEST(Rect, shares_an_area_a_point_or_nothing_with_another) {
    const std::vector<Pair> rows = {
        {"itself", R, true, true, R},
        {"a corner's area", {35, 55, 10, 10}, true, true, {35, 55, 5, 5}},
        {"inside", {15, 25, 5, 5}, true, true, {15, 25, 5, 5}},
        {"an edge", {40, 20, 10, 40}, false, true, {40, 20, 0, 40}},
        {"a corner", {40, 60, 10, 10}, false, true, {40, 60, 0, 0}},
        {"a line inside", {20, 30, 0, 10}, false, true, {20, 30, 0, 10}},
        {"apart in x", {41, 20, 10, 40}, false, false, {}},
        {"apart in y", {10, 61, 30, 40}, false, false, {}},
    };
    for (const Pair& row : rows) {
        EXPECT_EQ(R.overlaps(row.other), row.overlaps) << row.name;
        EXPECT_EQ(row.other.overlaps(R), row.overlaps) << row.name;
        EXPECT_EQ(R.intersects(row.other), row.intersects) << row.name;
        EXPECT_EQ(row.other.intersects(R), row.intersects) << row.name;
        EXPECT_EQ(R.intersection(row.other), row.common) << row.name;
    }
}

TEST(Rect, touches_another_when_it_does_so_after_growing) {
    const Rect other(42, 20, 10, 40);
    EXPECT_FALSE(R.touches(other, 1));
    EXPECT_TRUE(R.touches(other, 2));
    EXPECT_FALSE(R.touches(R.moved({30, 0}), -1));
}

TEST(Rect, unites_to_the_smallest_that_holds_both) {
    EXPECT_EQ(R.united(Rect(0, 50, 5, 20)), Rect(0, 20, 40, 50));
    EXPECT_EQ(R.united(Rect(15, 25, 5, 5)), R);
}

TEST(Rect, takes_two_corners_in_any_order) {
    EXPECT_EQ(Rect::from_positions({10, 20}, {40, 60}), R);
    EXPECT_EQ(Rect::from_positions({40, 20}, {10, 60}), R);
}

TEST(Rect, keeps_its_area_when_normalized) {
    EXPECT_EQ(Rect(40, 60, -30, -40).normalized(), R);
    EXPECT_EQ(R.normalized(), R);
}

TEST(Rect, moves_in_place_or_as_a_copy) {
    Rect rect = R;
    rect.move({1, -2});
    EXPECT_EQ(rect, Rect(11, 18, 30, 40));
    EXPECT_EQ(R.moved({1, -2}), rect);
    rect.set_center({0, 0});
    EXPECT_EQ(rect, Rect(-15, -20, 30, 40));
}

TEST(Rect, adjusts_each_edge_along_its_axis) {
    EXPECT_EQ(R.adjusted(1, 2, 3, 4), Rect(11, 24, 32, 38));
}

TEST(Rect, expands_inward_as_it_shrinks) {
    EXPECT_EQ(R.shrinked(5), Rect(15, 25, 20, 30));
    EXPECT_EQ(R.expanded(5), R.shrinked(5));
    EXPECT_EQ(R.expanded(-5), Rect(5, 15, 40, 50));
}

TEST(Rect, gets_narrower_and_higher_by_percent_and_ratio) {
    EXPECT_EQ(R.adjusted_percent(10), Rect(13, 16, 24, 48));
    EXPECT_EQ(R.adjusted_ratio(0.5f), Rect(25, 0, 0, 80));
}

TEST(Rect, is_valid_empty_or_true_by_its_sides) {
    EXPECT_TRUE(Rect(0, 0, 0, 0).is_valid());
    EXPECT_FALSE(Rect(0, 0, -1, 1).is_valid(0.5f));
    EXPECT_TRUE(Rect(0, 0, -1, 1).is_valid(1));
    EXPECT_TRUE(Rect(0, 0, 0, 1).is_empty());
    EXPECT_FALSE(Rect(0, 0, 1, 1).is_empty());
    EXPECT_TRUE(Rect(0, 0, 1, 2).is_empty(1));
    EXPECT_TRUE(static_cast<bool>(R));
    EXPECT_FALSE(static_cast<bool>(Rect(0, 0, 1, 0)));
}

TEST(Rect, finds_its_point_nearest_to_another) {
    EXPECT_EQ(R.closest_point({20, 30}), vec2(20, 30));
    EXPECT_EQ(R.closest_point({0, 100}), vec2(10, 60));
    EXPECT_EQ(Rect(40, 60, -30, -40).closest_point({0, 100}), vec2(10, 60));
    EXPECT_EQ(R.distance_to_point({20, 30}), 0);
    EXPECT_EQ(R.distance_to_point({7, 64}), 5);
}

TEST(Rect, measures_its_area_and_perimeter) {
    EXPECT_EQ(R.area(), 1200);
    EXPECT_EQ(R.perimeter(), 140);
}

TEST(Rect, shows_its_four_numbers) {
    EXPECT_EQ(R.to_string(), "10.00, 20.00, 30.00, 40.00");
}

TEST(Rect, computes_in_single_precision_step_by_step) {
    // 0.1 + 0.2 rounded to float, which is not the nearest float of 0.3.
    const Rect rect(0.1f, 0.1f, 0.2f, 0.2f);
    EXPECT_EQ(rect.right(), 0.1f + 0.2f);
    EXPECT_EQ(rect.adjusted_percent(30).left(), 0.1f + 30 / 100.0f * 0.2f);
}

}  // namespace
