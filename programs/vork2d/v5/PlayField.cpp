#include "PlayField.h"

#include "ze/log/pp.h"
#include "ze/net/IConnectionState.h"
#include "ze/qt/guitools/dim.h"
#include "ze/tools/clock.h"
#include "ze/tools/os.h"

#include "PLAY_STATE.h"
#include "PlayStats.h"
#include "vork2d/rally/serve.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

namespace vork2d::v5 {

namespace {

constexpr int MS_SHOW_RESIZE = 50;         // the layout has settled by then
constexpr int MARGIN_SMALL_DEVICE = 4;     // pixels, both sides together
constexpr int WIDTH_UNLIMITED = 0xFFFFFF;  // pixels

}  // namespace

PlayField::PlayField(float w, float h, ze::net::IConnectionState& theConnection)
    : GCanvas(nullptr), timer(this), connection(theConnection) {
    set_coord_system(ze::qt::coord_system::CARTESIAN);
    set_view_size(w, h);
    const rally::Court places{{w, h}};
    paddleLeft.pos = places.paddleLeft.pos;
    paddleLeft.name = "LEFT";
    paddleRight.pos = places.paddleRight.pos;
    paddleRight.name = "RIGHT";
    set_velocity();
    timer.setInterval(rules::MS_FRAME);
    timer.timeout_listener += [this] {
        on_timer(ze::time::get_steady_milli_seconds());
    };
    timer.start();
}

PlayField::~PlayField() = default;

bool PlayField::is_left_side() const noexcept {
    return ze::math::ORIENT2D::is_left(side);
}

bool PlayField::is_state_PLAY() const noexcept {
    return (state & PLAY_STATE::PLAY) != 0;
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
    state = (state & ~PLAY_STATE::PLAY) | (flag ? PLAY_STATE::PLAY : 0U);
    report_state();
}

void PlayField::report_state() {
    if (state == stateLast) {
        return;
    }
    listenerState.fire_event(ze::NO_PAYLOAD{});
    stateLast = state;
}

void PlayField::set_tm_travel(unsigned long long ms) {
    ze::pp_format(ze::log::DEBUG, 0, "PlayField::set_tm_travel, ms:$", ms);
    tmTravel = rally::tm_travel_from_ms(ms);
    set_velocity();
}

unsigned PlayField::tm_travel() const noexcept {
    return rally::ms_travel(tmTravel);
}

void PlayField::set_velocity() {
    ball.velocity = rally::speed(field_width(), tmTravel);
}

void PlayField::on_play(ze::math::ORIENT2D::Type sideStart, unsigned long long msTravel) {
    set_tm_travel(msTravel);
    ball.travelDistance = 0;
    playStats = PlayStats{};
    playStats.msStart = ze::time::get_steady_milli_seconds();
    playStats.tmTravel = tmTravel;
    playStats.tmRefresh = timer.interval();
    serve(sideStart);
    tmLastFrame = ze::time::get_steady_milli_seconds();
    set_state_RUN(true);
}

void PlayField::serve(ze::math::ORIENT2D::Type sideStart) {
    const bool fromLeft = sideStart == ze::math::ORIENT2D::LEFT;
    const rally::Serve line =
        rally::serve(ball, court(), fromLeft ? rally::SIDE::LEFT : rally::SIDE::RIGHT);
    set_velocity();

    using namespace ze::log;
    ze::pp_format(INFO, 0, "PLAY START $ SIDE", ze::math::ORIENT2D::to_string(sideStart));
    ze::pp_format(DEBUG, 0, "ptStart:$", line.ptStart);
    ze::pp_format(DEBUG, 0, "ptTarget:$", line.ptTarget);
    ze::pp_format(DEBUG, 0, "yTopBall:$", line.yTopBall);
    ze::pp_format(DEBUG, 0, "ptTargetMirror:$", line.ptTargetMirror);
    ze::pp_format(DEBUG, 0, "ball:$", ball);
}

void PlayField::on_stop() {
    ze::pp("STOPPED by user");
    ze::pp_empty();
    playStats.travelDistance = ball.travelDistance;
    playStats.msEnd = ze::time::get_steady_milli_seconds();
    playStats.show(PlayStats::INDENT);
    tmLastFrame = 0;
    set_state_RUN(false);
}

void PlayField::check_set_size() {
    if (!ze::os::is_small_device()) {
        return;
    }
    if (!ze::qt::dim::is_orient_vert()) {
        setMinimumWidth(0);
        setMaximumWidth(WIDTH_UNLIMITED);
        return;
    }
    const int sw = QGuiApplication::primaryScreen()->geometry().width();
    setFixedWidth(sw > MARGIN_SMALL_DEVICE ? sw - MARGIN_SMALL_DEVICE : sw);
}

void PlayField::showEvent(QShowEvent* ev) {
    ze::pp("PlayField::showEvent");
    GCanvas::showEvent(ev);
    QTimer::singleShot(MS_SHOW_RESIZE, this, [this] { resize(size()); });
}

}  // namespace vork2d::v5
