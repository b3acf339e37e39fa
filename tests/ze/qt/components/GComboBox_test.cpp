#include "ze/qt/components/GComboBox.h"

#include "ze/qt/components/GFunctorModel.h"

#include <QAbstractItemView>
#include <QImage>

#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace ze::qt;

using Texts = std::vector<std::string>;

TEST(GComboBox, a_change_fires_index_and_text) {
    GComboBox box;
    box.addItems({QStringLiteral("a"), QStringLiteral("b")});
    Texts texts;
    std::vector<int> indexes;
    box.current_text_listener += [&texts](const QString& text) {
        texts.push_back(text.toStdString());
    };
    box.current_index_listener += [&indexes](const int& index) {
        indexes.push_back(index);
    };
    box.setCurrentIndex(1);
    EXPECT_EQ(texts, Texts{"b"});
    EXPECT_EQ(indexes, std::vector<int>{1});
}

TEST(GComboBox, its_list_has_the_colours_of_its_window) {
    QWidget window;
    QPalette theme;
    theme.setColor(QPalette::Window, Qt::darkGreen);
    window.setPalette(theme);
    GComboBox box(&window);
    box.addItems({QStringLiteral("a"), QStringLiteral("b")});
    box.setCurrentIndex(1);  // the first entry is not the highlighted one
    window.show();
    box.showPopup();
    const QRect first = box.view()->visualRect(box.model()->index(0, 0));
    const QImage list = box.view()->viewport()->grab().toImage();
    EXPECT_EQ(list.pixelColor(list.width() - 2, first.center().y()), QColor(Qt::darkGreen));
}

TEST(GComboBox, choosing_an_entry_runs_its_function_and_adding_it_does_not) {
    GComboBox box;
    Texts calls;
    box.add_functor(QStringLiteral("first"), [&calls] { calls.emplace_back("first"); });
    box.add_functor({QStringLiteral("second"), [&calls] {
                         calls.emplace_back("second");
                     }});
    EXPECT_EQ(box.count(), 2);
    EXPECT_EQ(box.currentText(), QStringLiteral("first"));
    EXPECT_EQ(calls, Texts{});
    box.setCurrentIndex(1);
    box.setCurrentIndex(0);
    EXPECT_EQ(calls, (Texts{"second", "first"}));
}

TEST(GComboBox, a_new_model_takes_the_place_of_the_one_before) {
    GComboBox box;
    GFunctorModel before;
    GFunctorModel after;
    Texts calls;
    before.set_functors({{QStringLiteral("a"), {}}, {QStringLiteral("b"), [&calls] {
                                                         calls.emplace_back("old");
                                                     }}});
    after.set_functors({{QStringLiteral("a"), {}}, {QStringLiteral("b"), [&calls] {
                                                        calls.emplace_back("new");
                                                    }}});
    box.set_functor_model(&before);
    box.set_functor_model(&after);
    box.setCurrentIndex(1);
    EXPECT_EQ(calls, Texts{"new"});
}

TEST(GComboBox, after_the_end_of_its_model_it_makes_one_of_its_own) {
    GComboBox box;
    {
        GFunctorModel model;
        box.set_functor_model(&model);
    }
    box.add_functor(QStringLiteral("a"), {});
    EXPECT_EQ(box.count(), 1);
    EXPECT_EQ(box.currentText(), QStringLiteral("a"));
}
