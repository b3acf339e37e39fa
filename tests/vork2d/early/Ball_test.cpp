// The ball is the same in the first four generations, but each has its own.
#include "vork2d/v1/Ball.h"

#include "ze/qt/GPC.h"

#include "vork2d/v2/Ball.h"
#include "vork2d/v3/Ball.h"
#include "vork2d/v4/Ball.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

template <typename T>
class EarlyBall : public testing::Test {};

using Balls =
    testing::Types<vork2d::v1::Ball, vork2d::v2::Ball, vork2d::v3::Ball, vork2d::v4::Ball>;
TYPED_TEST_SUITE(EarlyBall, Balls);

TYPED_TEST(EarlyBall, starts_in_the_middle_toward_four_right_and_one_up) {
    const TypeParam ball;
    EXPECT_EQ(ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(ball.dir, glm::vec2(0.97014254f, 0.24253564f));
    EXPECT_EQ(ball.size, 10.0f);
}

TYPED_TEST(EarlyBall, rect_is_the_square_around_its_centre) {
    TypeParam ball;
    ball.pos = {100, -20};
    EXPECT_EQ(ball.rect(), ze::math::Rect(95, -25, 10, 10));
}

TYPED_TEST(EarlyBall, tells_the_sense_of_its_flight) {
    TypeParam ball;
    ball.dir = {-0.6f, 0.8f};
    EXPECT_TRUE(ball.is_dir_left() && ball.is_dir_up());
    EXPECT_FALSE(ball.is_dir_right() || ball.is_dir_down());
    ball.dir = {0.6f, -0.8f};
    EXPECT_TRUE(ball.is_dir_right() && ball.is_dir_down());
    EXPECT_FALSE(ball.is_dir_left() || ball.is_dir_up());
}

TYPED_TEST(EarlyBall, text_has_place_direction_and_speed) {
    TypeParam ball;
    ball.pos = {1, -2.5f};
    ball.dir = {0.6f, 0.8f};
    ball.velocity = 160;
    EXPECT_EQ(ball.to_string(), "pos:1.00, -2.50, dir:0.60, 0.80, velocity:160.00");
}

TYPED_TEST(EarlyBall, is_drawn_as_a_white_square) {
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    ze::qt::GPC gpc(painter);
    TypeParam ball;
    ball.pos = {20, 20};
    ball.draw(gpc);
    EXPECT_EQ(image.pixelColor(15, 24), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(14, 20), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(20, 25), QColor(Qt::black));
}

}  // namespace
