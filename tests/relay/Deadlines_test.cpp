#include "Deadlines.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

struct Looked : relay::Deadlines::Member {
    void on_deadline(relay::TimePoint) override { ++count; }
    int count = 0;
};

TEST(Deadlines, each_member_is_looked_at_once_at_its_last_deadline) {
    boost::asio::io_context context;
    relay::Deadlines deadlines(context);
    Looked early;
    Looked moved;
    Looked gone;
    const relay::TimePoint now = relay::Clock::now();
    deadlines.set(early, now + milliseconds(1));
    deadlines.set(moved, now + std::chrono::hours(1));
    deadlines.set(moved, now + milliseconds(2));
    deadlines.set(gone, now + milliseconds(2));
    deadlines.clear(gone);
    context.run_for(seconds(5));
    EXPECT_EQ(early.count, 1);
    EXPECT_EQ(moved.count, 1);
    EXPECT_EQ(gone.count, 0);
}

}  // namespace
