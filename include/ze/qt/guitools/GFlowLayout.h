// A layout that sets its items in a row and starts a new row when the width is used up, as text
// does.
#pragma once

#include <QLayout>
#include <QStyle>

#include <vector>

namespace ze::qt {

class GFlowLayout : public QLayout {
public:
    /// Pixels; -1 means what the style says.
    GFlowLayout(QWidget* parent, int margin, int hSpacing, int vSpacing);
    GFlowLayout(int margin, int hSpacing, int vSpacing);
    ~GFlowLayout() override;

    /// Takes the item over.
    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override;
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    [[nodiscard]] Qt::Orientations expandingDirections() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;
    void setGeometry(const QRect& rect) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;

    /// The spacing between items; -1 where neither was it given nor is there a parent to ask.
    [[nodiscard]] int horizontalSpacing() const;
    [[nodiscard]] int verticalSpacing() const;

    /// The spacing that the parent widget's style or the parent layout has; -1 without a parent.
    [[nodiscard]] int smartSpacing(QStyle::PixelMetric metric) const;

    /// Sets the items into `rect`, or with `testOnly` moves none; returns the height used.
    int doLayout(const QRect& rect, bool testOnly) const;

private:
    std::vector<QLayoutItem*> items;
    int hSpace;
    int vSpace;
};

}  // namespace ze::qt
