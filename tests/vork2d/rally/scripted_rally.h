// Rallies that are the same each time, played with the bare rules and with the field of the game
// alike, and one number for all that they came to.
//
// A Game offers ball(), paddle(SIDE), start(SIDE, ms), is_playing(), step_left_paddle(up),
// frame(dt) and all_hits().
#pragma once

#include "vork2d/rally/SIDE.h"
#include "vork2d/rally/rules.h"

#include <bit>
#include <cstdint>
#include <random>

#include <glm/vec2.hpp>

namespace test {

/// FNV-1a over the bits of floats.
class FloatHash {
public:
    void add(float value) {
        const auto bits = std::bit_cast<std::uint32_t>(value);
        for (unsigned shift = 0; shift < 32; shift += 8) {
            hash = (hash ^ ((bits >> shift) & 0xFFU)) * 0x100000001B3U;
        }
    }
    void add(glm::vec2 value) {
        add(value.x);
        add(value.y);
    }

    std::uint64_t hash = 0xCBF29CE484222325U;
};

struct RallyTrace {
    FloatHash hash;
    unsigned hits = 0;
    unsigned serves = 0;

    template <class Game>
    void serve(Game& game, unsigned long long msTravel) {
        using vork2d::rally::SIDE;
        hits += game.all_hits();
        game.start(serves % 2 == 0 ? SIDE::LEFT : SIDE::RIGHT, msTravel);
        ++serves;
    }

    template <class Game>
    void add_frame(Game& game) {
        using vork2d::rally::SIDE;
        hash.add(game.ball().pos);
        hash.add(game.ball().dir);
        hash.add(game.ball().travelDistance);
        hash.add(game.paddle(SIDE::LEFT).pos);
        hash.add(game.paddle(SIDE::RIGHT).pos);
    }
};

/// The rules pinned by one number: whoever changes a rule, even by a percent, sees it here. A
/// change that is wanted changes the number, and every client has to change with it.
inline constexpr std::uint64_t GOLDEN_HASH = 1519366043235485065U;

/// A thousand frames. The paddles meet the ball a little beside their middle, another little each
/// time, and are put back into the field by a key step; the players miss one ball in eight.
template <class Game>
RallyTrace play_golden(Game& game) {
    using vork2d::rally::SIDE;
    RallyTrace trace;
    const auto serve = [&trace, &game] {
        trace.serve(game, 400 + 150 * (trace.serves % 7));
    };
    trace.hash.add(game.ball().dir);
    trace.hash.add(game.ball().velocity);
    serve();
    for (int step = 0; step < 1000; ++step) {
        if (!game.is_playing()) {
            serve();
        }
        const float beside = static_cast<float>(step * 37 % 89 - 44);
        const float miss = step % 8 == 0 ? 150.0f : 0.0f;
        auto& paddle = game.paddle(game.ball().is_dir_left() ? SIDE::LEFT : SIDE::RIGHT);
        paddle.pos.y = game.ball().pos.y + beside + miss;
        game.step_left_paddle(step % 2 == 0);
        game.frame(static_cast<float>(1 + step % 33) / 1000.0f);
        trace.add_frame(game);
    }
    return trace;
}

/// What the hundred thousand frames of play_random() have always come to.
inline constexpr std::uint64_t RANDOM_HASH = 356856172289958150U;

/// A hundred thousand frames of random length with paddles anywhere near the ball, and a speed from
/// slow to absurd, so that a frame holds up to all the bounces it may.
template <class Game>
RallyTrace play_random(Game& game) {
    using vork2d::rally::SIDE;
    std::mt19937 random(20261122);  // the same numbers with every standard library
    const auto up_to = [&random](unsigned limit) {
        return random() % limit;
    };
    RallyTrace trace;
    for (int step = 0; step < 100'000; ++step) {
        if (!game.is_playing() || up_to(200) == 0) {
            trace.serve(game, 1 + up_to(up_to(4) == 0 ? 60 : 5000));
        }
        const float beside = static_cast<float>(up_to(1200)) / 10.0f - 60.0f;
        auto& paddle = game.paddle(game.ball().is_dir_left() ? SIDE::LEFT : SIDE::RIGHT);
        paddle.pos.y = game.ball().pos.y + beside;
        game.step_left_paddle(up_to(2) == 0);
        game.frame(static_cast<float>(1 + up_to(1000)) / 20'000.0f);
        trace.add_frame(game);
    }
    return trace;
}

}  // namespace test
