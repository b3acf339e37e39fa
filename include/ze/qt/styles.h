// Style sheets of the sliders. Colours of everything else are the palettes of ze/qt/themes.h.
#pragma once

#include <QtCore/qnamespace.h>

class QSlider;

namespace ze::qt::styles {

/// Gives the slider a handle that a finger can hold. Theme 1 and 2 take the dark sheets, any other
/// the light ones.
void set_slider_handle(QSlider* slider, Qt::Orientation orientation, unsigned int theme);

}  // namespace ze::qt::styles
