// A sound effect that is played by path: a new sound cuts off the one before. It looks at no load
// error: a sound that cannot be loaded is not heard.
#pragma once

#include <QSoundEffect>
#include <QString>

namespace ze::qt {

class GSoundEffect : public QSoundEffect {
public:
    double volume{1.0};  ///< the volume that ini set
    bool flagIni{
        false};  ///< never set: each call initialises again, so that a changed volume does not stay
    QString pathEndless;  ///< what play_endless loaded last

    using QSoundEffect::QSoundEffect;

    /// Sets the full volume.
    void ini();

    /// Plays a file or a resource (":/...") once. A missing one gives a warning and no sound; a
    /// machine without a loudspeaker is silent.
    void play_sound(const QString& path);

    /// Plays quietly and again and again, until the next sound.
    void play_endless(const QString& path);

    /// Loads a sound without playing it; who waits for its status plays it.
    void play_sound_with_listener(const QString& path);
};

}  // namespace ze::qt
