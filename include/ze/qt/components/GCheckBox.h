// A check box that reports through listeners.
#pragma once

#include "ze/qt/StringSetter.h"
#include "ze/tools/Listener.h"

#include <QCheckBox>

namespace ze::qt {

class GCheckBox : public QCheckBox, public StringSetter<QCheckBox> {
public:
    Listener<bool> toggled_listener;
    Listener<NO_PAYLOAD> pressed_listener;
    Listener<NO_PAYLOAD> released_listener;

    explicit GCheckBox(const QString& text = {}, const QString& toolTip = {});

    /// With `notify` false the toggled listener is not told.
    void set_checked(bool value, bool notify);
};

}  // namespace ze::qt
