#include "ze/tools/Callback.h"

#include <array>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace ze {
namespace {

void add_one(int& sum) {
    ++sum;
}

}  // namespace

TEST(Callback, empty_in_each_form_does_nothing) {
    void (*const none)(int&) = nullptr;
    const std::array callbacks = {Callback<int&>(), Callback<int&>(nullptr), Callback<int&>(none),
                                  Callback<int&>(std::function<void(int&)>())};
    int sum = 0;
    for (const auto& callback : callbacks) {
        callback.run_copy(sum);
    }
    EXPECT_EQ(sum, 0);
}

TEST(Callback, takes_whatever_can_be_called) {
    struct Row {
        const char* name;
        Callback<int&> callback;
    };
    const std::string large = "a text that does not fit into the callback";
    const std::array<long long, 8> larger{1};
    const std::array rows = {
        Row{"small lambda",
            [one = 1](int& sum) {
                sum += one;
            }},
        Row{"lambda that owns",
            [large](int& sum) {
                sum += static_cast<int>(large.size()) / 42;
            }},
        Row{"large lambda",
            [larger](int& sum) {
                sum += static_cast<int>(larger[0]);
            }},
        Row{"function", &add_one},
        Row{"std::function", std::function<void(int&)>(add_one)},
    };
    for (const Row& row : rows) {
        int sum = 0;
        row.callback.run_copy(sum);
        EXPECT_EQ(sum, 1) << row.name;
    }
}

TEST(Callback, each_run_starts_from_the_state_that_was_given) {
    int last = 0;
    const Callback<> small([count = 0, &last]() mutable { last = ++count; });
    const auto shared = std::make_shared<int>(0);
    const Callback<> large([count = 0, shared, &last]() mutable { last = ++count; });
    for (const Callback<>& callback : {small, large}) {
        callback.run_copy();
        callback.run_copy();
        EXPECT_EQ(last, 1);
    }
}

TEST(Callback, may_be_assigned_while_it_runs) {
    Callback<> callback;
    std::string seen;
    auto text = std::make_shared<std::string>("still here");
    callback = Callback<>([&callback, &seen, text] {
        callback = Callback<>();
        seen = *text;
    });
    const std::weak_ptr<std::string> watch = text;
    text.reset();
    callback.run_copy();
    EXPECT_EQ(seen, "still here");
    EXPECT_TRUE(watch.expired());
}

}  // namespace ze
