#include "controls.h"

#include "ze/qt/GPanel.h"
#include "ze/qt/components/GButton.h"

#include "measures.h"

#include <QSpinBox>

namespace vork2d::early {

using ze::qt::GButton;

QSpinBox* gen_spin_field(ze::qt::GPanel* row, const QString& label, int min, int max, int value,
                         const std::function<void(int)>& on_value) {
    row->gen_label(label);
    auto* const spin = row->gen<QSpinBox>();
    spin->setObjectName(label);
    spin->setRange(min, max);
    spin->setValue(value);
    QObject::connect(spin, &QSpinBox::valueChanged, spin, on_value);
    return spin;
}

QSpinBox* gen_spin_fields(ze::qt::GPanel* row, int msRefresh, int msTravel,
                          const std::function<void(int)>& on_refresh_delay,
                          const std::function<void(int)>& on_time_devider_speed) {
    gen_spin_field(row, QStringLiteral("refresh delay"), MS_REFRESH_MIN, MS_REFRESH_MAX, msRefresh,
                   on_refresh_delay);
    return gen_spin_field(row, QStringLiteral("timer devider speed"), MS_TRAVEL_MIN, MS_TRAVEL_MAX,
                          msTravel, on_time_devider_speed);
}

GButton* gen_button(ze::qt::GPanel* row, const QString& text,
                    const std::function<void()>& on_click) {
    auto* const button = row->gen<GButton>(text);
    button->clicked_listener += on_click;
    return button;
}

GButton* gen_switch(ze::qt::GPanel* row, const QString& text, bool on,
                    const std::function<void(bool)>& on_toggle) {
    auto* const button = row->gen<GButton>(text);
    button->setCheckable(true);
    button->set_checked(on, false);
    button->toggled_listener += on_toggle;
    return button;
}

}  // namespace vork2d::early
