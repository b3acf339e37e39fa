#include "ze/qt/guitools/GFlowLayout.h"

#include <QHBoxLayout>
#include <QProxyStyle>
#include <QStyle>
#include <QWidget>

#include <memory>
#include <vector>

#include <gtest/gtest.h>

using ze::qt::GFlowLayout;

namespace {

// A widget whose size hint is given.
class Box : public QWidget {
public:
    explicit Box(QSize theHint) : hint(theHint) {}
    [[nodiscard]] QSize sizeHint() const override { return hint; }
    [[nodiscard]] QSize minimumSizeHint() const override { return hint / 2; }

private:
    QSize hint;
};

// A style that keeps buttons 3 apart across and 7 apart upward.
class SpacedStyle : public QProxyStyle {
public:
    int layoutSpacing(QSizePolicy::ControlType first, QSizePolicy::ControlType second,
                      Qt::Orientation orientation, const QStyleOption* option,
                      const QWidget* widget) const override {
        if (first != QSizePolicy::PushButton || second != QSizePolicy::PushButton) {
            return QProxyStyle::layoutSpacing(first, second, orientation, option, widget);
        }
        return orientation == Qt::Horizontal ? 3 : 7;
    }
};

struct Flow {
    Flow(int margin, int hSpacing, int vSpacing)
        : layout(new GFlowLayout(&panel, margin, hSpacing, vSpacing)) {}

    void add(int w, int h) { layout->addWidget(boxes.emplace_back(new Box(QSize(w, h)))); }

    [[nodiscard]] std::vector<QRect> places() const {
        std::vector<QRect> rects;
        for (const QWidget* const box : boxes) {
            rects.push_back(box->geometry());
        }
        return rects;
    }

    QWidget panel;
    GFlowLayout* layout;
    std::vector<Box*> boxes;
};

}  // namespace

TEST(GFlowLayout, rows_wrap_where_the_width_ends) {
    Flow flow(5, 10, 20);
    flow.add(40, 10);
    flow.add(40, 30);
    flow.add(40, 10);
    const int height = flow.layout->doLayout(QRect(0, 0, 110, 500), false);
    EXPECT_EQ(flow.places(),
              (std::vector<QRect>{{5, 5, 40, 10}, {55, 5, 40, 30}, {5, 55, 40, 10}}));
    EXPECT_EQ(height, 70);
}

TEST(GFlowLayout, the_place_and_each_margin_count_where_they_stand) {
    Flow flow(0, 10, 20);
    flow.layout->setContentsMargins(1, 2, 3, 4);
    flow.add(40, 10);
    flow.add(40, 30);
    const int height = flow.layout->doLayout(QRect(7, 9, 60, 500), false);
    EXPECT_EQ(flow.places(), (std::vector<QRect>{{8, 11, 40, 10}, {8, 41, 40, 30}}));
    EXPECT_EQ(height, 2 + 10 + 20 + 30 + 4);
}

TEST(GFlowLayout, a_row_is_as_high_as_its_highest_item) {
    Flow flow(0, 0, 0);
    flow.add(40, 30);
    flow.add(40, 10);
    EXPECT_EQ(flow.layout->doLayout(QRect(0, 0, 100, 500), false), 30);
}

TEST(GFlowLayout, an_item_that_ends_on_the_last_pixel_column_still_fits) {
    Flow flow(0, 0, 0);
    flow.add(40, 10);
    flow.add(40, 10);
    flow.layout->doLayout(QRect(0, 0, 81, 500), false);
    EXPECT_EQ(flow.places()[1].topLeft(), QPoint(40, 0));
    flow.layout->doLayout(QRect(0, 0, 80, 500), false);
    EXPECT_EQ(flow.places()[1].topLeft(), QPoint(0, 10));
}

TEST(GFlowLayout, an_item_wider_than_the_room_does_not_wrap_at_the_start_of_a_row) {
    Flow flow(0, 0, 0);
    flow.add(300, 10);
    EXPECT_EQ(flow.layout->doLayout(QRect(0, 0, 100, 500), false), 10);
    EXPECT_EQ(flow.places(), (std::vector<QRect>{{0, 0, 300, 10}}));
}

TEST(GFlowLayout, a_test_run_moves_nothing) {
    Flow flow(0, 0, 0);
    flow.add(40, 10);
    flow.add(40, 10);
    const std::vector<QRect> before = flow.places();
    EXPECT_EQ(flow.layout->doLayout(QRect(0, 0, 50, 500), true), 20);
    EXPECT_EQ(flow.places(), before);
}

TEST(GFlowLayout, the_height_follows_the_width) {
    Flow flow(5, 10, 20);
    flow.add(40, 10);
    flow.add(40, 30);
    EXPECT_TRUE(flow.layout->hasHeightForWidth());
    EXPECT_EQ(flow.layout->heightForWidth(110), 40);
    EXPECT_EQ(flow.layout->heightForWidth(60), 70);
}

TEST(GFlowLayout, the_geometry_places_the_items) {
    Flow flow(0, 10, 0);
    flow.add(40, 10);
    flow.add(40, 10);
    flow.layout->setGeometry(QRect(7, 9, 200, 50));
    EXPECT_EQ(flow.places(), (std::vector<QRect>{{7, 9, 40, 10}, {57, 9, 40, 10}}));
}

TEST(GFlowLayout, the_size_hint_is_the_largest_minimum_with_the_margins) {
    Flow flow(5, 0, 0);
    flow.add(40, 10);
    flow.add(20, 60);
    EXPECT_EQ(flow.layout->minimumSize(), QSize(30, 40));
    EXPECT_EQ(flow.layout->sizeHint(), QSize(30, 40));
    EXPECT_EQ(flow.layout->expandingDirections(), Qt::Orientations());
}

TEST(GFlowLayout, items_are_found_and_taken_by_index) {
    Flow flow(0, 0, 0);
    flow.add(40, 10);
    flow.add(20, 10);
    const std::unique_ptr<QLayoutItem> taken(flow.layout->takeAt(0));
    EXPECT_EQ(taken->widget(), flow.boxes[0]);
    EXPECT_EQ(flow.layout->count(), 1);
    EXPECT_EQ(flow.layout->itemAt(0)->widget(), flow.boxes[1]);
    EXPECT_EQ(flow.layout->itemAt(1), nullptr);
    EXPECT_EQ(flow.layout->itemAt(-1), nullptr);
    EXPECT_EQ(flow.layout->takeAt(1), nullptr);
}

TEST(GFlowLayout, a_spacing_that_was_not_given_is_asked_of_the_parent) {
    QWidget panel;
    const GFlowLayout inWidget(&panel, 0, -1, -1);
    EXPECT_EQ(inWidget.horizontalSpacing(),
              panel.style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing, nullptr, &panel));
    EXPECT_EQ(inWidget.verticalSpacing(),
              panel.style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing, nullptr, &panel));

    QWidget outer;
    auto* const row = new QHBoxLayout(&outer);
    row->setSpacing(17);
    auto* const inLayout = new GFlowLayout(0, -1, -1);
    row->addLayout(inLayout);
    EXPECT_EQ(inLayout->horizontalSpacing(), 17);
    EXPECT_EQ(inLayout->verticalSpacing(), 17);

    const GFlowLayout alone(0, -1, -1);
    EXPECT_EQ(alone.horizontalSpacing(), -1);
    EXPECT_EQ(alone.verticalSpacing(), -1);
}

TEST(GFlowLayout, without_any_spacing_the_items_own_style_decides) {
    SpacedStyle style;
    QWidget holder;  // a layout passes over windows
    GFlowLayout alone(0, -1, -1);
    Box first(QSize(40, 10));
    Box second(QSize(40, 10));
    for (Box* const box : {&first, &second}) {
        box->setParent(&holder);
        box->setStyle(&style);
    }
    alone.addItem(new QWidgetItem(&first));
    alone.addItem(new QWidgetItem(&second));
    alone.doLayout(QRect(0, 0, 500, 100), false);
    EXPECT_EQ(second.geometry().topLeft(), QPoint(40 + 3, 0));
    alone.doLayout(QRect(0, 0, 60, 100), false);
    EXPECT_EQ(second.geometry().topLeft(), QPoint(0, 10 + 7));
}

TEST(GFlowLayout, the_margin_goes_to_all_four_sides) {
    const GFlowLayout layout(6, 1, 2);
    EXPECT_EQ(layout.contentsMargins(), QMargins(6, 6, 6, 6));
    EXPECT_EQ(layout.horizontalSpacing(), 1);
    EXPECT_EQ(layout.verticalSpacing(), 2);
}
