#include "ThreadSoundMachine.h"

#include "ze/log/pp.h"

#include <QEventLoop>
#include <QSoundEffect>
#include <QTimer>
#include <QUrl>

#include <mutex>

namespace vork2d::v5 {

namespace {

constexpr unsigned NEW_SOUND = 4;      // flag of bits: a sound waits
constexpr int MS_SOUND = 200;          // from the start of a sound to the next request
constexpr unsigned long MS_WAKE = 20;  // between two wake-ups of a thread that is to end

}  // namespace

ThreadSoundMachine::ThreadSoundMachine() : bits(0) {}

ThreadSoundMachine::~ThreadSoundMachine() {
    stop_machine();
    // A wake-up between the thread's test and its sleep is lost: wake it until it has ended.
    while (!wait(MS_WAKE)) {
        stop_thread();
    }
}

void ThreadSoundMachine::stop_machine() {
    ze::pp("ThreadSoundMachine::stop_machine");
    stop_thread();
}

void ThreadSoundMachine::stop_thread() {
    bits.stop(ze::NOTIFY_ALL);
    quit();  // the loop of a sound that neither starts nor fails
}

void ThreadSoundMachine::play_sound(const QString& url) {
    for (unsigned indent = 0; indent < 3; ++indent) {
        ze::pp_format(ze::log::DEBUG, indent, "ThreadSoundMachine::play_sound <<<$>>>", url);
    }
    const std::lock_guard lock(mutex);
    urlNext = url;
    bits.set_flag(NEW_SOUND, true);
}

QString ThreadSoundMachine::to_sound_url(const QString& path) const {
    if (path.startsWith(QLatin1String(":/"))) {
        return QLatin1String("qrc") + path;
    }
    return QUrl::fromLocalFile(path).toString();
}

void ThreadSoundMachine::run() {
    pEffect = new QSoundEffect;  // belongs to the thread that makes it
    pEffect->setVolume(1.0F);
    while (bits.is_running()) {
        ze::pp("LAB 1");
        bits.wait_stateChange();
        ze::pp("LAB 2");
        bits.wait_until_bit_is_set(NEW_SOUND);
        if (!bits.is_running()) {
            ze::pp("BREAK");
            break;
        }
        ze::pp("LAB 3");
        play_to_end(take_request());
    }
    delete pEffect;
    pEffect = nullptr;
}

QString ThreadSoundMachine::take_request() {
    const std::lock_guard lock(mutex);
    bits.set_flag(NEW_SOUND, false);
    ze::pp("LAB 4");
    return urlNext;
}

void ThreadSoundMachine::play_to_end(const QString& url) {
    QEventLoop loop;
    // The same source again would change no status, and nothing would end the loop.
    pEffect->setSource({});
    QObject::connect(pEffect, &QSoundEffect::statusChanged, &loop, [this, &loop] {
        if (pEffect->status() == QSoundEffect::Ready) {
            ze::pp("WANT PLAY");
            pEffect->play();
            ze::pp("PLAY");
            QTimer::singleShot(MS_SOUND, &loop, [&loop] { loop.quit(); });
        } else if (pEffect->status() == QSoundEffect::Error) {
            ze::pp_error("pEffect->status() == QSoundEffect::Error");
            loop.quit();
        }
    });
    QObject::connect(pEffect, &QSoundEffect::statusChanged, &loop, [this, &loop] {
        if (!pEffect->isPlaying()) {
            ze::pp("NOT PLAYING");
            loop.quit();
        }
    });
    pEffect->stop();
    pEffect->setSource(QUrl(to_sound_url(url)));
    loop.exec();
    pEffect->disconnect();
    ze::pp("outta loop");
}

}  // namespace vork2d::v5
