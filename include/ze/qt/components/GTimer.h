// A timer that is a child of its owner, or a member of it, and reports through a listener.
#pragma once

#include "ze/tools/Listener.h"

#include <QTimer>

namespace ze::qt {

class GTimer : public QTimer {
public:
    Listener<NO_PAYLOAD> timeout_listener;

    explicit GTimer(QObject* parent = nullptr);

    /// Starts the timer with its interval, or stops it.
    void set_start_stop(bool flagStart);
};

}  // namespace ze::qt
