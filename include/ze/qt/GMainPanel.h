// The central panel of a window or a dialog.
#pragma once

#include "ze/qt/GPanel.h"

namespace ze::qt {

class GMainPanel : public GPanel {
public:
    /// A vertical panel.
    GMainPanel();
    explicit GMainPanel(GLAYOUT kind);

    void do_layout(LayoutEvent& event) override;
};

}  // namespace ze::qt
