// What every field of v1 to v4 does alike, though each has it written out for itself.
#include "ze/net/IConnectionState.h"
#include "ze/tools/clock.h"

#include "vork2d/early/GenerationTest.h"
#include "vork2d/v1/PlayField.h"
#include "vork2d/v2/PlayField.h"
#include "vork2d/v3/PlayField.h"
#include "vork2d/v4/PlayField.h"

#include <QImage>

#include <limits>

#include <glm/geometric.hpp>

namespace {

namespace v1 = vork2d::v1;
namespace v2 = vork2d::v2;
namespace v3 = vork2d::v3;
namespace v4 = vork2d::v4;

class NoConnection final : public ze::net::IConnectionState {
public:
    [[nodiscard]] bool is_connected() const override { return false; }
};

NoConnection none;

/// The field of a generation, and its way to start a flight and to ask for its end.
template <typename PlayField>
class Field : public PlayField {
public:
    Field() : PlayField(800, 400) {}

    [[nodiscard]] bool flies() const { return this->is_flying(); }
    void set_flying() { this->state = PlayField::STATE_FLYING; }
};

template <>
class Field<v4::PlayField> : public v4::PlayField {
public:
    Field() : v4::PlayField(800, 400, none) { flagSound = false; }

    [[nodiscard]] bool flies() const { return is_state_RUN(); }
    void set_flying() { set_state_RUN(true); }
};

template <typename PlayField>
class EveryField : public testing::Test {
protected:
    EveryField() {
        log.ignore("Listener::~Listener@");
        field.timer.stop();
        log.clear();
    }

    void fly(glm::vec2 pos, glm::vec2 dir, float velocity) {
        field.ball.pos = pos;
        field.ball.dir = dir;
        field.ball.velocity = velocity;
        field.set_flying();
    }

    test::LogCapture log;
    Field<PlayField> field;
};

using Fields = testing::Types<v1::PlayField, v2::PlayField, v3::PlayField, v4::PlayField>;
TYPED_TEST_SUITE(EveryField, Fields);

TYPED_TEST(EveryField, is_a_canvas_of_800_by_400_in_field_units) {
    EXPECT_EQ(this->field.get_view_size(), ze::math::Size(800, 400));
    EXPECT_TRUE(this->field.is_coord_CARTESIAN());
}

TYPED_TEST(EveryField, ticks_every_16_milliseconds_from_its_start) {
    const Field<TypeParam> fresh;
    EXPECT_TRUE(fresh.timer.isActive());
    EXPECT_EQ(fresh.timer.interval(), 16);
}

TYPED_TEST(EveryField, stands_at_rest_with_a_paddle_on_each_side) {
    EXPECT_FALSE(this->field.flies());
    EXPECT_EQ(this->field.paddleLeft.pos, glm::vec2(-380, 0));
    EXPECT_EQ(this->field.paddleLeft.name, "LEFT");
    EXPECT_EQ(this->field.paddleRight.pos, glm::vec2(380, 0));
    EXPECT_EQ(this->field.paddleRight.name, "RIGHT");
    EXPECT_EQ(this->field.ball.velocity, 160.0f);
}

TYPED_TEST(EveryField, divides_its_width_by_the_time_of_travel) {
    struct Row {
        unsigned long long ms;
        float velocity;
    };
    for (const Row& row : {Row{5000, 160}, Row{1000, 800}, Row{1, 800000}, Row{0, 800000}}) {
        this->field.set_tm_travel(row.ms);
        EXPECT_FLOAT_EQ(this->field.ball.velocity, row.velocity) << row.ms;
    }
}

TYPED_TEST(EveryField, skips_a_tick_within_the_same_millisecond) {
    this->fly({0, 0}, {1, 0}, 100);
    this->field.on_timer(5000);
    EXPECT_EQ(this->field.ball.pos, glm::vec2(0, 0)) << "the first tick only takes the time";
    this->field.on_timer(5000);
    EXPECT_EQ(this->field.ball.pos, glm::vec2(0, 0));
    this->field.on_timer(5250);
    EXPECT_EQ(this->field.ball.pos, glm::vec2(25, 0));
}

TYPED_TEST(EveryField, bounces_a_level_ball_back_from_each_paddle) {
    this->fly({-360, 0}, {-1, 0}, 100);
    this->field.next_frame(0.125f);
    EXPECT_EQ(this->field.ball.dir, glm::vec2(1, 0));
    this->fly({360, 0}, {1, 0}, 100);
    this->field.next_frame(0.125f);
    EXPECT_EQ(this->field.ball.dir, glm::vec2(-1, 0));
}

TYPED_TEST(EveryField, lets_a_ball_pass_beside_a_paddle_and_ends_its_flight) {
    for (const float side : {-1.0f, 1.0f}) {
        this->field.paddleLeft.pos.y = 100;
        this->field.paddleRight.pos.y = 100;
        this->fly({side * 360, 0}, {side, 0}, 100);
        for (int frame = 0; frame < 10; ++frame) {
            this->field.next_frame(0.04f);
        }
        EXPECT_TRUE(this->field.flies()) << "400 is the edge, and the ball is not yet past it";
        this->field.next_frame(0.0625f);
        EXPECT_FALSE(this->field.flies());
        EXPECT_EQ(this->field.ball.dir, glm::vec2(side, 0));
    }
}

TYPED_TEST(EveryField, survives_a_ball_without_a_direction) {
    constexpr float NAN_F = std::numeric_limits<float>::quiet_NaN();
    this->fly({0, 0}, {NAN_F, NAN_F}, 100);
    this->field.next_frame(0.1f);
    EXPECT_TRUE(this->field.flies());
}

TYPED_TEST(EveryField, draws_its_ball_its_paddles_and_the_dotted_cross) {
    this->field.resize(800, 400);
    this->field.ball.pos = {100, -50};
    const QImage image = this->field.grab().toImage();
    EXPECT_EQ(image.pixelColor(500, 250), QColor(Qt::white));
    EXPECT_NE(image.pixelColor(20, 180), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(780, 180), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(600, 100), QColor(Qt::black));
    int dots = 0;
    for (int x = 50; x < 350; ++x) {
        const bool lit = image.pixelColor(x, 199) != QColor(Qt::black) ||
                         image.pixelColor(x, 200) != QColor(Qt::black);
        dots += lit ? 1 : 0;
    }
    EXPECT_GT(dots, 50);
    EXPECT_LT(dots, 300);
}

TYPED_TEST(EveryField, has_the_background_that_it_is_given) {
    this->field.resize(800, 400);
    this->field.colorBackground = Qt::darkBlue;
    EXPECT_EQ(this->field.grab().toImage().pixelColor(600, 100), QColor(Qt::darkBlue));
}

}  // namespace
