#include "ze/qt/components/BasicSlider.h"

#include "ze/qt/styles.h"

namespace ze::qt {

BasicSlider::BasicSlider(Qt::Orientation orientation, QWidget* parent)
    : QSlider(orientation, parent) {}

void BasicSlider::adapt_style(unsigned int theme) {
    styles::set_slider_handle(this, orientation(), theme);
}

}  // namespace ze::qt
