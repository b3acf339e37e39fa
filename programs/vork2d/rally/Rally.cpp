#include "Rally.h"

#include "serve.h"

namespace vork2d::rally {

Rally::Rally() noexcept {
    ball.velocity = speed(court.field.width, tmTravel);
}

void Rally::start(SIDE sideStart, unsigned long long msTravel) noexcept {
    set_tm_travel(msTravel);
    ball.travelDistance = 0;
    hits = {};
    serve(ball, court, sideStart);
}

void Rally::set_tm_travel(unsigned long long ms) noexcept {
    tmTravel = tm_travel_from_ms(ms);
    ball.velocity = speed(court.field.width, tmTravel);
}

std::optional<Exit> Rally::advance(float dt, StepWatcher& watcher) {
    FrameStep step(ball, hits, court, watcher);
    if (!step.fly(dt) || !is_out(ball, court.field.width)) {
        return std::nullopt;
    }
    const Exit exit = exit_of(ball, court.field.width, step.pt_last_part());
    ball.travelDistance -= distance_beyond(exit, ball);
    return exit;
}

void Rally::move_paddle(SIDE side, float y) noexcept {
    Paddle& moved = paddle(side);
    moved.pos.y = inside_field(moved, court.field.height, y);
}

}  // namespace vork2d::rally
