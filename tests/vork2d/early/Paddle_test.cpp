// The paddle is the same in the first four generations, but each has its own.
#include "vork2d/v1/Paddle.h"

#include "ze/qt/GPC.h"

#include "vork2d/v2/Paddle.h"
#include "vork2d/v3/Paddle.h"
#include "vork2d/v4/Paddle.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

template <typename T>
class EarlyPaddle : public testing::Test {};

using Paddles =
    testing::Types<vork2d::v1::Paddle, vork2d::v2::Paddle, vork2d::v3::Paddle, vork2d::v4::Paddle>;
TYPED_TEST_SUITE(EarlyPaddle, Paddles);

TYPED_TEST(EarlyPaddle, is_ten_by_eighty_around_its_centre) {
    TypeParam paddle;
    paddle.pos = {-380, 60};
    EXPECT_EQ(paddle.rect(), ze::math::Rect(-385, 20, 10, 80));
}

TYPED_TEST(EarlyPaddle, is_drawn_in_its_colour) {
    QImage image(20, 100, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    ze::qt::GPC gpc(painter);
    TypeParam paddle;
    paddle.pos = {10, 50};
    paddle.color = Qt::yellow;
    paddle.draw(gpc);
    EXPECT_EQ(image.pixelColor(5, 10), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(14, 89), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(4, 50), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(10, 90), QColor(Qt::black));
}

}  // namespace
