// The input is lines, each a text frame as the relay may send it. The field takes them one after
// the other, some as its own commands, and steps on after each.

#include "ze/net/IConnectionState.h"

#include "support/check.h"
#include "vork2d/v5/PLAY_STATE.h"
#include "vork2d/v5/PlayField.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdint>
#include <memory>

namespace {

class Connected final : public ze::net::IConnectionState {
public:
    [[nodiscard]] bool is_connected() const override { return true; }
};

constexpr qsizetype FRAMES_AT_MOST = 64;  // of one input
constexpr int STEPS = 4;                  // behind each frame
constexpr unsigned long long MS_FRAME = 16;

/// The field as the window wires it, without the socket.
class Game {
public:
    Game() {
        field.timer.stop();
        field.flagSound = false;
        field.listenerBallExit += [this](ze::math::ORIENT2D::Type side) {
            ze::net::GPlay play;
            play.set_ball_out_of_field(side);
            field.on_play_message(play, ze::net::LOCAL);
        };
        field.listenerOutOfField += [this](ze::math::ORIENT2D::Type) {
            field.set_state_RUN(false);
        };
    }

    void take(const QByteArray& frame, ze::net::CONTROL_OWNER owner) {
        const std::unique_ptr<ze::net::GAbstractMessage> message(
            ze::net::GAbstractMessage::create_from_json(QJsonDocument::fromJson(frame).object()));
        if (const auto* const play = dynamic_cast<const ze::net::GPlay*>(message.get())) {
            field.on_play_message(*play, owner);
        }
        for (int i = 0; i < STEPS; ++i) {
            msNow += MS_FRAME;
            field.on_timer(msNow);
        }
        FUZZ_CHECK(field.tm_travel() >= 1 && field.tm_travel() <= 10000);
        FUZZ_CHECK(field.state == field.stateLast);
    }

private:
    Connected connection;
    vork2d::v5::PlayField field{800, 400, connection};
    unsigned long long msNow = 1;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    Game game;
    qsizetype count = 0;
    for (const QByteArray& frame : input.split('\n')) {
        // A line that begins with a blank is a command of the local player.
        game.take(frame, frame.startsWith(' ') ? ze::net::LOCAL : ze::net::REMOTE);
        if (++count == FRAMES_AT_MOST) {
            break;
        }
    }
    return 0;
}
