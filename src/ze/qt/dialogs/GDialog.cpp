#include "ze/qt/dialogs/GDialog.h"

#include "ze/log/pp.h"
#include "ze/qt/GMainPanel.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/guitools/GGui.h"

#include <QVBoxLayout>

namespace ze::qt {

GDialog::GDialog(QWidget* parent) : QDialog(parent) {}

GMainPanel* GDialog::gen_main_panel(GLAYOUT kind) {
    auto* const panel = new GMainPanel(kind);
    auto* const lay = new QVBoxLayout(this);
    lay->setContentsMargins(0, 0, 0, 0);
    lay->setSpacing(0);
    lay->addWidget(panel);
    return panel;
}

void GDialog::ini() {
    GMainPanel* const panel = gen_main_panel(GLAYOUT::VERTICAL);
    for (const auto& name : {u"Ebbe", u"Rika", u"Sanne", u"Mela"}) {
        panel->gen<GButton>(QString::fromUtf16(name));
    }
    panel->gen_spacer_horz();
    panel->gen<GButton>(QStringLiteral("End"))->clicked_listener += [this] {
        close();
    };
}

void GDialog::hideEvent(QHideEvent* ev) {
    QDialog::hideEvent(ev);
    activate_main_window_later(this);
}

}  // namespace ze::qt
