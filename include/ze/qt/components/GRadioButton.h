// A radio button that reports through a listener.
#pragma once

#include "ze/qt/StringSetter.h"
#include "ze/tools/Listener.h"

#include <QRadioButton>

namespace ze::qt {

class GRadioButton : public QRadioButton, public StringSetter<QRadioButton> {
public:
    Listener<bool> toggled_listener;

    explicit GRadioButton(const QString& text = {}, const QString& toolTip = {});
};

}  // namespace ze::qt
