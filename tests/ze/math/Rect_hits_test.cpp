#include "ze/math/Rect.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace ze::math {

void PrintTo(const RectHit& hit, std::ostream* out) {
    *out << hit.point.x << ',' << hit.point.y << " compass:" << hit.compass << " t:" << hit.t;
}

}  // namespace ze::math

namespace {

using glm::vec2;
using testing::ElementsAre;
using testing::IsEmpty;
using ze::math::Rect;
using ze::math::RectFirstHit;
using ze::math::RectHit;
using ze::math::Segment;

const Rect R(0, 0, 10, 20);

RectHit hit(float x, float y, unsigned compass, float t) {
    return {{x, y}, compass, t};
}

TEST(RectHits, a_segment_inside_intersects_without_a_hit) {
    const Segment inside(2, 2, 8, 8);
    EXPECT_TRUE(R.intersects(inside));
    EXPECT_THAT(R.get_intersections(inside), IsEmpty());
}

TEST(RectHits, a_segment_outside_does_not_intersect) {
    EXPECT_FALSE(R.intersects(Segment(-5, 0, -1, 20)));
    EXPECT_THAT(R.get_intersections(Segment(-5, 0, -1, 20)), IsEmpty());
    EXPECT_EQ(R.get_first_intersection(Segment(-5, 0, -1, 20)), RectFirstHit());
}

TEST(RectHits, the_tolerance_counts_for_the_ends_only) {
    EXPECT_TRUE(R.intersects(Segment(-5, 5, -1, 5), 1));
    EXPECT_FALSE(R.intersects(Segment(-1, -5, -1, 25), 2));
}

TEST(RectHits, a_segment_through_the_rectangle_crosses_two_edges_top_bottom_left_right) {
    EXPECT_THAT(R.get_intersections({-10, 10, 30, 10}),
                ElementsAre(hit(0, 10, 6, 0.25f), hit(10, 10, 2, 0.5f)));
    EXPECT_THAT(R.get_intersections({5, -20, 5, 60}),
                ElementsAre(hit(5, 20, 0, 0.5f), hit(5, 0, 4, 0.25f)));
}

TEST(RectHits, each_edge_gets_its_even_number) {
    EXPECT_THAT(R.get_intersections({5, 10, 5, 30}), ElementsAre(hit(5, 20, 0, 0.5f)));
    EXPECT_THAT(R.get_intersections({5, 10, 15, 10}), ElementsAre(hit(10, 10, 2, 0.5f)));
    EXPECT_THAT(R.get_intersections({5, 10, 5, -10}), ElementsAre(hit(5, 0, 4, 0.5f)));
    EXPECT_THAT(R.get_intersections({5, 10, -5, 10}), ElementsAre(hit(0, 10, 6, 0.5f)));
}

TEST(RectHits, a_corner_gets_its_odd_number_once) {
    EXPECT_THAT(R.get_intersections({8, 22, 12, 18}), ElementsAre(hit(10, 20, 1, 0.5f)));
    EXPECT_THAT(R.get_intersections({8, -2, 12, 2}), ElementsAre(hit(10, 0, 3, 0.5f)));
    EXPECT_THAT(R.get_intersections({-2, 2, 2, -2}), ElementsAre(hit(0, 0, 5, 0.5f)));
    EXPECT_THAT(R.get_intersections({-2, 18, 2, 22}), ElementsAre(hit(0, 20, 7, 0.5f)));
}

TEST(RectHits, the_ends_on_the_border_come_first) {
    EXPECT_THAT(R.get_intersections({10, 10, 5, 20}),
                ElementsAre(hit(10, 10, 2, 0), hit(5, 20, 0, 1)));
    EXPECT_THAT(R.get_intersections({5, 30, 5, 0}),
                ElementsAre(hit(5, 0, 4, 1), hit(5, 20, 0, 1.0f / 3.0f)));
}

TEST(RectHits, a_segment_along_an_edge_hits_its_ends) {
    EXPECT_THAT(R.get_intersections({0, 20, 10, 20}),
                ElementsAre(hit(0, 20, 7, 0), hit(10, 20, 1, 1)));
}

TEST(RectHits, a_point_on_the_border_is_one_hit_at_the_start) {
    EXPECT_THAT(R.get_intersections({10, 10, 10, 10}), ElementsAre(hit(10, 10, 2, 0)));
}

TEST(RectHits, an_end_within_the_tolerance_lies_on_the_border_and_beyond_it_only_crosses) {
    constexpr float WITHIN = 20.000005f;
    constexpr float BEYOND = 20.00005f;
    EXPECT_THAT(R.get_intersections({5, 10, 5, WITHIN}), ElementsAre(hit(5, WITHIN, 0, 1)));
    const auto crossing = R.get_intersections({5, 10, 5, BEYOND});
    ASSERT_EQ(crossing.size(), 1u);
    EXPECT_NEAR(crossing[0].point.y, 20, 1e-5);
    EXPECT_LT(crossing[0].t, 1.0f);
}

TEST(RectHits, far_from_the_origin_a_crossing_keeps_its_edge) {
    const Rect far(-400.7f, -200.3f, 801.1f, 400.9f);
    for (float x = -390; x < 390; x += 7.3f) {
        const auto hits = far.get_intersections({x, 0, x + 3.1f, 301.7f});
        ASSERT_EQ(hits.size(), 1u) << x;
        EXPECT_EQ(hits[0].compass, 0u) << x;
    }
}

TEST(RectHits, the_first_hit_is_the_one_nearest_to_the_start) {
    EXPECT_EQ(R.get_first_intersection({5, -20, 5, 60}), (RectFirstHit{hit(5, 0, 4, 0.25f), true}));
    EXPECT_EQ(R.get_first_intersection({5, 60, 5, -20}), (RectFirstHit{hit(5, 20, 0, 0.5f), true}));
}

TEST(RectHits, on_a_tie_the_first_found_is_first) {
    const Segment tiny(10, 10, 10, 10.001f);  // too short for a place along it, so that all are 0
    EXPECT_THAT(R.get_intersections(tiny), ElementsAre(hit(10, 10, 2, 0), hit(10, 10.001f, 2, 0)));
    EXPECT_EQ(R.get_first_intersection(tiny), (RectFirstHit{hit(10, 10, 2, 0), true}));
}

}  // namespace
