#include "ze/qt/components/GListView.h"

#include <QItemSelectionModel>

#include <algorithm>

namespace ze::qt {

void GListView::select_all(bool flag) {
    if (flag) {
        selectAll();
    } else {
        clearSelection();
    }
}

void GListView::select(Qt::CheckState state) {
    const QStandardItemModel* const items = item_model();
    if (items == nullptr) {
        return;
    }
    const StopListenerTemporary stop(item_changed_listener);
    for (int row = 0; row < items->rowCount(); ++row) {
        QStandardItem* const item = items->item(row);
        if (item != nullptr && item->isCheckable()) {
            item->setCheckState(state);
        }
    }
}

void GListView::select_none() {
    clearSelection();
}

void GListView::set_single_selection() {
    setSelectionMode(QAbstractItemView::SingleSelection);
}

void GListView::set_multi_selection() {
    setSelectionMode(QAbstractItemView::MultiSelection);
}

void GListView::set_extended_selection() {
    setSelectionMode(QAbstractItemView::ExtendedSelection);
}

std::vector<int> GListView::selected_rows() const {
    std::vector<int> rows;
    if (selectionModel() != nullptr) {
        for (const QModelIndex& index : selectionModel()->selectedRows(modelColumn())) {
            rows.push_back(index.row());
        }
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

QStandardItem* GListView::get_selected_item() const {
    const std::vector<QStandardItem*> items = get_selected_items();
    return items.empty() ? nullptr : items.front();
}

std::vector<QStandardItem*> GListView::get_selected_items() const {
    std::vector<QStandardItem*> selected;
    if (const QStandardItemModel* const items = item_model()) {
        for (const int row : selected_rows()) {
            if (QStandardItem* const item = items->item(row)) {
                selected.push_back(item);
            }
        }
    }
    return selected;
}

int GListView::selection_items_count() const {
    return static_cast<int>(selected_rows().size());
}

bool GListView::has_selection_items() const {
    return selectionModel() != nullptr && selectionModel()->hasSelection();
}

QStringList GListView::get_string_selection() const {
    if (item_model("get_string_selection") == nullptr) {
        return {};
    }
    QStringList texts;
    for (const QStandardItem* const item : get_selected_items()) {
        texts.append(item->text());
    }
    return texts;
}

int GListView::remove_selection() {
    QStandardItemModel* const items = item_model("remove_selection");
    if (items == nullptr) {
        return 0;
    }
    const std::vector<int> rows = selected_rows();
    // From below, so that the rows still to go keep their numbers.
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        items->removeRow(*row);
    }
    return static_cast<int>(rows.size());
}

void GListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    selection_listener.fire_event({}, FIRE_DIRECT);
}

}  // namespace ze::qt
