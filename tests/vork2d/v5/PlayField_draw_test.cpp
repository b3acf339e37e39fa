// What stands on the canvas: a widget as large as the field, so that a pixel is a field unit.
#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PlayStats.h"

#include <QImage>
#include <QPixmap>

#include <functional>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;

const QColor BLACK = Qt::black;
const QColor WHITE = Qt::white;
const QColor YELLOW = Qt::yellow;

class PlayFieldDraw : public test::FieldTest {
protected:
    PlayFieldDraw() { field.resize(800, 400); }

    [[nodiscard]] QImage picture() {
        return field.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    /// The pixel at a place in field units.
    static QColor at(const QImage& image, int x, int y) {
        return image.pixelColor(400 + x, 200 - y);
    }

    /// How many pixels of a part of the field, units from its top left, fulfil a wish.
    static int count(const QImage& image, QRect part, const std::function<bool(QColor)>& wish) {
        int found = 0;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                found += wish(image.pixelColor(x, y)) ? 1 : 0;
            }
        }
        return found;
    }
};

bool is_yellowish(QColor color) {
    return color.red() > 60 && color.green() > 60 && color.blue() < color.red() / 2;
}

bool is_greyish(QColor color) {
    return color.red() > 60 && color.red() == color.green() && color.green() == color.blue();
}

constexpr QRect LABEL_LEFT{50, 10, 100, 40};
constexpr QRect LABEL_RIGHT{650, 10, 150, 40};
constexpr QRect LABEL_INFO{50, 330, 200, 40};

TEST_F(PlayFieldDraw, the_ground_has_its_colour) {
    EXPECT_EQ(at(picture(), 200, 100), BLACK);
    field.colorBackground = Qt::darkBlue;
    EXPECT_EQ(at(picture(), 200, 100), QColor(Qt::darkBlue));
}

TEST_F(PlayFieldDraw, the_own_paddle_is_yellow_and_the_other_one_white) {
    const QImage left = picture();
    EXPECT_EQ(at(left, -380, 20), YELLOW);
    EXPECT_EQ(at(left, 380, 20), WHITE);
    field.side = ORIENT2D::RIGHT;
    const QImage right = picture();
    EXPECT_EQ(at(right, -380, 20), WHITE);
    EXPECT_EQ(at(right, 380, 20), YELLOW);
}

TEST_F(PlayFieldDraw, a_paddle_stands_where_it_was_moved) {
    field.paddleLeft.pos.y = 100;
    const QImage image = picture();
    EXPECT_EQ(at(image, -380, 139), YELLOW);
    EXPECT_EQ(at(image, -380, 61), YELLOW);
    EXPECT_EQ(at(image, -380, 58), BLACK);
    EXPECT_EQ(at(image, -380, 142), BLACK);
}

TEST_F(PlayFieldDraw, the_ball_is_white_where_it_is) {
    field.ball.pos = {100, -50};
    const QImage image = picture();
    EXPECT_EQ(at(image, 98, -48), WHITE);
    EXPECT_EQ(at(image, 102, -53), WHITE);
    EXPECT_EQ(at(image, 108, -50), BLACK);
}

TEST_F(PlayFieldDraw, a_dotted_cross_lies_over_everything) {
    const QImage image = picture();
    const int across = count(image, QRect(0, 199, 800, 3), is_greyish) -
                       count(image, QRect(0, 196, 800, 3), is_greyish);
    const int upright = count(image, QRect(399, 0, 3, 400), is_greyish) -
                        count(image, QRect(396, 0, 3, 400), is_greyish);
    EXPECT_GT(across, 200);
    EXPECT_LT(across, 600);
    EXPECT_GT(upright, 100);
    EXPECT_LT(upright, 300);
    const auto is_covered = [](QColor color) {
        return color != YELLOW;
    };
    EXPECT_GT(count(image, QRect(15, 199, 10, 3), is_covered), 0);  // in the own paddle
}

TEST_F(PlayFieldDraw, the_left_label_is_yellow_and_the_right_one_white) {
    field.textLeft = QStringLiteral("MMM");
    field.textRight = QStringLiteral("MMM");
    const QImage image = picture();
    EXPECT_GT(count(image, LABEL_LEFT, is_yellowish), 20);
    EXPECT_EQ(count(image, LABEL_LEFT, is_greyish), 0);
    EXPECT_GT(count(image, LABEL_RIGHT, is_greyish), 20);
    EXPECT_EQ(count(image, LABEL_RIGHT, is_yellowish), 0);
}

TEST_F(PlayFieldDraw, the_labels_let_half_of_the_ground_through) {
    field.textLeft = field.textRight = field.textInfo = QStringLiteral("MMM");
    const QImage image = picture();
    for (const QRect& label : {LABEL_LEFT, LABEL_RIGHT, LABEL_INFO}) {
        EXPECT_GT(count(image, label, [](QColor color) { return color.red() > 120; }), 20);
        EXPECT_EQ(count(image, label, [](QColor color) { return color.red() > 130; }), 0);
    }
}

TEST_F(PlayFieldDraw, the_right_label_ends_as_far_from_the_edge_as_the_left_one_begins) {
    field.textRight = QStringLiteral("MMM");
    field.fontSize = field.font().pointSize();
    const QImage image = picture();
    EXPECT_GT(count(image, QRect(735, 10, 15, 40), is_greyish), 0);
    EXPECT_EQ(count(image, QRect(751, 10, 49, 40), is_greyish), 0);
}

TEST_F(PlayFieldDraw, the_labels_stand_with_their_descenders_on_their_height) {
    field.textLeft = field.textRight = field.textInfo = QStringLiteral("gjpq");
    const QImage image = picture();
    const auto is_lit = [](QColor color) {
        return color.red() > 60;
    };
    for (const QPoint& corner : {QPoint(50, 40), QPoint(650, 40), QPoint(50, 360)}) {
        EXPECT_GT(count(image, QRect(corner - QPoint(0, 5), QSize(100, 5)), is_lit), 0);
        EXPECT_EQ(count(image, QRect(corner + QPoint(0, 1), QSize(100, 20)), is_lit), 0);
    }
}

TEST_F(PlayFieldDraw, an_empty_info_is_not_there) {
    EXPECT_EQ(count(picture(), LABEL_INFO, is_greyish), 0);
    field.textInfo = QStringLiteral("MMM");
    EXPECT_GT(count(picture(), LABEL_INFO, is_greyish), 20);
}

TEST_F(PlayFieldDraw, a_larger_font_gives_larger_labels) {
    field.textLeft = QStringLiteral("MMM");
    const int small = count(picture(), QRect(50, 0, 200, 60), is_yellowish);
    field.fontSize = 32;
    EXPECT_GT(count(picture(), QRect(50, 0, 200, 60), is_yellowish), 2 * small);
}

TEST_F(PlayFieldDraw, a_long_name_on_the_right_is_not_cut) {
    field.textRight = QStringLiteral("MMMMMMMMMMMM:12");
    for (const int size : {10, 16, 20}) {
        field.fontSize = size;
        const QImage image = picture();
        EXPECT_GT(count(image, QRect(735, 10, 15, 40), is_greyish), 0) << size;
        EXPECT_EQ(count(image, QRect(751, 10, 49, 40), is_greyish), 0) << size;
    }
}

TEST_F(PlayFieldDraw, a_name_without_end_keeps_to_its_half_and_shows_its_points) {
    const QString endless(1'000'000, QLatin1Char('M'));
    constexpr QRect LEFT_HALF{0, 0, 399, 60};
    constexpr QRect RIGHT_HALF{402, 0, 398, 60};
    for (const int size : {10, 16, 32}) {
        field.fontSize = size;
        field.textLeft = endless + QStringLiteral(":1");
        field.textRight = endless + QStringLiteral(":2");
        const QImage image = picture();
        EXPECT_GT(count(image, LEFT_HALF, is_yellowish), 100) << size;
        EXPECT_GT(count(image, RIGHT_HALF, is_greyish), 100) << size;
        EXPECT_EQ(count(image, LEFT_HALF, is_greyish), 0) << size;
        EXPECT_EQ(count(image, RIGHT_HALF, is_yellowish), 0) << size;
        field.textLeft = endless + QStringLiteral(":3");
        field.textRight = endless + QStringLiteral(":4");
        const QImage later = picture();
        EXPECT_NE(image.copy(LEFT_HALF), later.copy(LEFT_HALF)) << size;
        EXPECT_NE(image.copy(RIGHT_HALF), later.copy(RIGHT_HALF)) << size;
    }
}

TEST_F(PlayFieldDraw, every_picture_counts_as_a_frame) {
    vork2d::v5::playStats.frames = 5;
    static_cast<void>(picture());
    EXPECT_EQ(vork2d::v5::playStats.frames, 6U);
}

TEST_F(PlayFieldDraw, drawing_moves_nothing) {
    field.on_play(ORIENT2D::LEFT, 5000);
    const glm::vec2 pos = field.ball.pos;
    static_cast<void>(picture());
    EXPECT_EQ(field.ball.pos, pos);
}

}  // namespace
