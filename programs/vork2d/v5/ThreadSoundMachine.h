// Plays sounds from a thread of its own, the newest request only. The running game does without it:
// PlayField::play_sound plays on the main thread.
#pragma once

#include "ze/tools/GAtomicBitsWatcher.h"

#include <QBasicMutex>
#include <QString>
#include <QThread>

#include <cstdint>

class QSoundEffect;

namespace vork2d::v5 {

class ThreadSoundMachine : public QThread {
public:
    ThreadSoundMachine();

    /// Ends the thread and waits for it without limit.
    ~ThreadSoundMachine() override;

    /// Lets the thread end at its next wake-up.
    void stop_machine();

    /// Asks for a sound, by path; callable from any thread. A sound that has not yet started is
    /// replaced.
    void play_sound(const QString& url);

    /// A path of the resource tree or of the file system as the text of a URL.
    [[nodiscard]] QString to_sound_url(const QString& path) const;

protected:
    void run() override;

private:
    void stop_thread();
    [[nodiscard]] QString take_request();
    void play_to_end(const QString& url);

    ze::GAtomicBitsWatcher bits;
    QBasicMutex mutex;                ///< guards urlNext
    QSoundEffect* pEffect = nullptr;  ///< made, used and deleted by the thread
    QString urlNext;

    // Nothing reads these three.
    [[maybe_unused]] int reserve = 2;
    [[maybe_unused]] std::uint8_t reserveByte1 = 0;
    [[maybe_unused]] std::uint8_t reserveByte2 = 0;
};

}  // namespace vork2d::v5
