// Two windows of the fourth generation, paired through a relay: each computes the rally, and only
// the one that lost the ball reports it.
#include "PairRelay.h"
#include "vork2d/early/GenerationTest.h"
#include "vork2d/v4/PlayField.h"
#include "vork2d/v4/Window.h"

#include <QTest>

namespace {

using test::Lines;
using vork2d::v4::PlayField;
using vork2d::v4::Window;
namespace ORIENT2D = ze::math::ORIENT2D;

class TwoClients : public testing::Test {
protected:
    TwoClients() {
        log.ignore("Listener::~Listener@");
        enter(ann, QStringLiteral("g:Ann"));
        enter(ben, QStringLiteral("g:Ben"));
        EXPECT_TRUE(QTest::qWaitFor([this] { return ben.playField->side == ORIENT2D::RIGHT; }));
        log.clear();
    }

    ~TwoClients() override {
        ann.webSocket.abort();
        ben.webSocket.abort();
    }

    void enter(Window& window, const QString& user) {
        window.setup();
        window.playField->flagSound = false;
        window.playField->timer.stop();
        window.user = user;
        window.host = QStringLiteral("localhost");
        window.urlDevelopment = relay.address();
        window.on_connect();
        EXPECT_TRUE(QTest::qWaitFor([&window, this] {
            return &window == &ann
                       ? window.playField->is_state_CONNECTED1()
                       : both([](const PlayField& field) { return field.is_state_2_players(); });
        }));
    }

    template <typename Wish>
    [[nodiscard]] bool both(Wish wish) const {
        return wish(*ann.playField) && wish(*ben.playField);
    }

    /// A rally of Ann's, to the right, with Ben's paddle out of its way on both clients.
    void start_past_ben() {
        ben.playField->on_move_paddle({0, 160});
        ASSERT_TRUE(QTest::qWaitFor([this] {
            return both([](const PlayField& field) { return field.paddleRight.pos.y == 160; });
        }));
        ann.on_start_stop();
        // The serve is aimed at the paddle; where it goes then is no matter of the serve.
        ASSERT_TRUE(QTest::qWaitFor(
            [this] { return both([](const PlayField& field) { return field.is_state_RUN(); }); }));
        ben.playField->on_move_paddle({0, -160});
        ASSERT_TRUE(QTest::qWaitFor([this] {
            return both([](const PlayField& field) { return field.paddleRight.pos.y == -160; });
        }));
        relay.commands.clear();
        log.clear();
    }

    /// Frames of one client, in which nothing arrives, until its ball is beyond the right edge.
    static void fly_out(PlayField& field) {
        for (int frame = 0; frame < 1000 && field.ball.pos.x < 405; ++frame) {
            field.next_frame(0.016f);
        }
        ASSERT_GE(field.ball.pos.x, 405);
    }

    test::LogCapture log;
    test::PairRelay relay;
    Window ann;
    Window ben;
};

TEST_F(TwoClients, the_second_one_takes_the_other_side) {
    EXPECT_EQ(ann.playField->side, ORIENT2D::LEFT);
    EXPECT_EQ(ben.playField->side, ORIENT2D::RIGHT);
    EXPECT_EQ(ann.me.to_string(), "g:Ann, LEFT, countPoints:0");
    EXPECT_EQ(ann.opponent.to_string(), "g:Ben, RIGHT, countPoints:0");
    EXPECT_EQ(ben.opponent.to_string(), "g:Ann, LEFT, countPoints:0");
}

TEST_F(TwoClients, each_computes_the_rally) {
    ann.on_start_stop();
    ASSERT_TRUE(QTest::qWaitFor([this] { return ben.playField->is_state_RUN(); }));
    for (const Window* const window : {&ann, &ben}) {
        vork2d::v4::playStats = {};
        for (int frame = 0; frame < 350; ++frame) {
            window->playField->next_frame(0.016f);
        }
        EXPECT_EQ(vork2d::v4::playStats.hitsTop, 1U);
        EXPECT_EQ(vork2d::v4::playStats.hitsPaddleRight, 1U);
    }
    EXPECT_EQ(ann.playField->ball.pos, ben.playField->ball.pos);
    EXPECT_EQ(ann.playField->ball.dir, ben.playField->ball.dir);
}

TEST_F(TwoClients, only_the_one_that_lost_the_ball_reports_it) {
    start_past_ben();
    fly_out(*ann.playField);
    EXPECT_TRUE(both([](const PlayField& field) { return field.is_state_RUN(); }))
        << "Ann says nothing: the ball left on Ben's side";
    fly_out(*ben.playField);
    EXPECT_FALSE(ben.playField->is_state_RUN());
    EXPECT_TRUE(ann.playField->is_state_RUN()) << "until Ben's report has come";
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ann.playField->is_state_RUN(); }));
    ASSERT_TRUE(QTest::qWaitFor([this] { return relay.commands.size() == 2; }));
    EXPECT_EQ(relay.commands, (Lines{"g:Ben out_of_field", "g:Ann points"}));
}

TEST_F(TwoClients, both_count_the_point) {
    start_past_ben();
    fly_out(*ben.playField);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ann.playField->is_state_RUN(); }));
    EXPECT_EQ(ann.me.countPoints, 1U);
    EXPECT_EQ(ann.opponent.countPoints, 0U);
    EXPECT_EQ(ben.me.countPoints, 0U);
    EXPECT_EQ(ben.opponent.countPoints, 1U);
    for (const Window* const window : {&ann, &ben}) {
        EXPECT_EQ(window->playField->textLeft, QStringLiteral("1"));
        EXPECT_EQ(window->playField->textRight, QStringLiteral("0"));
    }
    EXPECT_EQ(test::count_lines(log.lines(), "*CONFIRMED*. ball out of field:RIGHT"), 2);
    EXPECT_EQ(test::count_lines(log.lines(), "point for me"), 1);
    EXPECT_EQ(test::count_lines(log.lines(), "point for opponent"), 1);
}

TEST_F(TwoClients, a_stop_ends_the_rally_on_both) {
    ann.on_start_stop();
    ASSERT_TRUE(QTest::qWaitFor([this] { return ben.playField->is_state_RUN(); }));
    relay.commands.clear();
    ben.on_start_stop();
    ASSERT_TRUE(QTest::qWaitFor([this] { return relay.commands.size() == 2; }));
    EXPECT_EQ(relay.commands, (Lines{"g:Ben stop", "g:Ben stop"}));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !ann.playField->is_state_RUN(); }));
}

TEST_F(TwoClients, a_number_set_on_one_is_set_on_both) {
    ann.on_time_devider_speed_set(1000);
    EXPECT_TRUE(QTest::qWaitFor([this] { return ben.playField->ball.velocity == 800.0f; }));
    EXPECT_EQ(ann.playField->ball.velocity, 800.0f);
}

}  // namespace
