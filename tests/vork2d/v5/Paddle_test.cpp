#include "vork2d/v5/Paddle.h"

#include "ze/qt/GPC.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace {

using vork2d::v5::Paddle;

TEST(Paddle, is_ten_by_eighty_and_white) {
    const Paddle paddle;
    EXPECT_EQ(paddle.size, ze::math::Size(10, 80));
    EXPECT_EQ(paddle.color, QColor(Qt::white));
}

TEST(Paddle, rect_is_centred_on_its_place) {
    Paddle paddle;
    paddle.pos = {-380, 60};
    EXPECT_EQ(paddle.rect(), ze::math::Rect(-385, 20, 10, 80));
}

TEST(Paddle, is_drawn_in_its_colour) {
    QImage image(20, 100, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    ze::qt::GPC gpc(painter);
    Paddle paddle;
    paddle.pos = {10, 50};
    paddle.color = Qt::yellow;
    paddle.draw(gpc);
    EXPECT_EQ(image.pixelColor(5, 10), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(14, 89), QColor(Qt::yellow));
    EXPECT_EQ(image.pixelColor(4, 50), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(10, 90), QColor(Qt::black));
}

}  // namespace
