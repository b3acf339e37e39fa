#include "PlayField.h"

#include "ze/log/pp.h"
#include "ze/qt/GPC.h"
#include "ze/tools/clock.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <glm/geometric.hpp>

namespace vork2d::v1 {

using ze::pp_format;
using ze::log::DEBUG;
using ze::log::ERROR;

namespace {

constexpr float CROSS_WIDTH = 0.5f;  // pixels

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
    pp_format(DEBUG, 0, "DrawTestObject::set_tm_travel, ms:$", ms);
    tmTravel = static_cast<float>(ms == 0 ? 1 : ms) / early::MS_PER_SECOND;
    ball.velocity = get_view_size().width / tmTravel;
}

unsigned PlayField::tm_travel() const noexcept {
    const float ms = tmTravel * early::MS_PER_SECOND;
    constexpr unsigned MOST = std::numeric_limits<unsigned>::max();
    // Rounding is undefined for what no integer holds.
    return ms < static_cast<float>(MOST) ? std::max(1U, static_cast<unsigned>(std::llround(ms)))
                                         : MOST;
}

// --- a flight

void PlayField::on_simple_move1() {
    ze::pp("DrawTestObject::on_simple_move1");
    start_flight({0, 0}, early::BALL_DIR);
}

void PlayField::on_move_top1() {
    ze::pp("DrawTestObject::on_move_top1");
    const float r = ball.size * 0.5f;
    const glm::vec2 ptStart{paddleLeft.rect().right() + r, paddleLeft.pos.y};
    const glm::vec2 ptTop{0, top() - r};
    start_flight(ptStart, glm::normalize(ptTop - ptStart));
}

void PlayField::start_flight(glm::vec2 ptStart, glm::vec2 dir) {
    ball.pos = ptStart;
    ball.dir = dir;
    pp_format(DEBUG, 0, "DrawTestObject::start_flight, ball:$", ball);
    hitsLeft = 0;
    hitsRight = 0;
    tmLastFrame = ze::time::get_milli_seconds();
    state = STATE_FLYING;
}

void PlayField::on_stop() {
    ze::pp("STOPPED by user");
    end_flight();
}

void PlayField::end_flight() {
    pp_format(DEBUG, 0, "hits left paddle:$, hits right paddle:$", hitsLeft, hitsRight);
    tmLastFrame = 0;
    state = STATE_REST;
}

// --- a frame

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

void PlayField::next_frame(float dt) {
    if (0 >= dt) {
        pp_format(ERROR, 0, "DrawTestObject::next_frame, invalid dt:$", dt);
        return;
    }
    ball.pos += dt * ball.velocity * ball.dir;
    check_walls();
    check_paddles();
    check_exit();
}

void PlayField::check_walls() {
    const float r = ball.size * 0.5f;
    if (ball.is_dir_up() && ball.pos.y + r >= top()) {
        ball.pos.y = top() - r;
        pp_format(DEBUG, 0, "DrawTestObject::next_frame, HIT HIT_TOP, ball: {$}", ball);
        ball.dir.y = -ball.dir.y;
    } else if (ball.is_dir_down() && bottom() >= ball.pos.y - r) {
        ball.pos.y = bottom() + r;
        pp_format(DEBUG, 0, "DrawTestObject::next_frame, HIT HIT_BOTTOM, ball: {$}", ball);
        ball.dir.y = -ball.dir.y;
    }
}

void PlayField::check_paddles() {
    const float r = ball.size * 0.5f;
    if (ball.is_dir_left() && ball.rect().intersects(paddleLeft.rect())) {
        ++hitsLeft;
        bounce_paddle(paddleLeft, paddleLeft.rect().right() + r);
    } else if (ball.is_dir_right() && ball.rect().intersects(paddleRight.rect())) {
        ++hitsRight;
        bounce_paddle(paddleRight, paddleRight.rect().left() - r);
    }
}

void PlayField::bounce_paddle(const Paddle& paddle, float xFace) {
    ball.pos.x = xFace;
    pp_format(DEBUG, 0, "DrawTestObject::next_frame, HIT $, ball.pos:$", paddle.name, ball.pos);
    ball.dir.x = -ball.dir.x;
}

void PlayField::check_exit() {
    const float r = ball.size * 0.5f;
    if (left() > ball.pos.x + r) {
        ze::pp("BALL ON LEFT SIDE, ball.pos:$", ball.pos);
        end_flight();
    } else if (ball.pos.x - r > right()) {
        ze::pp("BALL ON RIGHT SIDE, ball.pos:$", ball.pos);
        end_flight();
    }
}

// --- the mouse and the picture

void PlayField::on_mouse_press(const QMouseEvent* ev) {
    on_move_paddle(pos_from_mouse_event(ev));
}

void PlayField::on_mouse_drag(const QMouseEvent* ev) {
    on_move_paddle(pos_from_mouse_event(ev));
}

void PlayField::on_move_paddle(const glm::vec2& pos) {
    Paddle& paddle = ball.is_dir_right() ? paddleRight : paddleLeft;
    const float half = paddle.size.height * 0.5f;
    paddle.pos.y = std::max(bottom() + half, std::min(pos.y, top() - half));
    update();
}

void PlayField::draw(ze::qt::GPC& gpc, const ze::math::Rect& rect) {
    gpc.fill_rect(rect, colorBackground);
    paddleLeft.draw(gpc);
    paddleRight.draw(gpc);
    ball.draw(gpc);
    gpc.draw_line(left(), 0, right(), 0, Qt::white, CROSS_WIDTH, Qt::DotLine, ze::qt::COSMETIC_ON);
    gpc.draw_line(0, top(), 0, bottom(), Qt::white, CROSS_WIDTH, Qt::DotLine, ze::qt::COSMETIC_ON);
}

}  // namespace vork2d::v1
