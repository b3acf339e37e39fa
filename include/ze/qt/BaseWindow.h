// A top-level window whose text, like that of any other widget, is set by setText().
#pragma once

#include <QMainWindow>

namespace ze::qt {

class BaseWindow : public QMainWindow {
public:
    using QMainWindow::QMainWindow;

    /// Sets the window's title.
    void setText(const QString& text) { setWindowTitle(text); }
};

}  // namespace ze::qt
