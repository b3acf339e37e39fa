#include "ze/qt/components/GListView.h"

#include "ze/log/pp.h"

#include <QContextMenuEvent>
#include <QItemSelectionModel>

#include <algorithm>

namespace ze::qt {

GListView::GListView() : GListView(new QStandardItemModel) {}

GListView::GListView(QAbstractItemModel* model) : ColorSetter(this) {
    GListView::setModel(model);
    connect(this, &QListView::clicked, this, [this](const QModelIndex& index) {
        if (const auto* const items = item_model()) {
            item_clicked_listener.fire_event(items->itemFromIndex(index), FIRE_DIRECT);
        }
    });
}

void GListView::setModel(QAbstractItemModel* model) {
    disconnect(itemChanged);
    if (model != nullptr && model->parent() == nullptr) {
        model->setParent(this);
    }
    QListView::setModel(model);
    if (const auto* const items = item_model()) {
        itemChanged = connect(
            items, &QStandardItemModel::itemChanged, this,
            [this](QStandardItem* item) { item_changed_listener.fire_event(item, FIRE_DIRECT); });
    }
}

QStandardItemModel* GListView::item_model() const noexcept {
    return qobject_cast<QStandardItemModel*>(model());
}

QStandardItemModel* GListView::item_model(const char* operation) const {
    QStandardItemModel* const items = item_model();
    if (items == nullptr) {
        pp_error("GListView::$ - model is not QStandardItemModel", operation);
    }
    return items;
}

QStandardItem* GListView::gen_item(const QString& text) {
    return gen_at_item(model() == nullptr ? 0 : model()->rowCount(), text);
}

QStandardItem* GListView::gen_at_item(int row, const QString& text) {
    if (row < 0) {
        pp_error("GListView::gen_at_item - row < 0: $", row);
        return nullptr;
    }
    QStandardItemModel* const items = item_model("gen_at_item");
    if (items == nullptr) {
        return nullptr;
    }
    auto* const item = new QStandardItem(text);
    item->setEditable(false);
    items->insertRow(std::min(row, items->rowCount()), item);
    return item;
}

void GListView::gen_items(const QStringList& texts) {
    QStandardItemModel* const items = item_model("gen_items");
    if (items == nullptr) {
        return;
    }
    const StopListenerTemporary stop(item_changed_listener);
    clear();
    for (const QString& text : texts) {
        gen_item(text);
    }
}

void GListView::scroll_to_end() {
    scrollToBottom();
}

void GListView::scroll_to_begin() {
    scrollToTop();
}

void GListView::scroll_to(int row, QAbstractItemView::ScrollHint hint) {
    if (model() != nullptr) {
        scrollTo(model()->index(row, modelColumn(), rootIndex()), hint);
    }
}

void GListView::clear() {
    if (model() != nullptr) {
        model()->removeRows(0, model()->rowCount());
    }
}

QString GListView::string_at(int row) const {
    const QStandardItemModel* const items = item_model("string_at");
    if (items == nullptr) {
        return {};
    }
    if (row < 0 || row >= items->rowCount()) {
        pp_error("GListView::string_at - index out of range: $", row);
        return {};
    }
    const QStandardItem* const item = items->item(row);
    if (item == nullptr) {
        pp_error("GListView::string_at - item is null at index: $", row);
        return {};
    }
    return item->text();
}

int GListView::remove(const QString& text, bool flagAll) {
    QStandardItemModel* const items = item_model("remove");
    if (items == nullptr) {
        return 0;
    }
    int removed = 0;
    for (int row = 0; row < items->rowCount() && (flagAll || removed == 0);) {
        const QStandardItem* const item = items->item(row);
        if (item != nullptr && item->text() == text) {
            items->removeRow(row);
            ++removed;
        } else {
            ++row;
        }
    }
    return removed;
}

void GListView::mousePressEvent(QMouseEvent* ev) {
    pp("GListView::mousePressEvent");
    QListView::mousePressEvent(ev);
}

void GListView::mouseReleaseEvent(QMouseEvent* ev) {
    pp("GListView::mouseReleaseEvent");
    QListView::mouseReleaseEvent(ev);
}

void GListView::mouseMoveEvent(QMouseEvent* ev) {
    pp("GListView::mouseMoveEvent");
    QListView::mouseMoveEvent(ev);
}

void GListView::contextMenuEvent(QContextMenuEvent* ev) {
    pp("GListView::contextMenuEvent");
    QListView::contextMenuEvent(ev);
    context_menu_listener.fire_event(ev, FIRE_DIRECT);
}

}  // namespace ze::qt
