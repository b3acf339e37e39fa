// The one hard place of the listener, a table that grows while it is walked, under the debug mode
// of the standard library, which ends the program at the first use of an iterator that is no longer
// valid. The mode changes the layout of the containers, so that this program is built from sources
// alone.
#define _GLIBCXX_DEBUG
#include "ze/tools/Listener.h"

#include <map>

#include <gtest/gtest.h>

namespace ze {

// The listener's own source writes to the log, which is a library of the plain layout.
std::string BaseListener::fresh_key() {
    static int count = 0;
    return std::to_string(++count);
}
void BaseListener::report_duplicate_key() {}
void BaseListener::report_end() const {}

TEST(ListenerChecked, a_table_that_grows_during_a_fire_is_walked_once) {
    Listener<int> listener;
    std::map<std::string, int> calls;
    for (int i = 0; i < 10; ++i) {
        const std::string key = "first " + std::to_string(i);
        listener.append(key, [&listener, &calls, key](const int&) {
            ++calls[key];
            for (int k = 0; k < 100; ++k) {
                listener.append(key + " added " + std::to_string(k), [](const int&) {});
            }
        });
    }
    listener.fire_event(1, FIRE_DIRECT);
    EXPECT_EQ(calls.size(), 10U);
    for (const auto& [key, count] : calls) {
        EXPECT_EQ(count, 1) << key;
    }
}

TEST(ListenerChecked, callbacks_appended_during_a_fire_run_from_the_next_one_on) {
    Listener<NO_PAYLOAD> listener;
    int calls = 0;
    bool grown = false;
    listener.append("grow", [&listener, &calls, &grown] {
        for (int i = 0; i < 500 && !grown; ++i) {
            listener += [&calls] {
                ++calls;
            };
        }
        grown = true;
    });
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    calls = 0;
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(calls, 500);
}

TEST(ListenerChecked, growth_within_a_recursive_fire_leaves_the_outer_walk_valid) {
    Listener<int> listener;
    int calls = 0;
    for (int i = 0; i < 4; ++i) {
        listener.append("fire " + std::to_string(i), [&listener, &calls](const int& depth) {
            ++calls;
            for (int k = 0; k < 50; ++k) {
                listener += [](const int&) {
                };
            }
            if (depth > 0) {
                listener.fire_event(depth - 1, FIRE_DIRECT);
            }
        });
    }
    listener.fire_event(2, FIRE_DIRECT);
    EXPECT_EQ(calls, 4 + 4 * 4 + 4 * 4 * 4);
}

TEST(ListenerChecked, a_callback_may_overwrite_itself_and_others) {
    Listener<NO_PAYLOAD> listener;
    int calls = 0;
    for (const char* const key : {"a", "b", "c"}) {
        listener.append(key, [&listener, &calls] {
            ++calls;
            for (const char* const other : {"a", "b", "c"}) {
                listener.append(other, [&calls] { ++calls; });
            }
        });
    }
    listener.fire_event(NO_PAYLOAD{}, FIRE_DIRECT);
    EXPECT_EQ(calls, 3);
}

}  // namespace ze
