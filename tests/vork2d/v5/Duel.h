// Two fields in one process that play one rally, joined by a line that carries the texts of the
// messages and delivers each of them so many milliseconds later, in order. Each seat does what the
// window of the game does with the field's listeners.
#pragma once

#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PLAY_STATE.h"

#include <QJsonDocument>

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace test {

/// One player: his field, the score as he counts it, and what he has to send.
class Seat {
public:
    struct Packet {
        unsigned long long msSent = 0;
        QByteArray text;
    };

    ConnectionStub connection;
    vork2d::v5::PlayField field{vork2d::v5::rules::FIELD_WIDTH, vork2d::v5::rules::FIELD_HEIGHT,
                                connection};
    unsigned points = 0;
    unsigned pointsOpponent = 0;
    std::deque<Packet> line;         ///< on its way to the other seat
    std::vector<std::string> words;  ///< the commands sent so far
    unsigned long long msNow = 0;

    Seat() {
        connection.flagConnected = true;
        field.timer.stop();
        field.flagSound = false;
        field.state = vork2d::v5::PLAY_STATE::CONNECTED1 | vork2d::v5::PLAY_STATE::CONNECTED2;
        field.listenerBallHit += [this] {
            send_ball();
        };
        field.listenerBallExit += [this](ze::math::ORIENT2D::Type side) {
            ze::net::GPlay play = play_message({});
            play.set_ball_out_of_field(side);
            command(play);
        };
        field.listenerOutOfField += [this](ze::math::ORIENT2D::Type side) {
            field.set_state_RUN(false);
            ++(side == field.side ? pointsOpponent : points);
        };
        field.listenerPaddle += [this](const ze::net::GPlay& play) {
            command(play);
        };
    }

    /// Plays a command of the local player and sends it.
    void command(const ze::net::GPlay& play) {
        field.on_play_message(play, ze::net::LOCAL);
        send(play);
    }

    void press_start() { command(start_message(field.side, field.tm_travel())); }

    void press_stop() {
        ze::net::GPlay play = play_message({});
        play.set_stop();
        command(play);
    }

    void move_paddle(float y) { field.on_move_paddle({0, y}, false); }

    void receive(const QByteArray& text) {
        const std::unique_ptr<ze::net::GAbstractMessage> message(
            ze::net::GAbstractMessage::create_from_json(QJsonDocument::fromJson(text).object()));
        const auto* const play = dynamic_cast<const ze::net::GPlay*>(message.get());
        ASSERT_NE(play, nullptr);
        field.on_play_message(*play, ze::net::REMOTE);
    }

private:
    void send_ball() {
        ze::net::GPlay play = play_message({});
        play.set_ball(field.ball.pos, field.ball.dir, field.ball.velocity);
        send(play);
    }

    void send(const ze::net::GPlay& play) {
        QJsonObject object;
        play.to_json(object);
        words.push_back(
            play.payload.toObject().value(QStringLiteral("cmd")).toString().toStdString());
        line.push_back({msNow, QJsonDocument(object).toJson(QJsonDocument::Compact)});
    }
};

class Duel {
public:
    static constexpr unsigned long long MS_FRAME = 10;

    Seat a;  ///< on the left
    Seat b;  ///< on the right

    explicit Duel(unsigned long long msDelayOfLine) : msDelay(msDelayOfLine) {
        ze::net::GPlay play = play_message({});
        play.set_orient(ze::math::ORIENT2D::LEFT);
        b.field.on_play_message(play, ze::net::REMOTE);
    }

    /// One frame of both clients: what has arrived by then, then the step.
    void step() {
        msNow += MS_FRAME;
        a.msNow = b.msNow = msNow;
        deliver();
        for (Seat* const seat : {&a, &b}) {
            if (seat->field.is_state_PLAY()) {
                seat->field.next_frame(static_cast<float>(MS_FRAME) / 1000.0f);
            }
        }
    }

    /// Steps until the wish is fulfilled; false when a minute of the game was not enough.
    template <typename Wish>
    [[nodiscard]] bool run_until(Wish wish) {
        for (unsigned long long ms = 0; ms < 60'000; ms += MS_FRAME) {
            if (wish()) {
                return true;
            }
            step();
        }
        return false;
    }

    /// Steps until nothing is on the line.
    void settle() {
        while (!a.line.empty() || !b.line.empty()) {
            step();
        }
    }

private:
    void deliver() {
        deliver(a, b);
        deliver(b, a);
    }

    void deliver(Seat& from, Seat& to) {
        while (!from.line.empty() && from.line.front().msSent + msDelay <= msNow) {
            const QByteArray text = from.line.front().text;
            from.line.pop_front();
            to.receive(text);
        }
    }

    unsigned long long msDelay;
    unsigned long long msNow = 0;
};

}  // namespace test
