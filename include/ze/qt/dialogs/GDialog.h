// The base of the dialogs that are built in code. When it closes and no window has the keyboard,
// its main window gets it back.
#pragma once

#include "ze/qt/GLAYOUT.h"

#include <QDialog>

namespace ze::qt {

class GMainPanel;

class GDialog : public QDialog {
public:
    explicit GDialog(QWidget* parent = nullptr);

    /// Makes the panel that fills the dialog. To be called once.
    GMainPanel* gen_main_panel(GLAYOUT kind = GLAYOUT::VERTICAL);

    /// Builds the contents. This one is a demonstration, every real dialog overrides it.
    virtual void ini();

protected:
    void hideEvent(QHideEvent* ev) override;
};

}  // namespace ze::qt
