#include "ChatLineDelegate.h"

#include <QModelIndex>
#include <QStyleOptionViewItem>

namespace vork2d::v5 {

QSize ChatLineDelegate::sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
    if (option.font != fontMeasured) {
        sizes.clear();
        fontMeasured = option.font;
    }
    const QString text = index.data().toString();
    if (const QSize* const known = sizes.object(text)) {
        return *known;
    }
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    sizes.insert(text, new QSize(size));  // owned by the cache
    return size;
}

}  // namespace vork2d::v5
