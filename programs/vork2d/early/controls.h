// The pieces of a row of controls that are the same in the windows of the first four generations.
#pragma once

#include <QString>

#include <functional>

class QSpinBox;

namespace ze::qt {
class GButton;
class GPanel;
}  // namespace ze::qt

namespace vork2d::early {

/// A number with its label in front, by which it is also found again. The callable gets each new
/// value, not the first one.
QSpinBox* gen_spin_field(ze::qt::GPanel* row, const QString& label, int min, int max, int value,
                         const std::function<void(int)>& on_value);

/// The two numbers of a test window: "refresh delay" is the interval of the frame timer, "timer
/// devider speed" the time of travel by which the width of the field is divided to get the speed;
/// both in milliseconds. Returns the second.
QSpinBox* gen_spin_fields(ze::qt::GPanel* row, int msRefresh, int msTravel,
                          const std::function<void(int)>& on_refresh_delay,
                          const std::function<void(int)>& on_time_devider_speed);

/// A button that runs the callable at each click.
ze::qt::GButton* gen_button(ze::qt::GPanel* row, const QString& text,
                            const std::function<void()>& on_click);

/// A button that stays down while the switch is on.
ze::qt::GButton* gen_switch(ze::qt::GPanel* row, const QString& text, bool on,
                            const std::function<void(bool)>& on_toggle);

}  // namespace vork2d::early
