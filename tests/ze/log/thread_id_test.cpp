#include "ze/log/thread_id.h"

#include "ze/log/log.h"

#include <limits>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace ze {
namespace {

unsigned number_of_a_new_thread() {
    unsigned number = 0;
    std::thread([&number] { number = get_thread_id(); }).join();
    return number;
}

}  // namespace

TEST(thread_id, numbers_follow_the_order_of_first_use_and_stay) {
    const unsigned own = get_fast_thread_id();
    const unsigned first = number_of_a_new_thread();
    const unsigned second = number_of_a_new_thread();
    EXPECT_GE(own, 1U);
    EXPECT_EQ(second, first + 1);
    EXPECT_EQ(get_thread_id(), own);
    EXPECT_EQ(log::get_current_threadID(), own);
}

TEST(reduce_id_len, mixes_into_at_most_four_digits) {
    EXPECT_EQ(reduce_id_len(0), 0U);
    EXPECT_EQ(reduce_id_len(1), 1228U);
    for (unsigned long long id = 0; id < 1000; ++id) {
        EXPECT_LT(reduce_id_len(id), 10'000U);
    }
}

TEST(gSleep, zero_and_negative_times_return_at_once) {
    gSleep(0);
    gSleep(static_cast<unsigned long long>(-1));
    gSleep(static_cast<unsigned long long>(std::numeric_limits<long long>::min()));
}

}  // namespace ze
