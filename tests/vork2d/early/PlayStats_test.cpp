#include "vork2d/early/PlayStats.h"

#include "support/LogCapture.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using vork2d::early::PlayStats;

PlayStats sample() {
    PlayStats stats;
    stats.frames = 120;
    stats.hitsTop = 1;
    stats.hitsBottom = 2;
    stats.hitsPaddleLeft = 3;
    stats.hitsPaddleRight = 4;
    stats.msStart = 1000;
    stats.msEnd = 3000;
    stats.tmRefresh = 16;
    stats.tmTravel = 5;
    stats.travelDistance = 1234.5f;
    return stats;
}

TEST(EarlyPlayStats, all_hits_is_the_sum_of_the_four) {
    EXPECT_EQ(sample().all_hits(), 10U);
}

TEST(EarlyPlayStats, frames_per_second_are_taken_over_the_elapsed_time) {
    EXPECT_EQ(sample().fps(), 60.0);
}

TEST(EarlyPlayStats, frames_per_second_of_no_time_are_0) {
    PlayStats stats = sample();
    stats.msEnd = stats.msStart;
    EXPECT_EQ(stats.fps(), 0.0);
}

TEST(EarlyPlayStats, show_prints_every_figure_in_order) {
    test::LogCapture log;
    sample().show("PlayStats, of a test");
    EXPECT_EQ(log.lines_with_level(), (std::vector<std::string>{
                                          "DEB PlayStats, of a test",
                                          "DEB     hits top:1",
                                          "DEB     hits bottom:2",
                                          "DEB     hits pad left:3",
                                          "DEB     hits pad right:4",
                                          "DEB     all hits:10",
                                          "DEB     tmTravel:5.00 sec",
                                          "DEB     tmRefresh:16 ms",
                                          "DEB     elapsed time:2000 ms",
                                          "DEB     frames:120",
                                          "DEB     travelDistance:1234.50",
                                          "DEB     FPS:60.000000",
                                          "DEB ",
                                      }));
}

}  // namespace
