// What the field lets through to the loudspeaker.
#include "ze/log/pp.h"
#include "ze/qt/GSoundEffect.h"
#include "ze/tools/os.h"

#include "PlayField.h"
#include "game_sound.h"
#include "sounds.h"

#include <cmath>

namespace vork2d::v5 {

ze::qt::GSoundEffect* gSound = nullptr;
ze::qt::GSoundEffect* gSoundEndless = nullptr;

void stop_sounds() {
    for (ze::qt::GSoundEffect* const effect : {gSound, gSoundEndless}) {
        if (effect != nullptr) {
            effect->stop();
        }
    }
}

namespace {

void start_endless_silence() {
    if (!ze::os::is_android() || gSoundEndless != nullptr) {
        return;
    }
    gSoundEndless = new ze::qt::GSoundEffect;
    gSoundEndless->ini();
    gSoundEndless->play_endless(sounds::QUIET);
}

bool is_too_fast_for_sound(float tmTravel) {
    return !(tmTravel > rules::TM_TRAVEL_SILENT) ||
           std::fabs(tmTravel - rules::TM_TRAVEL_SILENT) <= rules::EPS;
}

}  // namespace

void PlayField::play_sound(const QString& path) {
    if (!flagSound || is_too_fast_for_sound(tmTravel)) {
        return;
    }
    ze::pp_format(ze::log::DEBUG, 0, "PlayField::play_sound ** <<<$>>>", path);
    start_endless_silence();
    if (gSound == nullptr) {
        gSound = new ze::qt::GSoundEffect;
        gSound->ini();
    }
    gSound->play_sound(path);
}

}  // namespace vork2d::v5
