#include "PlayField.h"

#include "ze/log/pp.h"
#include "ze/qt/GPC.h"
#include "ze/tools/clock.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vork2d::v3 {

using ze::pp_format;
using ze::log::DEBUG;

early::PlayStats playStats;

namespace {

constexpr float CROSS_WIDTH = 0.5f;  // pixels

constexpr float CLEAR = 0.1f;  // of a serve from the paddle's face, field units

}  // namespace

PlayField::PlayField(float w, float h) : GCanvas(nullptr), timer(this) {
    set_coord_system(ze::qt::coord_system::CARTESIAN);
    set_view_size(w, h);
    paddleLeft.pos = {left() + early::PADDLE_INSET, 0};
    paddleLeft.name = "LEFT";
    paddleRight.pos = {right() - early::PADDLE_INSET, 0};
    paddleRight.name = "RIGHT";
    ball.velocity = w / tmTravel;
    timer.setInterval(early::ms_frame());
    timer.timeout_listener += [this] {
        on_timer(ze::time::get_milli_seconds());
    };
    timer.start();
}

PlayField::~PlayField() = default;

float PlayField::left() const noexcept {
    return -0.5f * get_view_size().width;
}

float PlayField::right() const noexcept {
    return 0.5f * get_view_size().width;
}

float PlayField::top() const noexcept {
    return 0.5f * get_view_size().height;
}

float PlayField::bottom() const noexcept {
    return -0.5f * get_view_size().height;
}

void PlayField::set_tm_travel(unsigned long long ms) {
    pp_format(DEBUG, 0, "PlayField::set_tm_travel, ms:$", ms);
    tmTravel = static_cast<float>(ms == 0 ? 1 : ms) / early::MS_PER_SECOND;
    ball.velocity = get_view_size().width / tmTravel;
}

unsigned PlayField::tm_travel() const noexcept {
    const float ms = tmTravel * early::MS_PER_SECOND;
    return static_cast<unsigned>(
        std::lround(std::clamp(ms, 1.0f, static_cast<float>(early::MS_TRAVEL_MAX))));
}

// --- a flight

void PlayField::on_play() {
    ze::pp("PlayField::on_play");
    const float r = ball.size * 0.5f;
    serve({paddleLeft.rect().right() + r + CLEAR, paddleLeft.pos.y});
}

void PlayField::on_play_symmetric() {
    ze::pp("PlayField::on_play_symmetric");
    const float r = ball.size * 0.5f;
    serve({paddleLeft.rect().right() + r, paddleLeft.pos.y});
}

void PlayField::serve(glm::vec2 ptStart) {
    const float r = ball.size * 0.5f;
    const float yTopBall = top() - r;
    const glm::vec2 ptTarget{paddleRight.rect().left() - r, paddleRight.pos.y};
    // A ball that flies through the top line to the target's mirror image bounces to the target.
    const glm::vec2 ptTargetMirror{ptTarget.x, 2 * yTopBall - ptTarget.y};
    ball.pos = ptStart;
    const glm::vec2 d = ptTargetMirror - ptStart;
    ball.dir = d * (1 / std::sqrt(d.x * d.x + d.y * d.y));
    ball.travelDistance = 0;
    pp_format(DEBUG, 0, "ptStart:$", ptStart);
    pp_format(DEBUG, 0, "ptTarget:$", ptTarget);
    pp_format(DEBUG, 0, "yTopBall:$", yTopBall);
    pp_format(DEBUG, 0, "ptTargetMirror:$", ptTargetMirror);
    pp_format(DEBUG, 0, "ball:$", ball);

    playStats = early::PlayStats{};
    playStats.msStart = ze::time::get_milli_seconds();
    playStats.tmTravel = tmTravel;
    playStats.tmRefresh = timer.interval();

    tmLastFrame = ze::time::get_milli_seconds();
    state = STATE_FLYING;
}

void PlayField::on_stop() {
    ze::pp("STOPPED by user");
    end_flight();
}

void PlayField::end_flight() {
    playStats.travelDistance = ball.travelDistance;
    playStats.msEnd = ze::time::get_milli_seconds();
    ze::pp_empty();
    playStats.show("PlayStats, v3");
    tmLastFrame = 0;
    state = STATE_REST;
}

// --- the timer

void PlayField::on_timer(unsigned long long msNow) {
    if (!is_flying()) {
        return;
    }
    const unsigned long long last = tmLastFrame;
    tmLastFrame = msNow;
    if (last == 0 || msNow == last) {
        return;
    }
    next_frame(static_cast<float>(msNow - last) / early::MS_PER_SECOND);
    update();
}

// --- the mouse and the picture

void PlayField::on_mouse_press(const QMouseEvent* ev) {
    on_move_paddle(pos_from_mouse_event(ev));
}

void PlayField::on_mouse_drag(const QMouseEvent* ev) {
    on_move_paddle(pos_from_mouse_event(ev));
}

void PlayField::on_move_paddle(const glm::vec2& pos) {
    if (!flagMouse) {
        return;
    }
    Paddle& paddle = ball.is_dir_right() ? paddleRight : paddleLeft;
    const float half = paddle.size.height * 0.5f;
    paddle.pos.y = std::max(bottom() + half, std::min(pos.y, top() - half));
    update();
}

void PlayField::draw(ze::qt::GPC& gpc, const ze::math::Rect& rect) {
    playStats.frames += 1;
    gpc.fill_rect(rect, colorBackground);
    paddleLeft.draw(gpc);
    paddleRight.draw(gpc);
    ball.draw(gpc);
    gpc.draw_line(left(), 0, right(), 0, Qt::white, CROSS_WIDTH, Qt::DotLine, ze::qt::COSMETIC_ON);
    gpc.draw_line(0, top(), 0, bottom(), Qt::white, CROSS_WIDTH, Qt::DotLine, ze::qt::COSMETIC_ON);
}

}  // namespace vork2d::v3
