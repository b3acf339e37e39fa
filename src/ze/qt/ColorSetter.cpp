#include "ze/qt/ColorSetter.h"

#include <QWidget>

namespace ze::qt {

void ColorSetter::set_bg(QColor color) {
    if (!palSaved) {
        palSaved = colorTarget->palette();
        flagAutoFillSaved = colorTarget->autoFillBackground();
    }
    QPalette palette = colorTarget->palette();
    colorTarget->setAutoFillBackground(true);
    for (const auto role : {QPalette::Base, QPalette::Window, QPalette::Button}) {
        palette.setBrush(QPalette::All, role, QBrush(color));
    }
    colorTarget->setPalette(palette);
}

}  // namespace ze::qt
