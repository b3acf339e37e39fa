// What the relay counts, and its text for Prometheus.
#pragma once

#include "Reason.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace relay {

struct Metrics {
    /// Upper bounds of the round-trip times, in seconds; one more counts what is above.
    static constexpr std::array<double, 8> ROUND_TRIP_BOUNDS = {0.005, 0.01, 0.025, 0.05,
                                                                0.1,   0.25, 0.5,   1.0};

    std::uint64_t connections = 0;  ///< now
    std::uint64_t members = 0;      ///< now, logged in
    std::uint64_t groups = 0;       ///< now
    std::uint64_t queuedBytes = 0;  ///< now, of all clients
    std::uint64_t accepted = 0;
    std::uint64_t framesReceived = 0;
    std::uint64_t framesForwarded = 0;
    std::uint64_t framesDropped = 0;  ///< nobody to take them, chat over its limit, forged
    std::uint64_t bytesReceived = 0;  ///< off the wire, TLS included
    std::uint64_t bytesSent = 0;      ///< before TLS
    std::array<std::uint64_t, static_cast<std::size_t>(Reason::COUNT)> refusals{};
    std::array<std::uint64_t, ROUND_TRIP_BOUNDS.size() + 1> roundTrips{};
    double roundTripSum = 0;  ///< seconds

    void refuse(Reason reason) noexcept { ++refusals[static_cast<std::size_t>(reason)]; }
    void add_round_trip(std::chrono::duration<double> time) noexcept;

    /// Text exposition format, version 0.0.4.
    [[nodiscard]] std::string to_prometheus() const;
};

}  // namespace relay
