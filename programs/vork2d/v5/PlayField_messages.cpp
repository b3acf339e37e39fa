// What each play message means to the field. The own commands and those of the other client take
// the same way, and only the owner tells them apart: he who started a rally is its master.
#include "ze/log/pp.h"
#include "ze/net/PlayMessage.h"
#include "ze/tools/clock.h"

#include "PlayField.h"
#include "sounds.h"

#include <QJsonObject>
#include <QKeySequence>

namespace vork2d::v5 {

using ze::net::LOCAL;
using ze::net::PlayMessage;
namespace ORIENT2D = ze::math::ORIENT2D;

void PlayField::on_play_message(const ze::net::GPlay& play, ze::net::CONTROL_OWNER owner) {
    if (!play.payload.isObject()) {
        ze::pp_error("PlayField::on_play_message, !play.payload.isObject()");
        return;
    }
    QJsonObject object = play.payload.toObject();
    dispatch(PlayMessage(object), owner);
    update();
}

void PlayField::dispatch(const PlayMessage& msg, ze::net::CONTROL_OWNER owner) {
    if (msg.is_cmd_key_pressed()) {
        on_key_sequence(msg.get_key_sequence(), msg.is_cmd_key_pressed(), owner);
    } else if (msg.is_cmd_setPos()) {
        on_set_pos(msg);
    } else if (msg.is_cmd_orient()) {
        on_orientation(msg);
    } else if (msg.is_cmd_start()) {
        on_start(msg, owner);
    } else if (msg.is_cmd_stop()) {
        on_stop_message(owner);
    } else if (msg.is_cmd_out_of_field()) {
        listenerOutOfField.fire_event(msg.get_orient());
    } else if (msg.is_cmd_travel()) {
        on_travel(msg);
    } else if (msg.is_cmd_setBall()) {
        on_set_ball(msg);
    }
}

void PlayField::on_orientation(const PlayMessage& msg) {
    const ORIENT2D::Type other = msg.get_orient();
    if (other != ORIENT2D::LEFT && other != ORIENT2D::RIGHT) {
        ze::pp_format(ze::log::ERROR, 0, "PlayField::on_play_message, orient <<<$>>> not supported",
                      ORIENT2D::to_string(other));
        return;
    }
    side = ORIENT2D::get_opposite(other);
    listenerOrient.fire_event(side);
}

void PlayField::on_start(const PlayMessage& msg, ze::net::CONTROL_OWNER owner) {
    tmStartPlay = ze::time::get_steady_milli_seconds();
    set_master(owner == LOCAL);
    const ORIENT2D::Type sideStart = msg.get_orient();
    const int msTravel = msg.get_int(QStringLiteral("msTravel"), rules::MS_TRAVEL);
    on_play(sideStart, static_cast<unsigned long long>(msTravel));
    listenerStart.fire_event(owner);
    play_sound(sounds::START);
}

void PlayField::on_stop_message(ze::net::CONTROL_OWNER owner) {
    set_master(false);
    on_stop();
    listenerStop.fire_event(owner);
}

void PlayField::on_travel(const PlayMessage& msg) {
    const int ms = msg.get_int(QStringLiteral("msTravel"), 0);
    ze::pp_info("tmTravel, ms:$", ms);
    if (rules::MS_TRAVEL_MIN <= ms && ms <= rules::MS_TRAVEL_MAX) {
        set_tm_travel(static_cast<unsigned long long>(ms));
    }
    listenerTravel.fire_event(ms);
}

void PlayField::on_set_ball(const PlayMessage& msg) {
    ze::pp_warn("GET BALL SYNC");
    ball.pos = msg.get_vector2(QStringLiteral("pos"), {0, 0});
    ball.dir = msg.get_vector2(QStringLiteral("dir"), {0, 0});
    ball.velocity = msg.get_float(QStringLiteral("velocity"), 0);
}

void PlayField::set_master(bool flag) {
    flagMaster = flag;
    listenerMaster.fire_event(flag);
}

}  // namespace vork2d::v5
