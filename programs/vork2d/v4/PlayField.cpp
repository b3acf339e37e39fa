#include "PlayField.h"

#include "ze/log/pp.h"
#include "ze/net/IConnectionState.h"
#include "ze/qt/GPC.h"
#include "ze/qt/GSoundEffect.h"
#include "ze/tools/clock.h"

#include "PLAY_STATE.h"

#include <algorithm>
#include <cmath>

namespace vork2d::v4 {

using ze::pp_format;
using ze::log::DEBUG;
namespace ORIENT2D = ze::math::ORIENT2D;

early::PlayStats playStats;
ze::qt::GSoundEffect* gSound = nullptr;

namespace {

constexpr float LABEL_MARGIN = 50;  // field units from the left or right edge
constexpr float LABEL_Y = 160;      // field units above the middle
constexpr int LABEL_POINTS = 16;
constexpr QRgb LABEL_YELLOW = qRgba(255, 255, 0, 128);
constexpr QRgb LABEL_WHITE = qRgba(255, 255, 255, 128);
constexpr float CROSS_WIDTH = 0.5f;  // pixels

}  // namespace

PlayField::PlayField(float w, float h, ze::net::IConnectionState& theConnection)
    : GCanvas(nullptr), timer(this), connection(theConnection) {
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

PlayField::~PlayField() {
    if (gSound != nullptr) {
        gSound->stop();
    }
}

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

bool PlayField::is_left_side() const noexcept {
    return ORIENT2D::is_left(side);
}

// --- the state

bool PlayField::is_state_RUN() const noexcept {
    return (state & PLAY_STATE::RUN) != 0;
}

bool PlayField::is_state_CONNECTED1() const noexcept {
    return (state & PLAY_STATE::CONNECTED1) != 0;
}

bool PlayField::is_state_CONNECTED2() const noexcept {
    return (state & PLAY_STATE::CONNECTED2) != 0;
}

bool PlayField::is_state_offline() const noexcept {
    return !is_state_CONNECTED1();
}

bool PlayField::is_state_2_players() const noexcept {
    return is_state_CONNECTED1() && is_state_CONNECTED2();
}

void PlayField::set_state_RUN(bool flag) {
    set_state_bit(PLAY_STATE::RUN, flag);
}

void PlayField::set_state_CONNECTED1(bool flag) {
    set_state_bit(PLAY_STATE::CONNECTED1, flag);
}

void PlayField::set_state_CONNECTED2(bool flag) {
    set_state_bit(PLAY_STATE::CONNECTED2, flag);
}

void PlayField::set_state_bit(unsigned bit, bool flag) {
    const unsigned before = state;
    state = flag ? state | bit : state & ~bit;
    if (state != before) {
        listenerState.fire_event(ze::NO_PAYLOAD{});
    }
}

// --- a rally

void PlayField::set_tm_travel(unsigned long long ms) {
    ze::pp("PlayField::set_tm_travel, ms:$", ms);
    tmTravel = static_cast<float>(ms == 0 ? 1 : ms) / early::MS_PER_SECOND;
    ball.velocity = get_view_size().width / tmTravel;
}

unsigned PlayField::tm_travel() const noexcept {
    const float ms = tmTravel * early::MS_PER_SECOND;
    return static_cast<unsigned>(
        std::lround(std::clamp(ms, 1.0f, static_cast<float>(early::MS_TRAVEL_MAX))));
}

void PlayField::on_play(ORIENT2D::Type sideStart, unsigned long long msTravel) {
    set_tm_travel(msTravel);
    ball.travelDistance = 0;
    playStats = early::PlayStats{};
    playStats.msStart = ze::time::get_milli_seconds();
    playStats.tmTravel = tmTravel;
    playStats.tmRefresh = timer.interval();
    serve(sideStart);
    tmLastFrame = ze::time::get_milli_seconds();
    set_state_RUN(true);
}

void PlayField::serve(ORIENT2D::Type sideStart) {
    const float r = ball.size * 0.5f;
    const float yTopBall = top() - r;
    const glm::vec2 ptLeft{paddleLeft.rect().right() + r, paddleLeft.pos.y};
    const glm::vec2 ptRight{paddleRight.rect().left() - r, paddleRight.pos.y};
    const bool fromLeft = ORIENT2D::is_left(sideStart);
    const glm::vec2 ptStart = fromLeft ? ptLeft : ptRight;
    const glm::vec2 ptTarget = fromLeft ? ptRight : ptLeft;
    const glm::vec2 ptTargetMirror{ptTarget.x, 2 * yTopBall - ptTarget.y};

    ball.pos = ptStart;
    const glm::vec2 d = ptTargetMirror - ptStart;
    ball.dir = d * (1 / std::sqrt(d.x * d.x + d.y * d.y));

    pp_format(ze::log::INFO, 0, "PLAY START $ SIDE", ORIENT2D::to_string(sideStart));
    pp_format(DEBUG, 0, "ptStart:$", ptStart);
    pp_format(DEBUG, 0, "ptTarget:$", ptTarget);
    pp_format(DEBUG, 0, "yTopBall:$", yTopBall);
    pp_format(DEBUG, 0, "ptTargetMirror:$", ptTargetMirror);
    pp_format(DEBUG, 0, "ball:$", ball);
}

void PlayField::on_stop() {
    ze::pp("STOPPED by user");
    show_stats();
    tmLastFrame = 0;
    set_state_RUN(false);
}

void PlayField::show_stats() {
    playStats.travelDistance = ball.travelDistance;
    playStats.msEnd = ze::time::get_milli_seconds();
    ze::pp_empty();
    playStats.show("PlayStats, v4");
}

void PlayField::play_sound(const QString& path) {
    if (!flagSound) {
        return;
    }
    ze::pp("PlayField::play_sound ** <<<$>>>", path);
    if (gSound == nullptr) {
        gSound = new ze::qt::GSoundEffect;
        gSound->ini();
    }
    gSound->play_sound(path);
}

void PlayField::on_timer(unsigned long long msNow) {
    if (!is_state_RUN()) {
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

// --- the picture

void PlayField::draw(ze::qt::GPC& gpc, const ze::math::Rect& rect) {
    playStats.frames += 1;
    gpc.fill_rect(rect, colorBackground);
    draw_labels(gpc, rect);
    paddleLeft.color = is_left_side() ? Qt::yellow : Qt::white;
    paddleRight.color = is_left_side() ? Qt::white : Qt::yellow;
    paddleLeft.draw(gpc);
    paddleRight.draw(gpc);
    ball.draw(gpc);
    gpc.draw_line(left(), 0, right(), 0, Qt::white, CROSS_WIDTH, Qt::DotLine, ze::qt::COSMETIC_ON);
    gpc.draw_line(0, top(), 0, bottom(), Qt::white, CROSS_WIDTH, Qt::DotLine, ze::qt::COSMETIC_ON);
}

void PlayField::draw_labels(ze::qt::GPC& gpc, const ze::math::Rect& rect) const {
    const float xLeft = rect.left() + LABEL_MARGIN;
    const float xRight = rect.right() - LABEL_MARGIN - gpc.measure_string(textRight).width;
    gpc.draw_text({xLeft, LABEL_Y}, textLeft, LABEL_POINTS, QColor::fromRgba(LABEL_YELLOW),
                  ze::qt::BOTTOM);
    gpc.draw_text({xRight, LABEL_Y}, textRight, LABEL_POINTS, QColor::fromRgba(LABEL_WHITE),
                  ze::qt::BOTTOM);
}

}  // namespace vork2d::v4
