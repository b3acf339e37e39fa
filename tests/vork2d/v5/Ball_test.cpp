#include "vork2d/v5/Ball.h"

#include "ze/qt/GPC.h"

#include <QImage>
#include <QPainter>

#include <limits>

#include <gtest/gtest.h>

namespace {

using vork2d::v5::Ball;

TEST(Ball, starts_in_the_middle_toward_four_right_and_one_up) {
    const Ball ball;
    EXPECT_EQ(ball.pos, glm::vec2(0, 0));
    EXPECT_FLOAT_EQ(ball.dir.x, 4 * ball.dir.y);
    EXPECT_EQ(ball.size, 10.0f);
    EXPECT_EQ(ball.travelDistance, 0.0f);
}

TEST(Ball, rect_is_the_square_around_its_centre) {
    Ball ball;
    ball.pos = {100, -20};
    EXPECT_EQ(ball.rect(), ze::math::Rect(95, -25, 10, 10));
}

struct DirRow {
    glm::vec2 dir;
    bool left, right, up, down;
};

TEST(Ball, tells_the_sense_of_its_flight) {
    constexpr float NAN_F = std::numeric_limits<float>::quiet_NaN();
    const DirRow rows[] = {
        {{-0.6f, 0.8f}, true, false, true, false},
        {{0.6f, -0.8f}, false, true, false, true},
        {{0, 0}, false, false, false, false},
        {{NAN_F, NAN_F}, false, false, false, false},
    };
    for (const DirRow& row : rows) {
        Ball ball;
        ball.dir = row.dir;
        EXPECT_EQ(ball.is_dir_left(), row.left) << ball.to_string();
        EXPECT_EQ(ball.is_dir_right(), row.right) << ball.to_string();
        EXPECT_EQ(ball.is_dir_up(), row.up) << ball.to_string();
        EXPECT_EQ(ball.is_dir_down(), row.down) << ball.to_string();
    }
}

TEST(Ball, text_has_place_direction_and_speed) {
    Ball ball;
    ball.pos = {1, -2.5f};
    ball.dir = {0.6f, 0.8f};
    ball.velocity = 160;
    EXPECT_EQ(ball.to_string(), "pos:1.00, -2.50, dir:0.60, 0.80, velocity:160.00");
}

TEST(Ball, is_drawn_as_a_white_square) {
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    ze::qt::GPC gpc(painter);
    Ball ball;
    ball.pos = {20, 20};
    ball.draw(gpc);
    EXPECT_EQ(image.pixelColor(15, 15), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(24, 24), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(14, 20), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(20, 25), QColor(Qt::black));
}

}  // namespace
