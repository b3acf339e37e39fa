#include "Metrics.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using std::chrono::milliseconds;

TEST(Metrics, round_trips_are_counted_up_to_each_bound) {
    relay::Metrics metrics;
    for (const int millis : {1, 5, 6, 2000}) {
        metrics.add_round_trip(milliseconds(millis));
    }
    const std::string text = metrics.to_prometheus();
    for (const char* line : {"vork2d_relay_round_trip_seconds_bucket{le=\"0.005\"} 2\n",
                             "vork2d_relay_round_trip_seconds_bucket{le=\"0.01\"} 3\n",
                             "vork2d_relay_round_trip_seconds_bucket{le=\"1\"} 3\n",
                             "vork2d_relay_round_trip_seconds_bucket{le=\"+Inf\"} 4\n",
                             "vork2d_relay_round_trip_seconds_sum 2.012000\n",
                             "vork2d_relay_round_trip_seconds_count 4\n"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line;
    }
}

TEST(Metrics, a_large_sum_of_round_trips_still_grows_by_milliseconds) {
    relay::Metrics metrics;
    metrics.roundTripSum = 1234567;
    metrics.add_round_trip(milliseconds(3));
    EXPECT_NE(metrics.to_prometheus().find("round_trip_seconds_sum 1234567.003000\n"),
              std::string::npos);
}

TEST(Metrics, every_reason_has_its_line) {
    relay::Metrics metrics;
    metrics.refuse(relay::Reason::GROUP_FULL);
    const std::string text = metrics.to_prometheus();
    EXPECT_NE(text.find("vork2d_relay_refusals_total{reason=\"group_full\"} 1\n"),
              std::string::npos);
    EXPECT_NE(text.find("vork2d_relay_refusals_total{reason=\"silent\"} 0\n"), std::string::npos);
}

}  // namespace
