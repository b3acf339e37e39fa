// What a tick of the frame timer does, and the count of the frames drawn.
#include "ze/tools/clock.h"

#include "vork2d/v5/FieldFixture.h"

#include <vector>

#include <glm/geometric.hpp>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;

constexpr unsigned long long NOW = 1'000'000'000'000'000;  // far from the clock of the test's day

class FrameTimer : public test::FieldTest {
protected:
    std::vector<unsigned> fps;

    FrameTimer() {
        field.listenerFps += [this](unsigned frames) {
            fps.push_back(frames);
        };
    }

    /// A rally whose last frame was at NOW, the ball flying to the right at 100 units per second.
    void fly_since_now() {
        field.set_state_RUN(true);
        field.on_timer(NOW);
        fly({0, 0}, {1, 0}, 100);
    }
};

TEST_F(FrameTimer, without_a_rally_a_tick_fires_0_frames_and_moves_nothing) {
    field.ball.pos = {1, 2};
    field.on_timer(NOW);
    field.on_timer(NOW + 16);
    EXPECT_EQ(fps, (std::vector<unsigned>{0, 0}));
    EXPECT_EQ(field.ball.pos, glm::vec2(1, 2));
}

TEST_F(FrameTimer, a_tick_moves_the_ball_by_the_time_since_the_last_one) {
    fly_since_now();
    field.on_timer(NOW + 500);
    EXPECT_EQ(field.ball.pos, glm::vec2(50, 0));
    field.on_timer(NOW + 1000);
    EXPECT_EQ(field.ball.pos, glm::vec2(100, 0));
    EXPECT_EQ(fps, std::vector<unsigned>());
}

TEST_F(FrameTimer, a_tick_within_the_same_millisecond_is_skipped) {
    fly_since_now();
    field.on_timer(NOW);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
    EXPECT_EQ(log.lines(), std::vector<std::string>());
}

TEST_F(FrameTimer, a_tick_without_a_last_frame_only_takes_the_time) {
    field.set_state_RUN(true);
    field.ball.pos = {0, 0};
    field.on_timer(NOW);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
}

TEST_F(FrameTimer, the_first_tick_after_a_start_takes_the_time_since_the_start) {
    const unsigned long long before = ze::time::get_steady_milli_seconds();
    field.on_play(ORIENT2D::LEFT, 5000);
    const unsigned long long after = ze::time::get_steady_milli_seconds();
    field.on_timer(after + 100);
    const float distance = glm::length(field.ball.pos - glm::vec2(-370, 0));
    EXPECT_GE(distance, 0.16f * 100 - 0.01f);
    EXPECT_LE(distance, 0.16f * static_cast<float>(after - before + 100) + 0.01f);
}

TEST_F(FrameTimer, after_a_stop_the_time_before_does_not_count) {
    fly_since_now();
    field.on_stop();
    field.set_state_RUN(true);
    field.on_timer(NOW + 5000);
    EXPECT_EQ(field.ball.pos, glm::vec2(0, 0));
}

TEST_F(FrameTimer, the_running_timer_ticks_the_field) {
    field.timer.start();
    while (fps.empty()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_EQ(fps.front(), 0U);
}

// Frames drawn

TEST_F(FrameTimer, the_frames_of_a_second_are_fired_during_a_rally) {
    field.set_state_RUN(true);
    for (unsigned long long ms = 0; ms <= 1000; ms += 20) {
        field.count_frame(NOW + ms);
    }
    EXPECT_EQ(fps, std::vector<unsigned>{51});
    for (unsigned long long ms = 1020; ms <= 2000; ms += 20) {
        field.count_frame(NOW + ms);
    }
    EXPECT_EQ(fps, (std::vector<unsigned>{51, 50}));
}

TEST_F(FrameTimer, without_a_rally_no_count_is_fired) {
    field.count_frame(NOW);
    field.count_frame(NOW + 5000);
    EXPECT_EQ(fps, std::vector<unsigned>());
}

TEST_F(FrameTimer, the_count_shows_in_the_log_at_trace_level) {
    ze::log::set_log_level(ze::log::TRACE);
    field.set_state_RUN(true);
    field.count_frame(NOW);
    log.clear();
    field.count_frame(NOW + 1000);
    EXPECT_EQ(log.lines_with_level(), std::vector<std::string>{"TRA FPS:2"});
}

}  // namespace
