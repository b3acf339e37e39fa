// Somebody sets the clock while a rally runs. This program has a clock of its own for that: what
// the C++ library reads as the time of day is shifted, while timers and the steady clock run on.
#include "ze/net/wait_until.h"

#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PlayStats.h"

#include <atomic>
#include <chrono>
#include <ctime>

#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::atomic<time_t> secondsShifted = 0;

}  // namespace

// Stands before the C library's own.
extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept {
    const auto result = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    if (result == 0 && clock == CLOCK_REALTIME) {
        time->tv_sec += secondsShifted;
    }
    return result;
}

namespace {

using std::chrono::steady_clock;
using std::chrono::system_clock;

class ClockJump : public test::FieldTest {
protected:
    static constexpr float SPEED = 10;  // field units per second: far from any edge at the end
    steady_clock::time_point start;

    ClockJump() {
        field.on_play(ze::math::ORIENT2D::LEFT, 5000);
        start = steady_clock::now();
        fly({0, 0}, {1, 0}, SPEED);
        field.timer.start();
    }
    ~ClockJump() override { secondsShifted = 0; }

    void see_frames(int count) {
        for (int i = 0; i < count; ++i) {
            const float before = field.ball.pos.x;
            ASSERT_TRUE(test::wait_until([&] { return field.ball.pos.x > before; }));
        }
    }

    [[nodiscard]] float seconds_passed() const {
        return std::chrono::duration<float>(steady_clock::now() - start).count();
    }
};

TEST_F(ClockJump, is_seen_by_the_clock_of_the_day) {
    const auto before = system_clock::now();
    secondsShifted = -3600;
    EXPECT_LT(system_clock::now(), before - std::chrono::minutes(59));
    secondsShifted = 3600;
    EXPECT_GT(system_clock::now(), before + std::chrono::minutes(59));
}

TEST_F(ClockJump, back_and_forth_leaves_the_ball_its_pace) {
    constexpr float ROUNDING = 0.1f;  // field units
    see_frames(3);
    for (const time_t shift : {3600, 0, -3600, 0, 1, -1, 86'400 * 365, -86'400 * 365}) {
        secondsShifted = shift;
        see_frames(3);
        ASSERT_LE(field.ball.pos.x, SPEED * seconds_passed() + ROUNDING) << shift;
        ASSERT_TRUE(field.is_state_PLAY()) << shift;
    }
}

TEST_F(ClockJump, does_not_count_as_time_of_the_rally) {
    see_frames(1);
    secondsShifted = -3600;
    see_frames(1);
    field.on_stop();
    EXPECT_LE(vork2d::v5::playStats.msEnd - vork2d::v5::playStats.msStart,
              static_cast<unsigned long long>(1000 * seconds_passed()) + 1);
}

}  // namespace
