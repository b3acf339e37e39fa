#include "ze/qt/components/GListView.h"

#include "ze/tools/format.h"

#include "support/LogCapture.h"

#include <QContextMenuEvent>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QStringListModel>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

using ze::qt::GListView;

namespace {

using Texts = std::vector<std::string>;

Texts to_texts(const QStringList& list) {
    Texts texts;
    for (const QString& text : list) {
        texts.push_back(text.toStdString());
    }
    return texts;
}

class GListViewTest : public testing::Test {
protected:
    GListViewTest() {
        log.ignore("Listener::~Listener");
        list.gen_items(
            {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("b")});
        list.set_extended_selection();
    }

    [[nodiscard]] Texts rows() const {
        Texts texts;
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            texts.push_back(list.string_at(row).toStdString());
        }
        return texts;
    }

    void select_rows(std::initializer_list<int> selected) {
        list.clearSelection();
        for (const int row : selected) {
            list.selectionModel()->select(list.model()->index(row, 0), QItemSelectionModel::Select);
        }
    }

    void take_other_model() { list.setModel(new QStringListModel({QStringLiteral("x")})); }

    test::LogCapture log;
    GListView list;
};

}  // namespace

TEST_F(GListViewTest, items_are_appended_and_inserted) {
    EXPECT_EQ(list.gen_item(QStringLiteral("end"))->text(), QStringLiteral("end"));
    list.gen_at_item(0, QStringLiteral("begin"));
    list.gen_at_item(99, QStringLiteral("behind"));
    EXPECT_EQ(rows(), (Texts{"begin", "a", "b", "c", "b", "end", "behind"}));
}

TEST_F(GListViewTest, a_row_below_zero_is_an_error) {
    log.expect_error("GListView::gen_at_item - row < 0: -1");
    EXPECT_EQ(list.gen_at_item(-1, QStringLiteral("x")), nullptr);
    EXPECT_EQ(rows(), (Texts{"a", "b", "c", "b"}));
}

TEST_F(GListViewTest, gen_items_replaces_all_rows) {
    list.gen_items({QStringLiteral("x")});
    EXPECT_EQ(rows(), Texts{"x"});
    list.clear();
    EXPECT_EQ(rows(), Texts{});
}

TEST_F(GListViewTest, the_selection_is_given_in_row_order) {
    select_rows({2, 0});
    EXPECT_EQ(list.selection_items_count(), 2);
    EXPECT_TRUE(list.has_selection_items());
    EXPECT_EQ(list.get_selected_item()->row(), 0);
    EXPECT_EQ(list.get_selected_items().size(), 2U);
    EXPECT_EQ(to_texts(list.get_string_selection()), (Texts{"a", "c"}));
}

TEST_F(GListViewTest, an_empty_selection_gives_nothing) {
    EXPECT_EQ(list.selection_items_count(), 0);
    EXPECT_FALSE(list.has_selection_items());
    EXPECT_EQ(list.get_selected_item(), nullptr);
    EXPECT_EQ(to_texts(list.get_string_selection()), Texts{});
}

TEST_F(GListViewTest, all_rows_are_selected_or_none) {
    list.select_all(true);
    EXPECT_EQ(list.selection_items_count(), 4);
    list.select_all(false);
    EXPECT_EQ(list.selection_items_count(), 0);
    list.select_all(true);
    list.select_none();
    EXPECT_EQ(list.selection_items_count(), 0);
}

TEST_F(GListViewTest, each_selection_mode_is_that_of_the_view) {
    list.set_single_selection();
    EXPECT_EQ(list.selectionMode(), QAbstractItemView::SingleSelection);
    list.set_multi_selection();
    EXPECT_EQ(list.selectionMode(), QAbstractItemView::MultiSelection);
    list.set_extended_selection();
    EXPECT_EQ(list.selectionMode(), QAbstractItemView::ExtendedSelection);
}

TEST_F(GListViewTest, a_change_of_the_selection_fires) {
    int changes = 0;
    list.selection_listener += [&changes] {
        ++changes;
    };
    select_rows({1});
    EXPECT_EQ(changes, 1);
}

TEST_F(GListViewTest, select_marks_the_checkable_items_in_silence) {
    list.gen_item(QStringLiteral("check"))->setCheckable(true);
    int changes = 0;
    list.item_changed_listener += [&changes](QStandardItem*) {
        ++changes;
    };
    list.select(Qt::Checked);
    const auto* const items = static_cast<QStandardItemModel*>(list.model());
    EXPECT_EQ(items->item(4)->checkState(), Qt::Checked);
    EXPECT_EQ(items->item(0)->checkState(), Qt::Unchecked);
    EXPECT_EQ(changes, 0);
    items->item(4)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(changes, 1);
}

TEST_F(GListViewTest, a_click_fires_with_its_item) {
    list.resize(200, 200);
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    log.ignore("GListView::mouse");
    QStandardItem* clicked = nullptr;
    list.item_clicked_listener += [&clicked](QStandardItem* item) {
        clicked = item;
    };
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                      list.visualRect(list.model()->index(2, 0)).center());
    ASSERT_NE(clicked, nullptr);
    EXPECT_EQ(clicked->text(), QStringLiteral("c"));
}

TEST_F(GListViewTest, rows_are_removed_by_text_once_or_all) {
    EXPECT_EQ(list.remove(QStringLiteral("b"), false), 1);
    EXPECT_EQ(rows(), (Texts{"a", "c", "b"}));
    list.gen_item(QStringLiteral("b"));
    EXPECT_EQ(list.remove(QStringLiteral("b"), true), 2);
    EXPECT_EQ(rows(), (Texts{"a", "c"}));
    EXPECT_EQ(list.remove(QStringLiteral("b"), true), 0);
}

TEST_F(GListViewTest, the_selected_rows_are_removed) {
    select_rows({0, 1, 3});
    EXPECT_EQ(list.remove_selection(), 3);
    EXPECT_EQ(rows(), Texts{"c"});
}

TEST_F(GListViewTest, string_at_out_of_range_is_an_error) {
    log.expect_error("GListView::string_at - index out of range: -1");
    log.expect_error("GListView::string_at - index out of range: 4");
    EXPECT_EQ(list.string_at(-1), QString());
    EXPECT_EQ(list.string_at(4), QString());
}

TEST_F(GListViewTest, string_at_a_row_without_an_item_is_an_error) {
    list.model()->insertRow(4);
    log.expect_error("GListView::string_at - item is null at index: 4");
    EXPECT_EQ(list.string_at(4), QString());
}

TEST_F(GListViewTest, each_operation_reports_a_model_of_another_class) {
    take_other_model();
    for (const char* const operation : {"string_at", "get_string_selection", "gen_at_item",
                                        "remove", "remove_selection", "gen_items"}) {
        log.expect_error(
            ze::str::xprintF(0, "GListView::$ - model is not QStandardItemModel", operation));
    }
    EXPECT_EQ(list.string_at(0), QString());
    EXPECT_EQ(list.get_string_selection(), QStringList());
    EXPECT_EQ(list.gen_at_item(0, QStringLiteral("y")), nullptr);
    EXPECT_EQ(list.remove(QStringLiteral("x"), true), 0);
    EXPECT_EQ(list.remove_selection(), 0);
    list.gen_items({QStringLiteral("y")});
    EXPECT_EQ(list.model()->rowCount(), 1);
}

TEST_F(GListViewTest, the_other_questions_give_nothing_on_a_model_of_another_class) {
    take_other_model();
    list.select_all(true);
    list.select(Qt::Checked);
    EXPECT_EQ(list.get_selected_item(), nullptr);
    EXPECT_TRUE(list.get_selected_items().empty());
}

TEST_F(GListViewTest, a_model_that_was_given_is_used_and_taken_over) {
    auto* const model = new QStandardItemModel;
    const auto other = std::make_unique<GListView>(model);
    EXPECT_EQ(other->model(), model);
    EXPECT_EQ(model->parent(), other.get());
    QStandardItemModel kept;
    QObject parent;
    kept.setParent(&parent);
    other->setModel(&kept);
    EXPECT_EQ(kept.parent(), &parent);
    kept.setParent(nullptr);
}

TEST_F(GListViewTest, scrolls_to_begin_end_and_row) {
    QStringList texts;
    for (int i = 0; i < 200; ++i) {
        texts.append(QString::number(i));
    }
    list.gen_items(texts);
    list.resize(100, 100);
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    const QScrollBar* const bar = list.verticalScrollBar();
    list.scroll_to_end();
    EXPECT_EQ(bar->value(), bar->maximum());
    list.scroll_to_begin();
    EXPECT_EQ(bar->value(), bar->minimum());
    list.scroll_to(100, QAbstractItemView::PositionAtTop);
    EXPECT_EQ(list.indexAt(QPoint(1, 1)).row(), 100);
    list.scroll_to(1000);
    EXPECT_EQ(list.indexAt(QPoint(1, 1)).row(), 100);
}

TEST_F(GListViewTest, the_style_follows_the_theme) {
    for (const unsigned theme : {0U, 1U, 2U}) {
        list.adapt_style(theme);
        EXPECT_EQ(list.styleSheet(), theme == 0 ? ze::qt::create_style_GListView_normal()
                                                : ze::qt::create_style_GListView_dark());
    }
    EXPECT_EQ(log.lines_with_level(), (Texts{"DEB GListView::adapt_style - NORMAL",
                                             "DEB GListView::adapt_style - DARK/GREEN",
                                             "DEB GListView::adapt_style - DARK/GREEN"}));
}

TEST_F(GListViewTest, mouse_events_are_logged_and_passed_on) {
    list.resize(200, 200);
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    const QPoint place = list.visualRect(list.model()->index(1, 0)).center();
    int menus = 0;
    list.context_menu_listener += [&menus](QContextMenuEvent*) {
        ++menus;
    };
    QTest::mousePress(list.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QMouseEvent move(QEvent::MouseMove, place, list.viewport()->mapToGlobal(place), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(list.viewport(), &move);
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, place, list.viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(list.viewport(), &menu);
    EXPECT_EQ(log.lines_with_level(),
              (Texts{"DEB GListView::mousePressEvent", "DEB GListView::mouseMoveEvent",
                     "DEB GListView::mouseReleaseEvent", "DEB GListView::contextMenuEvent"}));
    EXPECT_EQ(list.get_selected_item()->row(), 1);
    EXPECT_EQ(menus, 1);
}
