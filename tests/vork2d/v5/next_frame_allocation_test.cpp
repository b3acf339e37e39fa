// A frame step takes nothing from the heap while its log lines are not shown. The operators new of
// this program count.
#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PlayStats.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<unsigned long> allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size != 0 ? size : 1)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

using vork2d::v5::playStats;

class NextFrameAllocation : public test::FieldTest {
protected:
    NextFrameAllocation() { ze::log::set_log_level(ze::log::ERROR); }

    /// Allocations of one frame step.
    unsigned long count(float dt) {
        const unsigned long before = allocations;
        field.next_frame(dt);
        return allocations - before;
    }
};

TEST_F(NextFrameAllocation, the_count_counts) {
    const unsigned long before = allocations;
    delete new int(5);
    EXPECT_EQ(allocations - before, 1U);
}

TEST_F(NextFrameAllocation, free_flight_allocates_nothing) {
    fly({0, 0}, {1, 0}, 100);
    EXPECT_EQ(count(0.016f), 0U);
}

TEST_F(NextFrameAllocation, a_frame_with_seven_bounces_allocates_nothing) {
    connection.flagConnected = true;
    field.on_play(ze::math::ORIENT2D::LEFT, 5000);
    field.ball.velocity = 3100;
    EXPECT_EQ(count(1), 0U);
    EXPECT_EQ(playStats.hitsTop + playStats.hitsBottom, 4U);
    EXPECT_EQ(playStats.hitsPaddleLeft + playStats.hitsPaddleRight, 3U);
}

TEST_F(NextFrameAllocation, a_deflection_allocates_nothing) {
    fly({360, 30}, {1, 0}, 100);
    EXPECT_EQ(count(1), 0U);
    EXPECT_GT(field.ball.dir.y, 0.0f);
}

TEST_F(NextFrameAllocation, a_follower_allocates_nothing) {
    make_follower();
    fly({0, 0}, {1, 0}, 100);
    EXPECT_EQ(count(0.016f), 0U);
}

}  // namespace
