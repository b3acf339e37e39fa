#include "FieldV4.h"

#include <QKeyEvent>

#include <vector>

namespace {

using test::Lines;
using test::play_message;
using ze::net::GPlay;
using ze::net::LOCAL;
using ze::net::REMOTE;
namespace ORIENT2D = ze::math::ORIENT2D;

class FieldV4Messages : public test::FieldV4 {};

TEST_F(FieldV4Messages, a_payload_that_is_no_object_is_refused) {
    log.expect_error("PlayField::on_play_message, !play.payload.isObject()");
    field.on_play_message(play_message(QStringLiteral("start")), REMOTE);
}

TEST_F(FieldV4Messages, a_start_serves_on_every_client_and_tells_who_did_it) {
    std::vector<ze::net::CONTROL_OWNER> owners;
    field.listenerStart += [&owners](ze::net::CONTROL_OWNER owner) {
        owners.push_back(owner);
    };
    field.on_play_message(test::start_message(ORIENT2D::RIGHT, 2000), REMOTE);
    EXPECT_TRUE(field.is_state_RUN());
    EXPECT_EQ(field.ball.pos, glm::vec2(370, 0));
    EXPECT_EQ(field.ball.velocity, 400.0f);
    field.on_play_message(test::start_message(ORIENT2D::LEFT, 5000), LOCAL);
    EXPECT_EQ(owners, (std::vector{REMOTE, LOCAL}));
}

TEST_F(FieldV4Messages, a_start_of_the_other_one_leaves_this_client_its_own_computer) {
    field.on_play_message(test::start_message(ORIENT2D::LEFT, 5000), REMOTE);
    field.next_frame(2.7f);  // past the top
    EXPECT_EQ(vork2d::v4::playStats.hitsTop, 1U);
}

TEST_F(FieldV4Messages, a_stop_ends_the_rally) {
    field.on_play_message(test::start_message(ORIENT2D::LEFT, 5000), LOCAL);
    GPlay stop = play_message({});
    stop.set_stop();
    unsigned stops = 0;
    field.listenerStop += [&stops](ze::net::CONTROL_OWNER) {
        ++stops;
    };
    field.on_play_message(stop, REMOTE);
    EXPECT_FALSE(field.is_state_RUN());
    EXPECT_EQ(stops, 1U);
}

TEST_F(FieldV4Messages, the_side_of_the_other_one_leaves_the_opposite) {
    GPlay play = play_message({});
    play.set_orient(ORIENT2D::LEFT);
    field.on_play_message(play, REMOTE);
    EXPECT_EQ(field.side, ORIENT2D::RIGHT);
    play.set_orient(ORIENT2D::RIGHT);
    field.on_play_message(play, REMOTE);
    EXPECT_EQ(field.side, ORIENT2D::LEFT);
    play.set_orient(ORIENT2D::UP);
    log.expect_error("PlayField::on_play_message, orient <<<UP>>> not supported");
    field.on_play_message(play, REMOTE);
    EXPECT_EQ(field.side, ORIENT2D::LEFT);
}

TEST_F(FieldV4Messages, an_out_of_field_is_handed_on) {
    std::vector<ORIENT2D::Type> sides;
    field.listenerOutOfField += [&sides](ORIENT2D::Type side) {
        sides.push_back(side);
    };
    GPlay play = play_message({});
    play.set_ball_out_of_field(ORIENT2D::RIGHT);
    field.on_play_message(play, REMOTE);
    EXPECT_EQ(sides, std::vector{ORIENT2D::RIGHT});
}

TEST_F(FieldV4Messages, a_travel_outside_its_range_leaves_the_speed) {
    std::vector<int> told;
    field.listenerTravel += [&told](int ms) {
        told.push_back(ms);
    };
    for (const unsigned ms : {1000U, 0U, 10001U}) {
        GPlay play = play_message({});
        play.set_travel(ms);
        field.on_play_message(play, REMOTE);
        EXPECT_EQ(field.ball.velocity, 800.0f) << ms;
    }
    EXPECT_EQ(told, (std::vector{1000, 0, 10001}));
}

TEST_F(FieldV4Messages, a_forwarded_key_moves_the_paddle_of_the_other_one) {
    const QKeyEvent up(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier);
    GPlay play = play_message({});
    play.set_key_event(&up);
    field.on_play_message(play, REMOTE);
    EXPECT_EQ(field.paddleRight.pos.y, 25.0f);
    EXPECT_EQ(field.paddleLeft.pos.y, 0.0f);
}

TEST_F(FieldV4Messages, a_set_ball_is_dropped) {
    GPlay play = play_message({});
    play.set_ball({10, 20}, {0, 1}, 999);
    field.on_play_message(play, REMOTE);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(field.ball.velocity, 160.0f);
    EXPECT_EQ(log.lines(), Lines());
}

}  // namespace
