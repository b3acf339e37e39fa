#include "ze/qt/WindowClazz.h"

#include "support/QtPrinters.h"

#include <memory>

#include <gtest/gtest.h>

namespace {

using ze::qt::WindowClazz;

template <typename T>
std::unique_ptr<T> make() {
    auto made = std::make_unique<T>();
    made->assign_id();
    return made;
}

TEST(WindowClazz, numbers_count_from_zero) {
    using Clazz = WindowClazz<"Counted">;
    const auto first = make<Clazz>();
    const auto second = make<Clazz>();
    EXPECT_EQ(first->get_complete_name(), QStringLiteral("Counted_0"));
    EXPECT_EQ(second->get_complete_name(), QStringLiteral("Counted_1"));
}

TEST(WindowClazz, the_lowest_free_number_is_given_first) {
    using Clazz = WindowClazz<"Reused">;
    auto first = make<Clazz>();
    auto second = make<Clazz>();
    const auto third = make<Clazz>();
    second.reset();
    first.reset();
    EXPECT_EQ(make<Clazz>()->get_complete_name(), QStringLiteral("Reused_0"));
    const auto again = make<Clazz>();
    const auto after = make<Clazz>();
    const auto fresh = make<Clazz>();
    EXPECT_EQ(again->get_complete_name(), QStringLiteral("Reused_0"));
    EXPECT_EQ(after->get_complete_name(), QStringLiteral("Reused_1"));
    EXPECT_EQ(fresh->get_complete_name(), QStringLiteral("Reused_3"));
    EXPECT_EQ(third->get_complete_name(), QStringLiteral("Reused_2"));
}

TEST(WindowClazz, each_class_name_counts_by_itself) {
    const auto one = make<WindowClazz<"One">>();
    const auto other = make<WindowClazz<"Other">>();
    EXPECT_EQ(one->get_complete_name(), QStringLiteral("One_0"));
    EXPECT_EQ(other->get_complete_name(), QStringLiteral("Other_0"));
}

TEST(WindowClazz, an_identity_without_a_number_gives_none_back) {
    using Clazz = WindowClazz<"Unassigned">;
    { const Clazz never; }
    EXPECT_EQ(Clazz().get_complete_name(), QStringLiteral("Unassigned_-1"));
    EXPECT_EQ(make<Clazz>()->get_complete_name(), QStringLiteral("Unassigned_0"));
}

}  // namespace
