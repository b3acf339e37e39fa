// A field of the fourth generation: no socket, no sound, the frame timer stopped, so that only the
// test moves the ball.
#pragma once

#include "ze/net/IConnectionState.h"

#include "vork2d/early/GenerationTest.h"
#include "vork2d/v4/PlayField.h"

#include <QJsonObject>

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

class FieldV4 : public testing::Test {
protected:
    FieldV4() {
        log.ignore("Listener::~Listener@");
        field.flagSound = false;
        field.timer.stop();
        vork2d::v4::playStats = {};
        log.clear();
    }

    void fly(glm::vec2 pos, glm::vec2 dir, float velocity) {
        field.ball.pos = pos;
        field.ball.dir = dir;
        field.ball.velocity = velocity;
        field.set_state_RUN(true);
        log.clear();
    }

    LogCapture log;
    ConnectionStub connection;
    vork2d::v4::PlayField field{800, 400, connection};
};

}  // namespace test
