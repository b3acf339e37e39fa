#include "ze/qt/components/GCheckBox.h"

namespace ze::qt {

GCheckBox::GCheckBox(const QString& text, const QString& toolTip)
    : QCheckBox(text), StringSetter(static_cast<QCheckBox*>(this)) {
    setToolTip(toolTip);
    connect(this, &QCheckBox::toggled, this,
            [this](bool checked) { toggled_listener.fire_event(checked, FIRE_DIRECT); });
    connect(this, &QCheckBox::pressed, this,
            [this] { pressed_listener.fire_event({}, FIRE_DIRECT); });
    connect(this, &QCheckBox::released, this,
            [this] { released_listener.fire_event({}, FIRE_DIRECT); });
}

void GCheckBox::set_checked(bool value, bool notify) {
    if (notify) {
        setChecked(value);
        return;
    }
    const StopListenerTemporary stop(toggled_listener);
    setChecked(value);
}

}  // namespace ze::qt
