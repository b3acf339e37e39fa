// A whole rally for a program that draws nothing, or not with our framework. It has no clock: who
// plays it says how much time has passed.
#pragma once

#include "Ball.h"
#include "Court.h"
#include "Hits.h"
#include "SIDE.h"
#include "StepWatcher.h"
#include "frame_step.h"

#include <optional>

namespace vork2d::rally {

class Rally {
public:
    Rally() noexcept;

    /// Serves from that side. msTravel is the time of travel in milliseconds, 0 counts as 1.
    void start(SIDE sideStart, unsigned long long msTravel) noexcept;

    /// Sets the time of travel, milliseconds, and with it the speed of the ball at once; 0 counts
    /// as 1.
    void set_tm_travel(unsigned long long ms) noexcept;

    /// As its master: advances the rally by dt seconds. How the ball has left the field, if it has;
    /// the distance that it has covered then ends at the edge, and so does the rally: what follows
    /// is a new start. A dt of 0 or less is told to the
    /// watcher and nothing else.
    std::optional<Exit> advance(float dt, StepWatcher& watcher);

    /// As its follower: the ball flies straight on for dt seconds, until the master tells better.
    void follow(float dt, StepWatcher& watcher) { fly_straight(ball, dt, watcher); }

    /// Puts the paddle of that side at the height y, kept inside the field; field units.
    void move_paddle(SIDE side, float y) noexcept;

    [[nodiscard]] Paddle& paddle(SIDE side) noexcept {
        return side == SIDE::LEFT ? court.paddleLeft : court.paddleRight;
    }

    Ball ball;
    Court court;
    Hits hits;                          ///< since the last start
    float tmTravel = rules::TM_TRAVEL;  ///< seconds
};

}  // namespace vork2d::rally
