#include "vork2d/v4/PlayField.h"

#include "ze/qt/GSoundEffect.h"
#include "ze/tools/clock.h"

#include "FieldV4.h"
#include "vork2d/v4/PLAY_STATE.h"

#include <QImage>
#include <QTest>

#include <utility>

#include <glm/geometric.hpp>

namespace {

using test::FieldV4;
using test::Lines;
using vork2d::v4::gSound;
using vork2d::v4::playStats;
namespace ORIENT2D = ze::math::ORIENT2D;

const QString BLOP = QStringLiteral(":/wb/shared-res/sounds/Blop1.wav");

[[nodiscard]] bool wait_for_sample() {
    return QTest::qWaitFor([] { return gSound->status() != QSoundEffect::Loading; });
}

TEST_F(FieldV4, each_side_serves_over_the_top_at_the_middle_of_the_other_paddle) {
    struct Row {
        ORIENT2D::Type side;
        glm::vec2 pos;
        glm::vec2 way;
    };
    for (const Row& row : {Row{ORIENT2D::LEFT, {-370, 0}, {740, 390}},
                           Row{ORIENT2D::RIGHT, {370, 0}, {-740, 390}}}) {
        field.on_play(row.side, 5000);
        EXPECT_EQ(field.ball.pos, row.pos);
        EXPECT_NEAR(glm::length(field.ball.dir - glm::normalize(row.way)), 0, 1e-6);
    }
}

TEST_F(FieldV4, a_serve_is_told_in_full) {
    field.on_play(ORIENT2D::LEFT, 5000);
    EXPECT_EQ(log.lines(), (Lines{"PlayField::set_tm_travel, ms:5000", "PLAY START LEFT SIDE",
                                  "ptStart:-370.00, 0.00", "ptTarget:370.00, 0.00",
                                  "yTopBall:195.00", "ptTargetMirror:370.00, 390.00",
                                  "ball:pos:-370.00, 0.00, dir:0.88, 0.47, velocity:160.00"}));
}

TEST_F(FieldV4, a_serve_sets_the_speed_and_starts_the_record) {
    playStats.hitsTop = 7;
    field.on_play(ORIENT2D::LEFT, 2000);
    EXPECT_EQ(field.ball.velocity, 400.0f);
    EXPECT_EQ(playStats.hitsTop, 0U);
    EXPECT_EQ(playStats.tmTravel, 2.0f);
    EXPECT_TRUE(field.is_state_RUN());
}

TEST_F(FieldV4, a_stop_shows_the_record_and_leaves_the_ball) {
    field.on_play(ORIENT2D::LEFT, 5000);
    field.next_frame(0.1f);
    const glm::vec2 pos = field.ball.pos;
    log.clear();
    field.on_stop();
    EXPECT_FALSE(field.is_state_RUN());
    EXPECT_EQ(field.ball.pos, pos);
    EXPECT_EQ(playStats.travelDistance, 16.0f);
    EXPECT_EQ(
        test::without_the_clock(log.lines()),
        (Lines{"STOPPED by user", "", "PlayStats, v4", "    hits top:0", "    hits bottom:0",
               "    hits pad left:0", "    hits pad right:0", "    all hits:0",
               "    tmTravel:5.00 sec", "    tmRefresh:16 ms", "    travelDistance:16.00", ""}));
}

TEST_F(FieldV4, each_bit_is_set_by_its_operation_and_reported_when_it_changes) {
    std::vector<unsigned> states;
    field.listenerState += [this, &states] {
        states.push_back(field.state);
    };
    field.set_state_CONNECTED1(true);
    field.set_state_CONNECTED1(true);
    field.set_state_CONNECTED2(true);
    field.set_state_RUN(true);
    field.set_state_CONNECTED2(false);
    field.set_state_CONNECTED1(false);
    field.set_state_RUN(false);
    EXPECT_EQ(states, (std::vector<unsigned>{2, 6, 14, 10, 8, 0}));
}

TEST_F(FieldV4, the_bits_are_read_one_by_one_and_in_pairs) {
    field.state = vork2d::v4::PLAY_STATE::CONNECTED1;
    EXPECT_TRUE(field.is_state_CONNECTED1());
    EXPECT_FALSE(field.is_state_CONNECTED2() || field.is_state_offline());
    EXPECT_FALSE(field.is_state_2_players() || field.is_state_RUN());
    field.state |= vork2d::v4::PLAY_STATE::CONNECTED2;
    EXPECT_TRUE(field.is_state_2_players());
    field.state = 0;
    EXPECT_TRUE(field.is_state_offline());
}

TEST_F(FieldV4, the_reading_of_the_time_of_travel_is_limited) {
    field.set_tm_travel(20000);
    EXPECT_EQ(field.tm_travel(), 10000U);
    field.set_tm_travel(0);
    EXPECT_EQ(field.tm_travel(), 1U);
}

TEST_F(FieldV4, the_timer_flies_only_in_a_rally) {
    field.on_timer(1000);
    field.on_timer(2000);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    field.on_play(ORIENT2D::LEFT, 5000);
    const unsigned long long now = ze::time::get_milli_seconds();
    field.on_timer(now + 1000);
    const glm::vec2 before = field.ball.pos;
    field.on_timer(now + 1100);
    EXPECT_NEAR(glm::length(field.ball.pos - before), 16, 1e-3);
}

TEST_F(FieldV4, a_sound_is_played_only_while_the_switch_is_on) {
    field.play_sound(BLOP);
    EXPECT_EQ(log.lines(), Lines());
    field.flagSound = true;
    field.play_sound(BLOP);
    EXPECT_EQ(log.lines().front(),
              "PlayField::play_sound ** <<<:/wb/shared-res/sounds/Blop1.wav>>>");
    EXPECT_TRUE(wait_for_sample());
}

TEST_F(FieldV4, a_sound_ends_with_its_field_and_the_effect_stays) {
    // Without a loudspeaker an effect that has loaded a sample plays no other one.
    delete std::exchange(gSound, nullptr);
    {
        vork2d::v4::PlayField gone(800, 400, connection);
        gone.play_sound(BLOP);
        EXPECT_TRUE(gSound->isPlaying());
    }
    EXPECT_FALSE(gSound->isPlaying());
    EXPECT_TRUE(wait_for_sample());
}

TEST_F(FieldV4, the_own_paddle_is_yellow) {
    field.resize(800, 400);
    const QImage left = field.grab().toImage();
    EXPECT_EQ(left.pixelColor(20, 180), QColor(Qt::yellow));
    EXPECT_EQ(left.pixelColor(780, 180), QColor(Qt::white));
    field.side = ORIENT2D::RIGHT;
    const QImage right = field.grab().toImage();
    EXPECT_EQ(right.pixelColor(20, 180), QColor(Qt::white));
    EXPECT_EQ(right.pixelColor(780, 180), QColor(Qt::yellow));
}

}  // namespace
