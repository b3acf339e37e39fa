// Measures each line of the chat once. A list asks all of its lines for their size whenever one
// comes, and long lines of a talkative friend would stop the game.
#pragma once

#include <QCache>
#include <QFont>
#include <QSize>
#include <QString>
#include <QStyledItemDelegate>

namespace vork2d::v5 {

class ChatLineDelegate : public QStyledItemDelegate {
public:
    /// As many lines as a chat keeps, and so as many sizes as there are to remember.
    static constexpr int MAX_LINES = 500;

    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

private:
    mutable QCache<QString, QSize> sizes{MAX_LINES};
    mutable QFont fontMeasured;  ///< what `sizes` holds goes for this font alone
};

}  // namespace vork2d::v5
