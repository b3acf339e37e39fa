// A field of the game's size for a test: no socket, no sound, the frame timer stopped, so that only
// the test moves the ball. An error line that the test did not announce fails it.
#pragma once

#include "ze/net/IConnectionState.h"

#include "support/LogCapture.h"
#include "vork2d/v5/PlayField.h"

#include <QJsonObject>

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace test {

class ConnectionStub final : public ze::net::IConnectionState {
public:
    bool flagConnected = false;

    [[nodiscard]] bool is_connected() const override { return flagConnected; }
};

inline ze::net::GPlay play_message(const QJsonValue& payload) {
    ze::net::GPlay play = ze::net::GPlay::from_args(QStringLiteral("group1:Nilo"),
                                                    QStringLiteral("#"), QStringLiteral("vork"));
    play.payload = payload;
    return play;
}

inline ze::net::GPlay start_message(ze::math::ORIENT2D::Type side, unsigned long long ms) {
    ze::net::GPlay play = play_message({});
    play.set_start(side, ms);
    return play;
}

class FieldTest : public testing::Test {
protected:
    LogCapture log;
    ConnectionStub connection;
    vork2d::v5::PlayField field{vork2d::v5::rules::FIELD_WIDTH, vork2d::v5::rules::FIELD_HEIGHT,
                                connection};

    FieldTest() {
        log.ignore("Listener::~Listener@");
        field.flagSound = false;
        field.timer.stop();
        log.clear();
    }

    /// Puts the ball somewhere with a speed in field units per second, as master, in a rally.
    void fly(glm::vec2 pos, glm::vec2 dir, float velocity) {
        field.ball.pos = pos;
        field.ball.dir = dir;
        field.ball.velocity = velocity;
        field.set_state_RUN(true);
        log.clear();
    }

    void make_follower() {
        field.on_play_message(start_message(ze::math::ORIENT2D::LEFT, 5000), ze::net::REMOTE);
        log.clear();
    }

    /// The lines so far that begin so.
    [[nodiscard]] std::vector<std::string> lines_from(const std::string& prefix) const {
        std::vector<std::string> found = log.lines();
        std::erase_if(found,
                      [&prefix](const std::string& line) { return !line.starts_with(prefix); });
        return found;
    }
};

}  // namespace test
