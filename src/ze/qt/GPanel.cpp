#include "ze/qt/GPanel.h"

#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/guitools/GFlowLayout.h"
#include "ze/qt/inline/GGui_inline.h"
#include "ze/tools/format.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QStackedLayout>
#include <QTabWidget>
#include <QVBoxLayout>

#include <memory>

namespace ze::qt {

namespace {

constexpr const char* SOURCE = "src/ze/qt/GPanel";

QLayout* make_layout(GLAYOUT kind) {
    switch (kind) {
        case GLAYOUT::VERTICAL:
            return new QVBoxLayout;
        case GLAYOUT::HORIZONTAL:
            return new QHBoxLayout;
        case GLAYOUT::FLOW:
            return new GFlowLayout(-1, -1, -1);
        case GLAYOUT::STACKED:
            return new QStackedLayout;
        case GLAYOUT::GRID:
            return new QGridLayout;
        case GLAYOUT::FORM:
            return new QFormLayout;
    }
    return nullptr;
}

/// The widgets of the layout's direct items that are a T, in layout order.
template <typename T>
std::vector<T*> items_of(const QLayout* layout) {
    std::vector<T*> found;
    for (int i = 0; layout != nullptr && i < layout->count(); ++i) {
        if (auto* item = dynamic_cast<T*>(layout->itemAt(i)->widget())) {
            found.push_back(item);
        }
    }
    return found;
}

template <typename T>
std::size_t append_items(const QLayout* layout, std::vector<T*>& found) {
    const std::vector<T*> items = items_of<T>(layout);
    found.insert(found.end(), items.begin(), items.end());
    return items.size();
}

}  // namespace

GPanel::GPanel() : ColorSetter(this) {}

GPanel::GPanel(GLAYOUT kind) : GPanel() {
    set_layout(kind);
}

void GPanel::set_layout(GLAYOUT kind) {
    layoutKind = kind;
    QLayout* made = make_layout(kind);
    if (layout() != nullptr) {
        ze::pp("GPanel::set_layout - has already layout ?, <$>",
               layout()->metaObject()->className());
    }
    if (made == nullptr) {
        return;
    }
    if (layout() != nullptr) {
        delete made;  // Qt refuses a second layout and leaves it to its maker
        return;
    }
    setLayout(made);
    lay = made;
}

QWidget* GPanel::add_widget(QWidget* child) {
    if (child == nullptr) {
        ze::nullPointerHandling(SOURCE, __LINE__, QStringLiteral("widget == NULL"));
    }
    if (lay == nullptr) {
        ze::nullPointerHandling(SOURCE, __LINE__, QStringLiteral("lay == NULL"));
    }
    if (containsWidget(child)) {
        ze::pp("XPanel::add_widget, w already in container");
        return child;
    }
    lay->addWidget(child);
    child->setParent(this);
    return child;
}

void GPanel::remove_widget(QWidget* child, bool andDelete) {
    if (child == nullptr) {
        ze::nullPointerHandling(SOURCE, __LINE__, QStringLiteral("widget == NULL"));
    }
    if (lay == nullptr) {
        ze::pp_error("GPanel::remove_widget, lay == nullptr");
        return;
    }
    lay->removeWidget(child);
    child->setParent(nullptr);
    if (andDelete) {
        child->deleteLater();
    }
}

bool GPanel::containsWidget(QWidget* child) const {
    return child != nullptr && lay != nullptr && lay->indexOf(child) >= 0;
}

std::size_t GPanel::get_layouter(std::vector<Layouter*>& found) const {
    return append_items(lay, found);
}

std::size_t GPanel::get_widgets(std::vector<QWidget*>& found) const {
    return append_items(lay, found);
}

std::size_t GPanel::get_panels(std::vector<GPanel*>& found) const {
    return append_items(lay, found);
}

void GPanel::clear() {
    for (QWidget* child : items_of<QWidget>(lay)) {
        remove_widget(child, true);
    }
}

void GPanel::clear_grok() {
    if (lay == nullptr) {
        return;
    }
    const QMargins margins = get_margins();
    const int spacing = get_spacing();
    clearLayout(lay);
    delete lay;  // a child takes a new layout only when the old one is gone
    lay = nullptr;
    set_layout(layoutKind);
    set_margins(margins);
    set_spacing(spacing);
}

void GPanel::clearLayout(QLayout* layout) {
    if (layout == nullptr) {
        return;
    }
    while (QLayoutItem* taken = layout->takeAt(0)) {
        const std::unique_ptr<QLayoutItem> item(taken);
        if (QWidget* child = item->widget()) {
            child->deleteLater();
        } else {
            clearLayout(item->layout());
        }
    }
}

void GPanel::do_layout(LayoutEvent& event) {
    if (lay == nullptr) {
        return;
    }
    for (Layouter* child : items_of<Layouter>(lay)) {
        child->do_layout(event);
    }
    layout_listener.fire_event(&event, FIRE_DIRECT);
}

QStackedLayout* GPanel::stacked_layout(const char* complaint) const {
    auto* stacked = dynamic_cast<QStackedLayout*>(lay);
    if (stacked == nullptr) {
        ze::pp_error(complaint);
    }
    return stacked;
}

void GPanel::show_stacked_widget(QWidget* child) {
    if (child == nullptr) {
        ze::nullPointerHandling(SOURCE, __LINE__, QStringLiteral("widget == NULL"));
    }
    if (auto* stacked = stacked_layout("GPanel::show_stacked_widget, NO QStackedLayout")) {
        stacked->setCurrentWidget(child);
    }
}

QWidget* GPanel::current_stacked_widget() const {
    const auto* stacked = stacked_layout("GPanel::current_stacked_widget, NO QStackedLayout");
    return stacked == nullptr ? nullptr : stacked->currentWidget();
}

GPanel* GPanel::current_stacked_panel() const {
    return dynamic_cast<GPanel*>(current_stacked_widget());
}

void GPanel::set_tab_title(const QString& title) {
    ze::pp("GPanel::set_tab_title <$>", title);
    QWidget* above = parentWidget();
    while (above != nullptr && dynamic_cast<QTabWidget*>(above) == nullptr) {
        above = above->parentWidget();
    }
    auto* tabs = dynamic_cast<QTabWidget*>(above);
    if (tabs != nullptr && tabs->indexOf(this) >= 0) {
        tabs->setTabText(tabs->indexOf(this), title);
    }
}

void GPanel::set_margins(const QMargins& margins) {
    if (lay != nullptr) {
        lay->setContentsMargins(margins);
    }
}

void GPanel::set_margins(int margin) {
    set_margins(QMargins(margin, margin, margin, margin));
}

QMargins GPanel::get_margins() const {
    return lay == nullptr ? QMargins() : lay->contentsMargins();
}

void GPanel::set_spacing(int spacing) {
    if (lay != nullptr) {
        lay->setSpacing(spacing);
    }
}

int GPanel::get_spacing() const {
    return lay == nullptr ? -1 : lay->spacing();
}

void GPanel::set_sunken_border() {
    setFrameShape(QFrame::Box);
    setFrameShadow(QFrame::Sunken);
    setLineWidth(1);
    setMidLineWidth(1);
}

void GPanel::set_background_color(QColor color) {
    set_bg(color);
}

void GPanel::set_visible(bool visible) {
    setVisible(visible);
    visible_listener.fire_event(visible, FIRE_DIRECT);
}

void GPanel::set_growable(bool growable) {
    if (growable) {
        ze::qt::set_growable(this);
    }
}

void GPanel::set_growable_horizontal() {
    ze::qt::set_growable_horizontal(this);
}

void GPanel::set_growable_vertical() {
    ze::qt::set_growable_vertical(this);
}

bool GPanel::is_logger_visible() const {
    const GMainWindow* mainWindow = GMainWindow::from_widget(this);
    return mainWindow != nullptr && mainWindow->is_logger_visible();
}

bool GPanel::is_name(const QString& name) const {
    return objectName() == name;
}

QString GPanel::to_string() const {
    const QString name = objectName();
    return name.isEmpty() ? QStringLiteral("GPanel") : ze::str::qprintF("GPanel@$", name);
}

void GPanel::showEvent(QShowEvent* event) {
    QFrame::showEvent(event);
    visible_listener.fire_event(true, FIRE_DIRECT);
}

void GPanel::hideEvent(QHideEvent* event) {
    QFrame::hideEvent(event);
    visible_listener.fire_event(false, FIRE_DIRECT);
}

void GPanel::mousePressEvent(QMouseEvent* event) {
    QFrame::mousePressEvent(event);
    mouse_press_listener.fire_event(event, FIRE_DIRECT);
}

void GPanel::mouseReleaseEvent(QMouseEvent* event) {
    QFrame::mouseReleaseEvent(event);
    mouse_release_listener.fire_event(event, FIRE_DIRECT);
}

void GPanel::mouseMoveEvent(QMouseEvent* event) {
    QFrame::mouseMoveEvent(event);
    mouse_move_listener.fire_event(event, FIRE_DIRECT);
}

}  // namespace ze::qt
