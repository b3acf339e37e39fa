// The frame: the rules fly the ball, and the field logs, sounds and fires what they come to.
#include "ze/log/pp.h"
#include "ze/net/IConnectionState.h"
#include "ze/tools/clock.h"

#include "HIT_TYPE.h"
#include "PLAY_STATE.h"
#include "PlayField.h"
#include "PlayStats.h"
#include "sounds.h"
#include "vork2d/rally/StepWatcher.h"

namespace vork2d::v5 {

using ze::log::DEBUG;
using ze::log::ERROR;

namespace {

constexpr unsigned INDENT_SUB_STEP = 4;  // blanks before a log line of a sub-step

template <typename... Args>
[[gnu::noinline]] void write_line(ze::log::LOG_LEVEL level, unsigned indent, const char* format,
                                  const Args&... args) {
    ze::pp_format(level, indent, format, args...);
}

// A line of the frame step, whose texts are only made where it is shown.
template <typename... Args>
inline void show_line(ze::log::LOG_LEVEL level, unsigned indent, const char* format,
                      const Args&... args) {
    if (ze::log::is_on(level)) {
        write_line(level, indent, format, args...);
    }
}

}  // namespace

/// Logs and sounds a frame step.
class PlayField::StepLog final : public rally::StepWatcher {
public:
    explicit StepLog(PlayField& theField) noexcept : field(theField) {}

    void on_wall_hit(const rally::HitInfo& hit) override {
        field.play_sound(sounds::WALL_HIT);
        show_line(DEBUG, 0, "PlayField::next_frame, HIT $, ball: {$}", hit.type, field.ball);
    }
    void on_paddle_hit(const rally::HitInfo& hit, float rel) override {
        field.play_sound(sounds::PADDLE_HIT);
        const Paddle& paddle =
            hit.type == rally::HIT_PADDLE_LEFT ? field.paddleLeft : field.paddleRight;
        show_line(DEBUG, 0, "PlayField::next_frame, HIT $, ball.pos:$, rel:$", paddle.name,
                  field.ball.pos, rel);
    }
    void on_deflected(unsigned cGuard) override {
        show_line(DEBUG, 0, "PlayField::next_frame, cGuard:$, after calc, ball:$", cGuard,
                  field.ball);
    }
    void on_turned(glm::vec2 vRemain) override {
        show_line(DEBUG, INDENT_SUB_STEP, "PlayField::next_frame, vRemain:$", vRemain);
    }
    void on_invalid_dt(float dt) override {
        show_line(ERROR, 0, "PlayField::next_frame, invalid dt:$", dt);
    }
    void on_paddle_upside_down(float yMin, float yMax) override {
        show_line(ERROR, 0, "HitInfo::hit_vertical invalid params: yMin:$ > yMax:$", yMin, yMax);
    }
    void on_guard_break(unsigned cGuard, glm::vec2 vRemain) override {
        show_line(ERROR, 0, "PlayField::next_frame, guard break, cGuard:$, ball.pos:$, vRemain:$",
                  cGuard, field.ball.pos, vRemain);
    }
    void on_invalid_hit(const rally::HitInfo& hit, glm::vec2 ptStart, glm::vec2 ptEnd) override {
        show_line(ERROR, 0,
                  "PlayField::next_frame, invalid hitBest.t:$, ball.pos:$, ptStart:$, ptEnd:$",
                  hit.t, field.ball.pos, ptStart, ptEnd);
    }
    void on_zero_length_hit(const rally::HitInfo& hit) override {
        show_line(ERROR, 0,
                  "PlayField::next_frame, zero-length hit step, type:$, t:$, ball.pos:$, ptHit:$",
                  hit.type, hit.t, field.ball.pos, hit.pt);
    }

private:
    PlayField& field;
};

void PlayField::next_frame(float dt) {
    StepLog watcher(*this);
    if (!flagMaster) {
        rally::fly_straight(ball, dt, watcher);
        return;
    }
    const rally::Court theCourt = court();
    rally::FrameStep step(ball, playStats, theCourt, watcher);
    if (!step.fly(dt)) {
        return;
    }
    if (step.one_hit() && connection.is_connected()) {
        // Once, after the whole motion: what goes out is the ball at the end of the frame.
        show_line(DEBUG, 0, "ONE HIT, ball:$", ball);
        listenerBallHit.fire_event(ze::NO_PAYLOAD{});
    }
    if (is_out_of_field()) {
        on_exit(step.pt_last_part());
    }
}

void PlayField::on_timer(unsigned long long msNow) {
    if (!is_state_PLAY()) {
        listenerFps.fire_event(0);
        return;
    }
    const unsigned long long last = tmLastFrame;
    tmLastFrame = msNow;
    if (last == 0 || msNow == last) {
        return;
    }
    next_frame(static_cast<float>(msNow - last) / rules::MS_PER_SECOND);
    update();
}

void PlayField::on_exit(glm::vec2 ptLastPart) {
    const rally::Exit exit = rally::exit_of(ball, field_width(), ptLastPart);
    show_exit(exit, ptLastPart);
    ball.travelDistance -= rally::distance_beyond(exit, ball);
    playStats.travelDistance = ball.travelDistance;
    playStats.msEnd = ze::time::get_steady_milli_seconds();
    ze::pp_empty();
    playStats.show(PlayStats::INDENT);
    listenerBallExit.fire_event(exit.side == rally::SIDE::LEFT ? ze::math::ORIENT2D::LEFT
                                                               : ze::math::ORIENT2D::RIGHT);
    // As a rule a handler has cleared the bit already, and nothing is reported twice.
    set_state_RUN(false);
}

void PlayField::show_exit(const rally::Exit& exit, glm::vec2 ptLastPart) const {
    const char* const sideText = exit.side == rally::SIDE::LEFT ? "LEFT" : "RIGHT";
    ze::pp_empty();
    if (!exit.pt) {
        show_line(DEBUG, 0, "BALL ON $ SIDE, ball.pos:$", sideText, ball.pos);
        show_line(ERROR, 0,
                  "PlayField::next_frame, BALL EXIT but no vertical cut found, posBefore:$, "
                  "ball.pos:$, xHit:$",
                  ptLastPart, ball.pos, exit.xEdge);
        return;
    }
    show_line(DEBUG, 0, "MASTER:$", flagMaster);
    show_line(DEBUG, 0, "BALL ON $ SIDE, ball.pos:$", sideText, ball.pos);
    show_line(DEBUG, 0, "BALL EXIT, ptExit:$", *exit.pt);
}

}  // namespace vork2d::v5
