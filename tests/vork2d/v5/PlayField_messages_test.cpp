// What each play message means to the field, and who becomes master.
#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PlayStats.h"

#include <QJsonArray>

#include <string>
#include <utility>
#include <vector>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
using test::play_message;
using ze::net::CONTROL_OWNER;
using ze::net::GPlay;
using ze::net::LOCAL;
using ze::net::REMOTE;

QJsonObject payload(const char* cmd) {
    return {{QStringLiteral("cmd"), QLatin1String(cmd)}};
}

class PlayFieldMessages : public test::FieldTest {
protected:
    std::vector<std::string> fired;

    PlayFieldMessages() {
        field.listenerMaster += [this](bool flag) {
            fired.push_back(flag ? "master" : "follower");
        };
        field.listenerStart += [this](CONTROL_OWNER owner) {
            note("start", owner);
        };
        field.listenerStop += [this](CONTROL_OWNER owner) {
            note("stop", owner);
        };
        field.listenerOrient += [this](ORIENT2D::Type side) {
            note("orient", side);
        };
        field.listenerOutOfField += [this](ORIENT2D::Type side) {
            note("out", side);
        };
        field.listenerTravel += [this](int ms) {
            fired.push_back("travel " + std::to_string(ms));
        };
        field.listenerState += [this] {
            fired.push_back("state " + std::to_string(field.state));
        };
    }

    void play(const QJsonObject& object, CONTROL_OWNER owner) {
        field.on_play_message(play_message(object), owner);
    }

    std::vector<std::string> take_fired() { return std::exchange(fired, {}); }

private:
    void note(const std::string& what, unsigned value) {
        fired.push_back(what + ' ' + std::to_string(value));
    }
};

using Texts = std::vector<std::string>;

// The door

TEST_F(PlayFieldMessages, a_payload_that_is_no_object_is_refused) {
    const QJsonValue broken[] = {
        QJsonValue::Null,     true, 5, QStringLiteral("start"), QJsonArray{1, 2},
        QJsonValue::Undefined};
    for (const QJsonValue& value : broken) {
        log.expect_error("PlayField::on_play_message, !play.payload.isObject()");
        field.on_play_message(play_message(value), REMOTE);
    }
    EXPECT_EQ(fired, Texts());
}

TEST_F(PlayFieldMessages, an_unknown_command_is_dropped_in_silence) {
    for (const char* cmd : {"keyReleased", "points", "string", "Start", "", "setball"}) {
        play(payload(cmd), REMOTE);
    }
    play({}, REMOTE);
    play({{QStringLiteral("cmd"), 5}}, REMOTE);
    EXPECT_EQ(fired, Texts());
    EXPECT_EQ(log.lines(), Texts());
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(field.paddleLeft.pos.y, 0.0f);
}

/// Counts the repaints that a shown widget gets.
class PaintCount : public QObject {
public:
    int count = 0;
    bool eventFilter(QObject*, QEvent* ev) override {
        count += ev->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

TEST_F(PlayFieldMessages, every_object_repaints_the_field_and_a_refused_payload_does_not) {
    field.show();
    PaintCount paints;
    const auto settle = [&paints] {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        return std::exchange(paints.count, 0);
    };
    settle();
    field.installEventFilter(&paints);
    settle();
    play(payload("unknown"), REMOTE);
    EXPECT_EQ(settle(), 1);
    log.expect_error("PlayField::on_play_message, !play.payload.isObject()");
    field.on_play_message(play_message({}), REMOTE);
    EXPECT_EQ(settle(), 0);
}

TEST_F(PlayFieldMessages, keyPressed_steps_the_paddle_of_its_owner) {
    QJsonObject key = payload("keyPressed");
    key[QStringLiteral("keySequence")] = QStringLiteral("Up");
    play(key, REMOTE);
    EXPECT_EQ(field.paddleRight.pos.y, 25.0f);
    play(key, LOCAL);
    EXPECT_EQ(field.paddleLeft.pos.y, 25.0f);
}

// orientation

TEST_F(PlayFieldMessages, orientation_takes_the_side_opposite_to_the_sender) {
    GPlay message = play_message({});
    message.set_orient(ORIENT2D::LEFT);
    field.on_play_message(message, REMOTE);
    EXPECT_EQ(field.side, ORIENT2D::RIGHT);
    message.set_orient(ORIENT2D::RIGHT);
    field.on_play_message(message, REMOTE);
    EXPECT_EQ(field.side, ORIENT2D::LEFT);
    EXPECT_EQ(fired, (Texts{"orient 1", "orient 0"}));
}

TEST_F(PlayFieldMessages, orientation_up_or_down_is_reported_and_changes_nothing) {
    field.side = ORIENT2D::RIGHT;
    GPlay message = play_message({});
    message.set_orient(ORIENT2D::UP);
    log.expect_error("PlayField::on_play_message, orient <<<UP>>> not supported");
    field.on_play_message(message, REMOTE);
    message.set_orient(ORIENT2D::DOWN);
    log.expect_error("PlayField::on_play_message, orient <<<DOWN>>> not supported");
    field.on_play_message(message, REMOTE);
    EXPECT_EQ(field.side, ORIENT2D::RIGHT);
    EXPECT_EQ(fired, Texts());
}

// start

TEST_F(PlayFieldMessages, who_starts_a_rally_is_its_master) {
    field.on_play_message(test::start_message(ORIENT2D::LEFT, 4000), LOCAL);
    EXPECT_TRUE(field.is_master());
    EXPECT_EQ(take_fired(), (Texts{"master", "state 8", "start 0"}));
    field.on_play_message(test::start_message(ORIENT2D::RIGHT, 4000), REMOTE);
    EXPECT_FALSE(field.is_master());
    EXPECT_EQ(take_fired(), (Texts{"follower", "start 1"}));
}

TEST_F(PlayFieldMessages, a_start_serves_from_the_side_in_the_message_on_both_clients) {
    for (const CONTROL_OWNER owner : {LOCAL, REMOTE}) {
        field.on_play_message(test::start_message(ORIENT2D::RIGHT, 4000), owner);
        EXPECT_EQ(field.ball.pos, glm::vec2(370, 0));
        EXPECT_EQ(field.ball.velocity, 200.0f);
        EXPECT_TRUE(field.is_state_PLAY());
    }
}

TEST_F(PlayFieldMessages, a_start_during_a_rally_makes_this_client_the_follower) {
    field.on_play_message(test::start_message(ORIENT2D::LEFT, 5000), LOCAL);
    field.next_frame(1);
    field.on_play_message(test::start_message(ORIENT2D::RIGHT, 5000), REMOTE);
    EXPECT_FALSE(field.is_master());
    EXPECT_EQ(field.ball.pos, glm::vec2(370, 0));
    EXPECT_TRUE(field.is_state_PLAY());
}

TEST_F(PlayFieldMessages, a_start_without_a_time_takes_five_seconds) {
    log.expect_error("PlayMessage::get_int, 'msTravel' missing or invalid");
    QJsonObject start = payload("start");
    start[QStringLiteral("orient")] = QStringLiteral("LEFT");
    play(start, REMOTE);
    EXPECT_EQ(field.tmTravel, 5.0f);
}

TEST_F(PlayFieldMessages, a_start_with_a_bad_side_serves_from_the_left) {
    log.expect_error("ORIENT2D::from_string, cannot parse <<<left>>>");
    QJsonObject start = payload("start");
    start[QStringLiteral("orient")] = QStringLiteral("left");
    start[QStringLiteral("msTravel")] = 5000;
    play(start, REMOTE);
    EXPECT_EQ(field.ball.pos, glm::vec2(-370, 0));
}

TEST_F(PlayFieldMessages, a_start_with_a_time_below_0_runs_and_never_moves) {
    QJsonObject start = payload("start");
    start[QStringLiteral("orient")] = QStringLiteral("LEFT");
    start[QStringLiteral("msTravel")] = -1;
    play(start, LOCAL);
    field.next_frame(1);
    EXPECT_TRUE(field.is_state_PLAY());
    EXPECT_EQ(field.ball.pos, glm::vec2(-370, 0));
    EXPECT_EQ(field.tm_travel(), 10000U);
}

// stop

TEST_F(PlayFieldMessages, a_stop_leaves_no_master_whoever_sent_it) {
    for (const CONTROL_OWNER owner : {LOCAL, REMOTE}) {
        field.on_play_message(test::start_message(ORIENT2D::LEFT, 5000), LOCAL);
        fired.clear();
        log.clear();
        play(payload("stop"), owner);
        EXPECT_FALSE(field.is_master());
        EXPECT_FALSE(field.is_state_PLAY());
        EXPECT_EQ(log.lines().front(), "STOPPED by user");
        EXPECT_EQ(fired, (Texts{"follower", "state 0", "stop " + std::to_string(owner)}));
    }
}

// out_of_field

TEST_F(PlayFieldMessages, out_of_field_is_passed_on_with_its_side) {
    GPlay message = play_message({});
    message.set_ball_out_of_field(ORIENT2D::RIGHT);
    field.on_play_message(message, REMOTE);
    EXPECT_EQ(fired, Texts{"out 1"});
}

TEST_F(PlayFieldMessages, out_of_field_itself_ends_no_rally_and_changes_no_master) {
    field.on_play_message(test::start_message(ORIENT2D::LEFT, 5000), LOCAL);
    GPlay message = play_message({});
    message.set_ball_out_of_field(ORIENT2D::LEFT);
    field.on_play_message(message, REMOTE);
    EXPECT_TRUE(field.is_state_PLAY());
    EXPECT_TRUE(field.is_master());
}

// travel

struct TravelRow {
    int ms;
    bool taken;
};

TEST_F(PlayFieldMessages, travel_is_taken_in_its_range_and_passed_on_always) {
    const TravelRow rows[] = {{0, false}, {1, true}, {10000, true}, {10001, false}, {-5, false}};
    for (const TravelRow& row : rows) {
        field.set_tm_travel(5000);
        fired.clear();
        log.clear();
        QJsonObject travel = payload("travel");
        travel[QStringLiteral("msTravel")] = row.ms;
        play(travel, REMOTE);
        EXPECT_EQ(field.tmTravel, row.taken ? static_cast<float>(row.ms) / 1000 : 5.0f) << row.ms;
        EXPECT_EQ(fired, Texts{"travel " + std::to_string(row.ms)});
        EXPECT_EQ(log.lines_with_level().front(), "INF tmTravel, ms:" + std::to_string(row.ms));
    }
}

TEST_F(PlayFieldMessages, travel_changes_the_speed_of_a_running_rally) {
    field.on_play_message(test::start_message(ORIENT2D::LEFT, 5000), LOCAL);
    GPlay message = play_message({});
    message.set_travel(1000);
    field.on_play_message(message, LOCAL);
    EXPECT_EQ(field.ball.velocity, 800.0f);
}

// setBall

TEST_F(PlayFieldMessages, setBall_overwrites_place_direction_and_speed) {
    field.ball.travelDistance = 12;
    GPlay message = play_message({});
    message.set_ball({10.5f, -20.25f}, {0.6f, 0.8f}, 321.5f);
    field.on_play_message(message, REMOTE);
    EXPECT_EQ(field.ball.pos, glm::vec2(10.5f, -20.25f));
    EXPECT_EQ(field.ball.dir, glm::vec2(0.6f, 0.8f));
    EXPECT_EQ(field.ball.velocity, 321.5f);
    EXPECT_EQ(field.ball.travelDistance, 12.0f);
    EXPECT_EQ(log.lines_with_level(), Texts{"WRN GET BALL SYNC"});
}

TEST_F(PlayFieldMessages, setBall_without_its_keys_stands_still_in_the_middle) {
    make_follower();
    log.expect_error("PlayMessage::get_std_string('pos') , no value");
    log.expect_error("PlayMessage::get_std_string('dir') , no value");
    log.expect_error("PlayMessage::get_float, 'velocity' missing or invalid");
    play(payload("setBall"), REMOTE);
    field.next_frame(1);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(field.ball.velocity, 0.0f);
}

TEST_F(PlayFieldMessages, setBall_without_a_rally_moves_the_ball_all_the_same) {
    GPlay message = play_message({});
    message.set_ball({1, 2}, {1, 0}, 3);
    field.on_play_message(message, REMOTE);
    EXPECT_FALSE(field.is_state_PLAY());
    EXPECT_EQ(field.ball.pos, glm::vec2(1, 2));
}

TEST_F(PlayFieldMessages, setBall_with_numbers_beyond_all_measure_ends_every_frame) {
    field.on_play_message(test::start_message(ORIENT2D::LEFT, 5000), LOCAL);
    QJsonObject ball = payload("setBall");
    ball[QStringLiteral("pos")] = QStringLiteral("3e38,-3e38");
    ball[QStringLiteral("dir")] = QStringLiteral("3e38,3e38");
    ball[QStringLiteral("velocity")] = 1e308;
    play(ball, REMOTE);
    log.clear();
    ze::log::remove_log_appender(&log);  // which errors come is not the matter here
    for (int i = 0; i < 10; ++i) {
        field.next_frame(0.016f);
    }
    EXPECT_LE(vork2d::v5::playStats.all_hits(), 80U);
}

}  // namespace
