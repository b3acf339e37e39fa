#include "Throttle.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::milliseconds;

const relay::TimePoint START{};

TEST(Throttle, the_first_event_is_written_at_once) {
    relay::Throttle throttle;
    EXPECT_EQ(throttle.count(START), 1U);
}

TEST(Throttle, events_within_a_second_are_counted_in_the_next_line) {
    relay::Throttle throttle;
    EXPECT_EQ(throttle.count(START), 1U);
    EXPECT_EQ(throttle.count(START + milliseconds(100)), 0U);
    EXPECT_EQ(throttle.count(START + milliseconds(999)), 0U);
    EXPECT_EQ(throttle.count(START + milliseconds(1000)), 3U);
    EXPECT_EQ(throttle.count(START + milliseconds(1999)), 0U);
    EXPECT_EQ(throttle.count(START + milliseconds(5000)), 2U);
}

}  // namespace
