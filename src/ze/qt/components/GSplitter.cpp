#include "ze/qt/components/GSplitter.h"

#include "ze/log/exits.h"
#include "ze/qt/GApp.h"

namespace ze::qt {

GSplitter::GSplitter(Qt::Orientation orientation, QWidget* parent)
    : QSplitter(orientation, parent) {
    connect(this, &QSplitter::splitterMoved, this,
            [this](int pos, int index) { on_divider_moved(pos, index); });
}

QWidget* GSplitter::add_widget(QWidget* widget) {
    if (widget == nullptr) {
        nullPointerHandling("src/ze/qt/components/GSplitter", __LINE__,
                            QStringLiteral("widget == NULL"));
    }
    addWidget(widget);
    return widget;
}

void GSplitter::do_layout(LayoutEvent& ev) {
    for (int i = 0; i < count(); ++i) {
        if (auto* const layouter = dynamic_cast<Layouter*>(widget(i))) {
            layouter->do_layout(ev);
        }
    }
}

void GSplitter::on_divider_moved(int pos, int index) {
    moved_listener.fire_event(pos, FIRE_DIRECT);
    divider_listener.fire_event({this, index, pos}, FIRE_DIRECT);
    if (gApp != nullptr) {
        gApp->settings_changed_listener.fire_event({}, FIRE_DIRECT);
    }
}

}  // namespace ze::qt
