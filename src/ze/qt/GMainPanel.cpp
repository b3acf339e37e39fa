#include "ze/qt/GMainPanel.h"

namespace ze::qt {

namespace {

constexpr int MARGIN = 2;  // pixels

}  // namespace

GMainPanel::GMainPanel() : GMainPanel(GLAYOUT::VERTICAL) {}

GMainPanel::GMainPanel(GLAYOUT kind) : GPanel(kind) {
    set_margins(MARGIN);
}

void GMainPanel::do_layout(LayoutEvent& event) {
    GPanel::do_layout(event);
}

}  // namespace ze::qt
