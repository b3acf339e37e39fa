#include "ze/qt/components/GButtonGroup.h"

#include "ze/log/pp.h"

#include <QAbstractButton>

namespace ze::qt {

GButtonGroup::GButtonGroup(QObject* parent) : QButtonGroup(parent) {
    connect(this, &QButtonGroup::buttonToggled, this,
            [this](QAbstractButton* button, bool checked) {
                toggled_listener.fire_event({button, checked}, FIRE_DIRECT);
            });
}

void GButtonGroup::uncheck() {
    setExclusive(false);
    for (QAbstractButton* const button : buttons()) {
        button->setChecked(false);
    }
}

QAbstractButton* GButtonGroup::button_by_name(const QString& name) const {
    if (name.isEmpty()) {
        return nullptr;
    }
    for (QAbstractButton* const button : buttons()) {
        if (button->objectName() == name) {
            return button;
        }
    }
    pp_error("GButtonGroup::button_by_name, name '$' not found", name);
    return nullptr;
}

void GButtonGroup::set_checked(const QString& name) {
    if (QAbstractButton* const button = button_by_name(name)) {
        button->setChecked(true);
    }
}

void GButtonGroup::set_enabled(bool flag) {
    for (QAbstractButton* const button : buttons()) {
        button->setEnabled(flag);
    }
}

}  // namespace ze::qt
