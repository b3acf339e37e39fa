#include "PlayField.h"

#include "ze/log/pp.h"
#include "ze/qt/GPC.h"
#include "ze/tools/clock.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <glm/geometric.hpp>

namespace vork2d::v2 {

using ze::pp_format;
using ze::log::DEBUG;
using ze::log::ERROR;

early::PlayStats playStats;

namespace {

constexpr float CROSS_WIDTH = 0.5f;  // pixels

enum HIT_TYPE : unsigned { HIT_NONE, HIT_TOP, HIT_BOTTOM, HIT_PADDLE_LEFT, HIT_PADDLE_RIGHT };

constexpr float T_NONE = 2;  // later than any hit, for those lie in 0..1

void report_hit(unsigned& counter, const char* name, const Ball& ball) {
    ++counter;
    pp_format(DEBUG, 0, "PlayField::next_frame, HIT $, ball: {$}", name, ball);
}

void count_hit(HIT_TYPE hit, const Ball& ball) {
    switch (hit) {
        case HIT_TOP:
            return report_hit(playStats.hitsTop, "HIT_TOP", ball);
        case HIT_BOTTOM:
            return report_hit(playStats.hitsBottom, "HIT_BOTTOM", ball);
        case HIT_PADDLE_LEFT:
            return report_hit(playStats.hitsPaddleLeft, "HIT_PADDLE_LEFT", ball);
        case HIT_PADDLE_RIGHT:
            return report_hit(playStats.hitsPaddleRight, "HIT_PADDLE_RIGHT", ball);
        case HIT_NONE:
            return;
    }
}

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

void PlayField::on_move_top1(MOTION motionOfFlight) {
    const float r = ball.size * 0.5f;
    const glm::vec2 ptStart{paddleLeft.rect().right() + r, paddleLeft.pos.y};
    const glm::vec2 ptTop{0, top() - r};
    ball.pos = ptStart;
    ball.dir = glm::normalize(ptTop - ptStart);
    ball.travelDistance = 0;
    pp_format(DEBUG, 0, "PlayField::on_move_top1, ball:$", ball);

    playStats = early::PlayStats{};
    playStats.msStart = ze::time::get_milli_seconds();
    playStats.tmTravel = tmTravel;
    playStats.tmRefresh = timer.interval();

    tmLastFrame = ze::time::get_milli_seconds();
    motion = motionOfFlight;
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
    playStats.show("PlayStats");
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
    const float dt = static_cast<float>(msNow - last) / early::MS_PER_SECOND;
    motion == MOTION::CONTINUOUS ? next_frame_ext(dt) : next_frame(dt);
    update();
}

void PlayField::next_frame(float dt) {
    if (0 >= dt) {
        pp_format(ERROR, 0, "PlayField::next_frame, invalid dt:$", dt);
        return;
    }
    ball.pos += dt * ball.velocity * ball.dir;
    ball.travelDistance += dt * ball.velocity;
    check_walls();
    check_paddles();
    check_exit();
}

void PlayField::check_walls() {
    const float r = ball.size * 0.5f;
    if (ball.is_dir_up() && ball.pos.y + r >= top()) {
        ball.pos.y = top() - r;
        count_hit(HIT_TOP, ball);
        ball.dir.y = -ball.dir.y;
    } else if (ball.is_dir_down() && bottom() >= ball.pos.y - r) {
        ball.pos.y = bottom() + r;
        count_hit(HIT_BOTTOM, ball);
        ball.dir.y = -ball.dir.y;
    }
}

void PlayField::check_paddles() {
    const float r = ball.size * 0.5f;
    if (ball.is_dir_left() && ball.rect().intersects(paddleLeft.rect())) {
        ball.pos.x = paddleLeft.rect().right() + r;
        count_hit(HIT_PADDLE_LEFT, ball);
        ball.dir.x = -ball.dir.x;
    } else if (ball.is_dir_right() && ball.rect().intersects(paddleRight.rect())) {
        ball.pos.x = paddleRight.rect().left() - r;
        count_hit(HIT_PADDLE_RIGHT, ball);
        ball.dir.x = -ball.dir.x;
    }
}

void PlayField::next_frame_ext(float dt) {
    if (0 >= dt) {
        pp_format(ERROR, 0, "PlayField::next_frame_ext, invalid dt:$", dt);
        return;
    }
    const float r = ball.size * 0.5f;
    glm::vec2 vRemain = dt * ball.velocity * ball.dir;
    ball.travelDistance += dt * ball.velocity;
    while (glm::length(vRemain) > early::EPS) {
        const glm::vec2 ptStart = ball.pos;
        HIT_TYPE hit = HIT_NONE;
        float tHit = T_NONE;

        // The wall that the motion faces.
        if (vRemain.y != 0) {
            const bool up = vRemain.y > 0;
            const float yWall = up ? top() - r : bottom() + r;
            const float t = (yWall - ptStart.y) / vRemain.y;
            if (0 <= t && t <= 1) {
                hit = up ? HIT_TOP : HIT_BOTTOM;
                tHit = t;
            }
        }
        // The paddle that the motion faces, where it is met before the wall.
        if (vRemain.x != 0) {
            const bool toRight = vRemain.x > 0;
            const ze::math::Rect rect = (toRight ? paddleRight : paddleLeft).rect();
            const float xFace = toRight ? rect.left() - r : rect.right() + r;
            const float t = (xFace - ptStart.x) / vRemain.x;
            const float y = vRemain.y * t + ptStart.y;
            if (0 <= t && t <= 1 && tHit > t && rect.bottom() - r <= y && y <= rect.top() + r) {
                hit = toRight ? HIT_PADDLE_RIGHT : HIT_PADDLE_LEFT;
                tHit = t;
            }
        }
        if (hit == HIT_NONE) {
            ball.pos = ptStart + vRemain;
            break;
        }
        ball.pos = ptStart + vRemain * tHit;
        count_hit(hit, ball);
        glm::vec2 vRest = vRemain - vRemain * tHit;
        if (tHit > 0 && vRest == vRemain) {
            vRest = {0, 0};  // so long a way, less a crossing, is the same float: it has no end
        }
        const bool wall = hit == HIT_TOP || hit == HIT_BOTTOM;
        const glm::vec2 mirror = wall ? glm::vec2{1, -1} : glm::vec2{-1, 1};
        ball.dir *= mirror;
        vRemain = vRest * mirror;
    }
    check_exit();
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
    playStats.frames += 1;
    gpc.fill_rect(rect, colorBackground);
    paddleLeft.draw(gpc);
    paddleRight.draw(gpc);
    ball.draw(gpc);
    gpc.draw_line(left(), 0, right(), 0, Qt::white, CROSS_WIDTH, Qt::DotLine, ze::qt::COSMETIC_ON);
    gpc.draw_line(0, top(), 0, bottom(), Qt::white, CROSS_WIDTH, Qt::DotLine, ze::qt::COSMETIC_ON);
}

}  // namespace vork2d::v2
