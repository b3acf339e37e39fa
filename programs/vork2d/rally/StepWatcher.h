// Hears what happens within a frame step, at the moment it happens and with the ball as it is then.
// A step in free flight calls nothing. What a watcher does not override, it does not care about.
#pragma once

#include "HitInfo.h"

#include <glm/vec2.hpp>

namespace vork2d::rally {

class StepWatcher {
public:
    /// The ball is at a wall and about to turn.
    virtual void on_wall_hit(const HitInfo& /*hit*/) {}

    /// The ball is at the paddle that the hit's type names and about to turn; rel is the place on
    /// the paddle, -1 at its lower and 1 at its upper end.
    virtual void on_paddle_hit(const HitInfo& /*hit*/, float /*rel*/) {}

    /// The ball has its new direction from a paddle, in the sub-step of this number.
    virtual void on_deflected(unsigned /*cGuard*/) {}

    /// A hit is done with; vRemain is what the frame has still to fly, field units.
    virtual void on_turned(glm::vec2 /*vRemain*/) {}

    // What goes wrong. The step ends here, and the ball stays or flies as the frame step tells.

    /// dt, in seconds, is not above 0: nothing flies.
    virtual void on_invalid_dt(float /*dt*/) {}

    /// The paddle that the ball flies to has a negative height: it is not met.
    virtual void on_paddle_upside_down(float /*yMin*/, float /*yMax*/) {}

    /// The frame has had all its sub-steps; vRemain is dropped.
    virtual void on_guard_break(unsigned /*cGuard*/, glm::vec2 /*vRemain*/) {}

    /// The contact lies outside of the motion: the ball flies through.
    virtual void on_invalid_hit(const HitInfo& /*hit*/, glm::vec2 /*ptStart*/,
                                glm::vec2 /*ptEnd*/) {}

    /// The contact is where the ball is already: it stands still.
    virtual void on_zero_length_hit(const HitInfo& /*hit*/) {}

protected:
    StepWatcher() = default;
    StepWatcher(const StepWatcher&) = default;
    StepWatcher& operator=(const StepWatcher&) = default;
    ~StepWatcher() = default;
};

}  // namespace vork2d::rally
