#include "ze/math/ViewPort.h"

#include "ze/math/Rect.h"
#include "ze/tools/format.h"

#include <QPoint>
#include <QPointF>

#include <cmath>

#include <gtest/gtest.h>

namespace {

using glm::vec2;
using ze::math::Rect;
using ze::math::ViewPort;

TEST(ViewPort, maps_pixels_to_minus_one_to_one_with_y_upward) {
    const ViewPort port(100, 100);
    EXPECT_EQ(port.get_ndc(QPoint(0, 0)), vec2(-1, 1));
    EXPECT_EQ(port.get_ndc(QPoint(100, 100)), vec2(1, -1));
    EXPECT_EQ(port.get_ndc(QPoint(50, 50)), vec2(0, 0));
    EXPECT_EQ(ViewPort(200, 50).get_ndc(QPoint(50, 75)), vec2(-0.5f, -2));
}

TEST(ViewPort, has_its_middle_at_half_its_sides) {
    EXPECT_EQ(ViewPort(100, 51).middle(), vec2(50, 25.5f));
    EXPECT_EQ(ViewPort(100, 51).middle_qpoint(), QPointF(50, 25.5));
}

TEST(ViewPort, is_valid_with_both_sides_above_zero) {
    EXPECT_TRUE(ViewPort(1, 1).is_valid());
    EXPECT_TRUE(static_cast<bool>(ViewPort(1, 1)));
    EXPECT_FALSE(ViewPort().is_valid());
    EXPECT_FALSE(ViewPort(1, 0).is_valid());
    EXPECT_FALSE(static_cast<bool>(ViewPort(-1, 1)));
    EXPECT_FALSE(ViewPort(NAN, 1).is_valid());
}

TEST(ViewPort, is_a_rectangle_at_the_origin) {
    EXPECT_EQ(ViewPort(100, 50).rect(), Rect(0, 0, 100, 50));
}

TEST(ViewPort, shows_its_sides_and_aspect) {
    EXPECT_EQ(ViewPort(800, 600).to_string(), "800.00 / 600.00, aspect:1.33");
    EXPECT_EQ(ze::str::xprintF(0, "$", ViewPort(1, 2)), "1.00 / 2.00, aspect:0.50");
}

TEST(ViewPort, shows_an_aspect_that_is_not_finite_as_one) {
    EXPECT_EQ(ViewPort(0, 0).to_string(), "0.00 / 0.00, aspect:1.00");
    EXPECT_EQ(ViewPort(5, 0).to_string(), "5.00 / 0.00, aspect:1.00");
}

}  // namespace
