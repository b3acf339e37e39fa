// Runs the event loop until a condition holds, with a limit.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace test {

/// False when the condition did not hold within 10 s.
template <class Condition>
[[nodiscard]] bool wait_until(Condition condition) {
    const QDeadlineTimer limit(10'000);
    QTimer wake;  // the loop must come back to look at the limit when no event comes
    wake.start(50);
    while (!condition()) {
        if (limit.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

}  // namespace test
