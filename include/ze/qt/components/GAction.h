// An action of a menu or a shortcut that reports through listeners.
#pragma once

#include "ze/tools/Listener.h"

#include <QAction>

namespace ze::qt {

class GAction : public QAction {
public:
    Listener<NO_PAYLOAD> triggered_signal;
    Listener<bool> triggered_listener;  ///< carries the check state
    Listener<NO_PAYLOAD> hovered_signal;

    /// An action with a delay other than 0 tells its listeners when the event loop turns next, so
    /// that a menu is gone before they run.
    unsigned delay{0};

    GAction(QObject* parent, const QString& text);

    void set_short_cut(const QKeySequence& keys) { setShortcut(keys); }

private:
    void connect_log();
    void on_triggered(bool flagChecked);
    void fire_triggered(bool flagChecked);
};

}  // namespace ze::qt
