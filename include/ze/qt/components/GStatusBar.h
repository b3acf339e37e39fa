// The status bar of a main window; it generates its widgets, which stay visible behind messages.
#pragma once

#include "ze/qt/ColorSetter.h"
#include "ze/qt/Generator.h"

#include <QStatusBar>

namespace ze::qt {

class GStatusBar : public QStatusBar, public Generator, public ColorSetter {
public:
    explicit GStatusBar(QWidget* parent = nullptr);

    QWidget* add_widget(QWidget* widget) override;
};

}  // namespace ze::qt
