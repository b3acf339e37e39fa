// A list of texts on a QStandardItemModel. The operations on items need that model; on another one
// they log an error and give an empty answer.
#pragma once

#include "ze/qt/ColorSetter.h"
#include "ze/tools/Listener.h"

#include <QListView>
#include <QStandardItemModel>
#include <QStringList>

#include <vector>

namespace ze::qt {

class GListView : public QListView, public ColorSetter {
public:
    Listener<QStandardItem*> item_clicked_listener;
    Listener<QStandardItem*>
        item_changed_listener;  ///< text or check state, by the user or by the program
    Listener<NO_PAYLOAD> selection_listener;
    Listener<QContextMenuEvent*> context_menu_listener;

    /// A list on a new model of its own, or on `model`. A model without a parent becomes the
    /// list's.
    GListView();
    explicit GListView(QAbstractItemModel* model);

    void setModel(QAbstractItemModel* model) override;

    /// Appends a row and returns its item; null on another model.
    QStandardItem* gen_item(const QString& text);
    /// Inserts a row before `row`, or at the end when there are fewer rows; null for a row below 0.
    QStandardItem* gen_at_item(int row, const QString& text);
    /// Replaces all rows, without telling the item listener.
    void gen_items(const QStringList& texts);

    /// Takes the style sheet of a theme number.
    void adapt_style(unsigned int theme);

    /// Selects all rows, as far as the selection mode allows, or none.
    void select_all(bool flag);
    /// Sets the check mark of every checkable item, without telling the item listener.
    void select(Qt::CheckState state);
    void select_none();

    void scroll_to_end();
    void scroll_to_begin();
    /// Does nothing for a row out of range.
    void scroll_to(int row, QAbstractItemView::ScrollHint hint = QAbstractItemView::EnsureVisible);

    /// Removes all rows.
    void clear();

    void set_single_selection();
    void set_multi_selection();
    void set_extended_selection();

    /// The selected item with the lowest row, or null.
    [[nodiscard]] QStandardItem* get_selected_item() const;
    /// All selected items in row order.
    [[nodiscard]] std::vector<QStandardItem*> get_selected_items() const;
    [[nodiscard]] int selection_items_count() const;
    [[nodiscard]] bool has_selection_items() const;

    /// The text of a row; empty, with an error, out of range.
    [[nodiscard]] QString string_at(int row) const;
    /// The texts of the selected rows in row order.
    [[nodiscard]] QStringList get_string_selection() const;

    /// Removes the first row with this text, or all of them; returns how many.
    int remove(const QString& text, bool flagAll);
    /// Removes the selected rows and returns how many.
    int remove_selection();

protected:
    void mousePressEvent(QMouseEvent* ev) override;
    void mouseReleaseEvent(QMouseEvent* ev) override;
    void mouseMoveEvent(QMouseEvent* ev) override;
    void contextMenuEvent(QContextMenuEvent* ev) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

private:
    [[nodiscard]] QStandardItemModel* item_model() const noexcept;
    [[nodiscard]] QStandardItemModel* item_model(const char* operation) const;
    [[nodiscard]] std::vector<int> selected_rows() const;

    QMetaObject::Connection itemChanged;
};

/// The style sheets of a list in the normal and in the other themes.
[[nodiscard]] QString create_style_GListView_normal();
[[nodiscard]] QString create_style_GListView_dark();

}  // namespace ze::qt
