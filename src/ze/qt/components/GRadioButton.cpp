#include "ze/qt/components/GRadioButton.h"

namespace ze::qt {

GRadioButton::GRadioButton(const QString& text, const QString& toolTip)
    : QRadioButton(text), StringSetter(static_cast<QRadioButton*>(this)) {
    setToolTip(toolTip);
    connect(this, &QRadioButton::toggled, this,
            [this](bool checked) { toggled_listener.fire_event(checked, FIRE_DIRECT); });
}

}  // namespace ze::qt
