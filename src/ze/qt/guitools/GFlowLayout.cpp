#include "ze/qt/guitools/GFlowLayout.h"

#include <QWidget>

#include <algorithm>

namespace ze::qt {

namespace {

// The distance that the item's own style wants between buttons.
int style_spacing(const QLayoutItem& item, Qt::Orientation orientation) {
    const QWidget* const widget = const_cast<QLayoutItem&>(item).widget();
    return widget == nullptr ? 0
                             : widget->style()->layoutSpacing(QSizePolicy::PushButton,
                                                              QSizePolicy::PushButton, orientation);
}

}  // namespace

GFlowLayout::GFlowLayout(QWidget* parent, int margin, int hSpacing, int vSpacing)
    : QLayout(parent), hSpace(hSpacing), vSpace(vSpacing) {
    setContentsMargins(margin, margin, margin, margin);
}

GFlowLayout::GFlowLayout(int margin, int hSpacing, int vSpacing)
    : GFlowLayout(nullptr, margin, hSpacing, vSpacing) {}

GFlowLayout::~GFlowLayout() {
    for (QLayoutItem* const item : items) {
        delete item;  // Qt leaves the items of a layout to the layout
    }
}

void GFlowLayout::addItem(QLayoutItem* item) {
    items.push_back(item);
}

int GFlowLayout::count() const {
    return static_cast<int>(items.size());
}

QLayoutItem* GFlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items[static_cast<std::size_t>(index)] : nullptr;
}

QLayoutItem* GFlowLayout::takeAt(int index) {
    QLayoutItem* const item = itemAt(index);
    if (item != nullptr) {
        items.erase(items.begin() + index);
    }
    return item;
}

Qt::Orientations GFlowLayout::expandingDirections() const {
    return {};
}

bool GFlowLayout::hasHeightForWidth() const {
    return true;
}

int GFlowLayout::heightForWidth(int width) const {
    return doLayout(QRect(0, 0, width, 0), true);
}

void GFlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    doLayout(rect, false);
}

QSize GFlowLayout::sizeHint() const {
    return minimumSize();
}

QSize GFlowLayout::minimumSize() const {
    QSize size;
    for (const QLayoutItem* const item : items) {
        size = size.expandedTo(item->minimumSize());
    }
    const QMargins margins = contentsMargins();
    return size + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

int GFlowLayout::horizontalSpacing() const {
    return hSpace >= 0 ? hSpace : smartSpacing(QStyle::PM_LayoutHorizontalSpacing);
}

int GFlowLayout::verticalSpacing() const {
    return vSpace >= 0 ? vSpace : smartSpacing(QStyle::PM_LayoutVerticalSpacing);
}

int GFlowLayout::smartSpacing(QStyle::PixelMetric metric) const {
    if (const auto* const widget = qobject_cast<QWidget*>(parent())) {
        return widget->style()->pixelMetric(metric, nullptr, widget);
    }
    const auto* const layout = qobject_cast<QLayout*>(parent());
    return layout == nullptr ? -1 : layout->spacing();
}

int GFlowLayout::doLayout(const QRect& rect, bool testOnly) const {
    const QRect usable = rect.marginsRemoved(contentsMargins());
    const int spaceLayoutX = horizontalSpacing();
    const int spaceLayoutY = verticalSpacing();
    int x = usable.x();
    int y = usable.y();
    int lineHeight = 0;
    for (QLayoutItem* const item : items) {
        const int spaceX = spaceLayoutX == -1 ? style_spacing(*item, Qt::Horizontal) : spaceLayoutX;
        const int spaceY = spaceLayoutY == -1 ? style_spacing(*item, Qt::Vertical) : spaceLayoutY;
        const QSize size = item->sizeHint();
        if (x + size.width() > usable.right() && lineHeight > 0) {
            x = usable.x();
            y += lineHeight + spaceY;
            lineHeight = 0;
        }
        if (!testOnly) {
            item->setGeometry(QRect(QPoint(x, y), size));
        }
        x += size.width() + spaceX;
        lineHeight = std::max(lineHeight, size.height());
    }
    return y + lineHeight - rect.y() + contentsMargins().bottom();
}

}  // namespace ze::qt
