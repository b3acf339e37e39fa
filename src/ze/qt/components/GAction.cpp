#include "ze/qt/components/GAction.h"

#include "ze/log/pp.h"
#include "ze/qt/guitools/GGui.h"

#include <QPointer>

namespace ze::qt {

GAction::GAction(QObject* parent, const QString& text) : QAction(text, parent) {
    connect(this, &QAction::triggered, this,
            [this](bool flagChecked) { on_triggered(flagChecked); });
    connect(this, &QAction::hovered, this, [this] { hovered_signal.fire_event({}, FIRE_DIRECT); });
    connect_log();
}

void GAction::connect_log() {
    connect(this, &QAction::visibleChanged, this, [] { pp("ACTION, visibleChanged"); });
    connect(this, &QAction::toggled, this, [](bool flag) { pp("ACTION, toggled:$", flag); });
    connect(this, &QAction::checkableChanged, this,
            [](bool flag) { pp("ACTION, checkableChanged:$", flag); });
}

void GAction::on_triggered(bool flagChecked) {
    if (delay == 0) {
        fire_triggered(flagChecked);
        return;
    }
    invoke_later([self = QPointer(this), flagChecked] {
        if (self != nullptr) {
            self->fire_triggered(flagChecked);
        }
    });
}

void GAction::fire_triggered(bool flagChecked) {
    triggered_signal.fire_event({}, FIRE_DIRECT);
    triggered_listener.fire_event(flagChecked, FIRE_DIRECT);
}

}  // namespace ze::qt
