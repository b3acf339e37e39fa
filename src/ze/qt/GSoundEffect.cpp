#include "ze/qt/GSoundEffect.h"

#include "ze/log/pp.h"

#include <QAudioDevice>
#include <QFile>
#include <QMediaDevices>
#include <QUrl>

namespace ze::qt {

namespace {

constexpr float FULL_VOLUME = 1.0F;
constexpr float ENDLESS_VOLUME = 0.1F;  // it lies under all other sounds

QUrl to_url(const QString& path) {
    return QUrl(path.startsWith(QStringLiteral(":/")) ? QStringLiteral("qrc") + path : path);
}

// The name in front of the line is older than this class.
bool exists(const QString& path, const char* operation) {
    if (QFile::exists(path)) {
        return true;
    }
    pp_format(log::WARN, 0, "PanelThreaded::$, does not exist '$'", operation, path);
    return false;
}

}  // namespace

void GSoundEffect::ini() {
    if (flagIni) {
        pp("GSoundEffect::ini, already done");
        return;
    }
    pp("GSoundEffect::ini");
    volume = FULL_VOLUME;
    setVolume(FULL_VOLUME);
}

void GSoundEffect::play_sound(const QString& path) {
    pp("GSoundEffect::play_sound");
    if (!flagIni) {
        pp("GSoundEffect::play_sound, ini");
        ini();
    }
    if (!exists(path, "play_sound")) {
        return;
    }
    // Without a loudspeaker Qt writes a line for every sound that it has loaded: one is enough.
    if (status() == Ready && QMediaDevices::audioOutputs().isEmpty()) {
        return;
    }
    setSource(to_url(path));
    if (isPlaying()) {
        pp("GSoundEffect::play_sound, STOP");
        stop();
    }
    play();
}

void GSoundEffect::play_endless(const QString& path) {
    pp("GSoundEffect::play_endless");
    if (!flagIni) {
        pp("GSoundEffect::play_endless, ini*");
        ini();
        setVolume(ENDLESS_VOLUME);
    }
    if (!exists(path, "play_sound")) {
        return;
    }
    pp_info("GSoundEffect::play_endless,  '$'", path);
    if (path == pathEndless) {
        pp("GSoundEffect::play_endless, from cache");
    } else {
        setSource(to_url(path));
        pathEndless = path;
    }
    if (isPlaying()) {
        pp("GSoundEffect::play_endless, STOP");
        stop();
    }
    setLoopCount(QSoundEffect::Infinite);
    play();
}

void GSoundEffect::play_sound_with_listener(const QString& path) {
    pp("GSoundEffect::play_sound_with_listener");
    if (!flagIni) {
        pp("GSoundEffect::play_sound_with_listener, ini");
        ini();
    }
    if (!exists(path, "play_sound_with_listener")) {
        return;
    }
    pp_info("GSoundEffect::play_sound_with_listener,  '$'", path);
    if (isPlaying()) {
        stop();
    }
    setSource(to_url(path));
}

}  // namespace ze::qt
