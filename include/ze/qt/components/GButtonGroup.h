// A group of buttons of which one is checked at a time, found by their object names. It owns no
// button.
#pragma once

#include "ze/tools/Listener.h"

#include <QButtonGroup>

namespace ze::qt {

struct ButtonToggled {
    QAbstractButton* button = nullptr;
    bool checked = false;
};

class GButtonGroup : public QButtonGroup {
public:
    Listener<ButtonToggled> toggled_listener;

    explicit GButtonGroup(QObject* parent = nullptr);

    /// Unchecks all buttons. The group lets any number of buttons be checked afterwards: it is no
    /// longer exclusive.
    void uncheck();

    /// The button with this object name, or null; an error is logged for a name that none has.
    [[nodiscard]] QAbstractButton* button_by_name(const QString& name) const;

    /// Checks the button with this object name, if there is one.
    void set_checked(const QString& name);

    void set_enabled(bool flag);
};

}  // namespace ze::qt
