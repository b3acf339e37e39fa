#include "ze/qt/components/GTimer.h"

namespace ze::qt {

GTimer::GTimer(QObject* parent) : QTimer(parent) {
    connect(this, &QTimer::timeout, this, [this] { timeout_listener.fire_event({}, FIRE_DIRECT); });
}

void GTimer::set_start_stop(bool flagStart) {
    if (flagStart) {
        start();
    } else {
        stop();
    }
}

}  // namespace ze::qt
