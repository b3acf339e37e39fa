#include "vork2d/v5/ChatLineDelegate.h"

#include <QListView>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>

#include <gtest/gtest.h>

namespace {

class CountingDelegate final : public vork2d::v5::ChatLineDelegate {
public:
    using ChatLineDelegate::ChatLineDelegate;

    mutable int measured = 0;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        measured += 1;
        ChatLineDelegate::initStyleOption(option, index);
    }
};

class ChatLine : public testing::Test {
protected:
    static constexpr int LINES = 3;
    QStandardItemModel lines;
    QListView list;
    CountingDelegate delegate;

    ChatLine() {
        list.setModel(&lines);
        list.setItemDelegate(&delegate);
        for (const char* const text : {"i", "a longer line", "the longest line of them all"}) {
            lines.appendRow(new QStandardItem(QString::fromUtf8(text)));
        }
    }

    void measure_all() const {
        for (int row = 0; row < lines.rowCount(); ++row) {
            static_cast<void>(list.sizeHintForIndex(lines.index(row, 0)));
        }
    }
};

TEST_F(ChatLine, has_the_size_that_any_list_gives_it) {
    QStyledItemDelegate plain;
    for (int round = 0; round < 2; ++round) {
        for (int row = 0; row < lines.rowCount(); ++row) {
            const QModelIndex index = lines.index(row, 0);
            list.setItemDelegate(&delegate);
            const QSize size = list.sizeHintForIndex(index);
            list.setItemDelegate(&plain);
            EXPECT_EQ(size, list.sizeHintForIndex(index)) << row;
        }
    }
    list.setItemDelegate(&delegate);
}

TEST_F(ChatLine, is_measured_once) {
    measure_all();
    measure_all();
    EXPECT_EQ(delegate.measured, LINES);
}

TEST_F(ChatLine, is_measured_once_while_old_lines_go_and_new_ones_come) {
    measure_all();
    lines.removeRow(0);
    lines.appendRow(new QStandardItem(QStringLiteral("new")));
    measure_all();
    measure_all();
    EXPECT_EQ(delegate.measured, LINES + 1);
}

TEST_F(ChatLine, is_measured_anew_in_another_font) {
    const QModelIndex index = lines.index(2, 0);
    const QSize before = list.sizeHintForIndex(index);
    QFont larger = list.font();
    larger.setPointSize(2 * larger.pointSize());
    list.setFont(larger);
    const QSize after = list.sizeHintForIndex(index);
    EXPECT_GT(after.width(), before.width() * 3 / 2);
    EXPECT_GT(after.height(), before.height());
}

TEST_F(ChatLine, with_another_text_has_another_size) {
    const QModelIndex index = lines.index(0, 0);
    const QSize before = list.sizeHintForIndex(index);
    lines.item(0)->setText(QStringLiteral("no longer so short"));
    EXPECT_GT(list.sizeHintForIndex(index).width(), before.width());
}

}  // namespace
