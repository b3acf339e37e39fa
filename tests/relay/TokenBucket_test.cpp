#include "TokenBucket.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

const relay::TimePoint START{std::chrono::hours(1)};

TEST(TokenBucket, holds_its_burst_and_no_more) {
    relay::TokenBucket bucket(5, 1, START);
    EXPECT_TRUE(bucket.take(5, START));
    EXPECT_FALSE(bucket.take(1, START));
    EXPECT_TRUE(bucket.is_full(START + seconds(5)));
    EXPECT_FALSE(bucket.has(6, START + seconds(500)));
}

TEST(TokenBucket, a_refused_take_costs_nothing) {
    relay::TokenBucket bucket(1, 1, START);
    EXPECT_TRUE(bucket.take(1, START));
    EXPECT_FALSE(bucket.take(1, START + milliseconds(999)));
    EXPECT_TRUE(bucket.take(1, START + milliseconds(1000)));
}

}  // namespace
