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

TEST(TokenBucket, tells_from_when_on_the_tokens_are_there) {
    relay::TokenBucket bucket = relay::TokenBucket::per_minute(12, START);
    EXPECT_LE(bucket.when(12), START + milliseconds(2));
    ASSERT_TRUE(bucket.take(12, START));
    const relay::TimePoint when = bucket.when(1);
    EXPECT_FALSE(bucket.has(1, START + milliseconds(4999)));
    EXPECT_TRUE(bucket.has(1, when));
    EXPECT_LE(when, START + milliseconds(5002));
    ASSERT_TRUE(bucket.take(1, when));
    EXPECT_TRUE(bucket.has(1, bucket.when(1)));
}

}  // namespace
