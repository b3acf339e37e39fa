#include "ze/tools/GAtomicBitsWatcher.h"

#include "support/LogCapture.h"

#include <chrono>
#include <functional>
#include <future>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using ze::GAtomicBitsWatcher;
using ze::NOTIFY_ALL;
using ze::NOTIFY_ONE;

constexpr auto LIMIT = std::chrono::seconds(20);
constexpr auto TO_SLEEP = std::chrono::milliseconds(20);  // enough for a thread to start its wait

/// A call on a thread of its own. A wait that nothing ends makes the test fail, and is ended by
/// `stop` so that the test program does not hang.
class Waiter {
public:
    Waiter(GAtomicBitsWatcher& watched, std::function<void()> wait)
        : watcher(watched), done(std::async(std::launch::async, std::move(wait))) {}
    ~Waiter() {
        if (!is_done_within(std::chrono::seconds(0))) {
            watcher.stop(NOTIFY_ALL);
        }
    }

    [[nodiscard]] bool is_done_within(std::chrono::milliseconds limit) const {
        return done.wait_for(limit) == std::future_status::ready;
    }

private:
    GAtomicBitsWatcher& watcher;
    std::future<void> done;
};

TEST(GAtomicBitsWatcher, runs_from_the_start_with_its_first_word) {
    const GAtomicBitsWatcher watcher(5);
    EXPECT_EQ(watcher.get_flags(), 5u);
    EXPECT_TRUE(watcher.is_running());
}

TEST(GAtomicBitsWatcher, tests_any_bit_of_a_mask) {
    const GAtomicBitsWatcher watcher(4);
    EXPECT_TRUE(watcher.is_flag(4));
    EXPECT_TRUE(watcher.is_flag(6));
    EXPECT_FALSE(watcher.is_flag(3));
    EXPECT_FALSE(watcher.is_flag(0));
    EXPECT_FALSE(watcher.is_zero());
    EXPECT_TRUE(GAtomicBitsWatcher(0).is_zero());
}

TEST(GAtomicBitsWatcher, sets_and_clears_the_bits_of_a_mask) {
    GAtomicBitsWatcher watcher(1);
    watcher.set_flag(6, true);
    EXPECT_EQ(watcher.get_flags(), 7u);
    watcher.set_notify_flag(5, NOTIFY_ONE, false);
    EXPECT_EQ(watcher.get_flags(), 2u);
}

TEST(GAtomicBitsWatcher, sets_one_bit_by_its_number_modulo_32) {
    GAtomicBitsWatcher watcher(0);
    watcher.set_bit_number(31, true, NOTIFY_ALL);
    watcher.set_bit_number(33, true, NOTIFY_ALL);
    EXPECT_EQ(watcher.get_flags(), 0x80000002u);
    watcher.set_bit_number(63, false, NOTIFY_ONE);
    EXPECT_EQ(watcher.get_flags(), 2u);
}

TEST(GAtomicBitsWatcher, stores_the_whole_word) {
    GAtomicBitsWatcher watcher(5);
    watcher.set_all_flags(8, NOTIFY_ALL, false);
    EXPECT_EQ(watcher.get_flags(), 8u);
}

TEST(GAtomicBitsWatcher, logs_the_waking_of_one_waiter_on_a_change_only) {
    test::LogCapture log;
    GAtomicBitsWatcher watcher(5);
    watcher.set_all_flags(5, NOTIFY_ONE, true);
    watcher.set_all_flags(6, NOTIFY_ONE, false);
    watcher.set_all_flags(7, NOTIFY_ALL, true);
    EXPECT_EQ(log.lines(), std::vector<std::string>());
    watcher.set_all_flags(8, NOTIFY_ONE, true);
    EXPECT_EQ(log.lines_with_level(),
              std::vector<std::string>{"DEB AtomicBitsWatcher::set_min_max - notify ONE"});
}

TEST(GAtomicBitsWatcher, wakes_all_for_0_and_one_for_any_other_value) {
    test::LogCapture log;
    GAtomicBitsWatcher watcher(5);
    watcher.set_all_flags(6, static_cast<ze::NOTIFY>(0), true);
    EXPECT_EQ(log.lines(), std::vector<std::string>());
    watcher.set_all_flags(7, static_cast<ze::NOTIFY>(7), true);
    EXPECT_EQ(log.lines(), std::vector<std::string>{"AtomicBitsWatcher::set_min_max - notify ONE"});
}

TEST(GAtomicBitsWatcher, stops_and_runs_again_after_a_reset) {
    GAtomicBitsWatcher watcher(5);
    watcher.stop(NOTIFY_ALL);
    EXPECT_FALSE(watcher.is_running());
    EXPECT_EQ(watcher.get_flags(), 5u);
    watcher.reset(NOTIFY_ALL, true);
    EXPECT_TRUE(watcher.is_running());
    EXPECT_TRUE(watcher.is_zero());
}

TEST(GAtomicBitsWatcher, does_not_wait_for_a_bit_that_is_set) {
    GAtomicBitsWatcher watcher(4);
    watcher.wait_until_bit_is_set(6);
    EXPECT_EQ(watcher.get_flags(), 4u);
}

TEST(GAtomicBitsWatcher, does_not_wait_once_it_is_stopped) {
    GAtomicBitsWatcher watcher(0);
    watcher.stop(NOTIFY_ONE);
    watcher.wait_until_bit_is_set(1);
    watcher.wait_stateChange();
    EXPECT_TRUE(watcher.is_zero());
}

struct Wake {
    const char* name;
    void (*act)(GAtomicBitsWatcher&);
};

TEST(GAtomicBitsWatcher, wakes_a_waiter_for_a_bit) {
    const std::vector<Wake> rows = {
        {"set_flag",
         [](GAtomicBitsWatcher& watcher) {
             watcher.set_flag(4, true);
         }},
        {"set_notify_flag",
         [](GAtomicBitsWatcher& watcher) {
             watcher.set_notify_flag(4, NOTIFY_ONE, true);
         }},
        {"set_all_flags",
         [](GAtomicBitsWatcher& watcher) {
             watcher.set_all_flags(4, NOTIFY_ALL, true);
         }},
        {"set_bit_number",
         [](GAtomicBitsWatcher& watcher) {
             watcher.set_bit_number(2, true, NOTIFY_ONE);
         }},
        {"stop",
         [](GAtomicBitsWatcher& watcher) {
             watcher.stop(NOTIFY_ONE);
         }},
    };
    for (const Wake& row : rows) {
        GAtomicBitsWatcher watcher(1);
        const Waiter waiter(watcher, [&watcher] { watcher.wait_until_bit_is_set(4); });
        EXPECT_FALSE(waiter.is_done_within(TO_SLEEP)) << row.name;
        row.act(watcher);
        EXPECT_TRUE(waiter.is_done_within(LIMIT)) << row.name;
    }
}

TEST(GAtomicBitsWatcher, keeps_a_waiter_asleep_for_another_bit) {
    GAtomicBitsWatcher watcher(0);
    const Waiter waiter(watcher, [&watcher] { watcher.wait_until_bit_is_set(4); });
    watcher.set_flag(3, true);
    EXPECT_FALSE(waiter.is_done_within(TO_SLEEP));
    watcher.set_flag(4, true);
    EXPECT_TRUE(waiter.is_done_within(LIMIT));
}

TEST(GAtomicBitsWatcher, wakes_a_waiter_for_any_change) {
    GAtomicBitsWatcher watcher(0);
    const Waiter waiter(watcher, [&watcher] { watcher.wait_stateChange(); });
    const auto end = std::chrono::steady_clock::now() + LIMIT;
    unsigned value = 0;
    while (!waiter.is_done_within(std::chrono::milliseconds(1)) &&
           std::chrono::steady_clock::now() < end) {
        watcher.set_all_flags(++value, NOTIFY_ALL, true);  // the thread may not wait yet
    }
    EXPECT_TRUE(waiter.is_done_within(std::chrono::milliseconds(0)));
}

TEST(GAtomicBitsWatcher, wakes_all_waiters_at_the_stop) {
    GAtomicBitsWatcher watcher(0);
    const Waiter first(watcher, [&watcher] { watcher.wait_until_bit_is_set(1); });
    const Waiter second(watcher, [&watcher] { watcher.wait_until_bit_is_set(2); });
    const Waiter third(watcher, [&watcher] { watcher.wait_stateChange(); });
    for (const Waiter* waiter : {&first, &second, &third}) {
        EXPECT_FALSE(waiter->is_done_within(TO_SLEEP));
    }
    watcher.stop(NOTIFY_ALL);
    EXPECT_TRUE(first.is_done_within(LIMIT));
    EXPECT_TRUE(second.is_done_within(LIMIT));
    EXPECT_TRUE(third.is_done_within(LIMIT));
}

TEST(GAtomicBitsWatcher, loses_no_wake_up_between_two_threads) {
    constexpr unsigned PING = 1;
    constexpr unsigned PONG = 2;
    constexpr int ROUNDS = 3000;
    GAtomicBitsWatcher watcher(0);
    const Waiter partner(watcher, [&watcher] {
        for (int round = 0; round < ROUNDS; ++round) {
            watcher.wait_until_bit_is_set(PING);
            watcher.set_flag(PING, false);
            watcher.set_flag(PONG, true);
        }
    });
    for (int round = 0; round < ROUNDS; ++round) {
        watcher.set_flag(PING, true);
        watcher.wait_until_bit_is_set(PONG);
        watcher.set_flag(PONG, false);
    }
    EXPECT_TRUE(partner.is_done_within(LIMIT));
}

}  // namespace
