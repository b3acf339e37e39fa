// The menu bar of a main window.
#pragma once

#include <QMenuBar>

namespace ze::qt {

class GMenuBar : public QMenuBar {
public:
    using QMenuBar::QMenuBar;
};

}  // namespace ze::qt
