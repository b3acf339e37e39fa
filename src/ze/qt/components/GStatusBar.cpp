#include "ze/qt/components/GStatusBar.h"

namespace ze::qt {

GStatusBar::GStatusBar(QWidget* parent) : QStatusBar(parent), ColorSetter(this) {}

QWidget* GStatusBar::add_widget(QWidget* widget) {
    addPermanentWidget(widget);
    return widget;
}

}  // namespace ze::qt
