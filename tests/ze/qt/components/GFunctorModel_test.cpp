#include "ze/qt/components/GFunctorModel.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace ze::qt;

namespace {

struct Model {
    Model() {
        model.set_functors({{QStringLiteral("first"),
                             [this] {
                                 calls.emplace_back("first");
                             }},
                            {QStringLiteral("empty"), {}}});
    }

    GFunctorModel model;
    std::vector<std::string> calls;
};

}  // namespace

TEST(GFunctorModel, has_a_row_for_each_function_and_none_below) {
    const Model m;
    EXPECT_EQ(m.model.rowCount(), 2);
    EXPECT_EQ(m.model.rowCount(m.model.index(0)), 0);
}

TEST(GFunctorModel, data_is_the_text_for_display_only) {
    const Model m;
    EXPECT_EQ(m.model.data(m.model.index(1)), QVariant(QStringLiteral("empty")));
    EXPECT_EQ(m.model.data(m.model.index(1), Qt::EditRole), QVariant());
    EXPECT_EQ(m.model.data(QModelIndex()), QVariant());
}

TEST(GFunctorModel, add_functor_appends_a_row) {
    Model m;
    std::vector<int> inserted;
    QObject::connect(&m.model, &QAbstractItemModel::rowsInserted, &m.model,
                     [&inserted](const QModelIndex&, int first, int last) {
                         inserted = {first, last};
                     });
    m.model.add_functor({QStringLiteral("third"), [&m] {
                             m.calls.emplace_back("third");
                         }});
    EXPECT_EQ(inserted, (std::vector<int>{2, 2}));
    EXPECT_EQ(m.model.get_functor_at(2)->text, QStringLiteral("third"));
}

TEST(GFunctorModel, trigger_at_runs_the_function_of_a_row_in_range) {
    Model m;
    for (const int row : {-1, 0, 1, 2}) {
        m.model.trigger_at(row);
    }
    EXPECT_EQ(m.calls, std::vector<std::string>{"first"});
}

TEST(GFunctorModel, a_function_may_replace_the_functions) {
    GFunctorModel model;
    int calls = 0;
    model.add_functor({QStringLiteral("replace"), [&model, &calls] {
                           model.set_functors({});
                           ++calls;
                       }});
    model.trigger_at(0);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(model.get_functor_at(0), nullptr);
    EXPECT_EQ(model.get_functor_at(-1), nullptr);
}
