#include "Metrics.h"

#include <algorithm>
#include <numeric>
#include <sstream>
#include <string_view>

namespace relay {

namespace {

constexpr std::string_view PREFIX = "vork2d_relay_";

void head(std::ostream& out, std::string_view name, std::string_view type, std::string_view help) {
    out << "# HELP " << PREFIX << name << ' ' << help << '\n'
        << "# TYPE " << PREFIX << name << ' ' << type << '\n';
}

void value(std::ostream& out, std::string_view name, std::string_view type, std::string_view help,
           std::uint64_t number) {
    head(out, name, type, help);
    out << PREFIX << name << ' ' << number << '\n';
}

void add_refusals(std::ostream& out, const Metrics& metrics) {
    head(out, "refusals_total", "counter", "Clients refused or let go, by reason.");
    for (std::size_t i = 0; i < metrics.refusals.size(); ++i) {
        out << PREFIX << "refusals_total{reason=\"" << info(static_cast<Reason>(i)).word << "\"} "
            << metrics.refusals[i] << '\n';
    }
}

void add_round_trips(std::ostream& out, const Metrics& metrics) {
    constexpr std::string_view NAME = "round_trip_seconds";
    head(out, NAME, "histogram", "Time from a PING to its PONG.");
    std::uint64_t count = 0;
    for (std::size_t i = 0; i < metrics.roundTrips.size(); ++i) {
        count += metrics.roundTrips[i];
        out << PREFIX << NAME << "_bucket{le=\"";
        if (i < Metrics::ROUND_TRIP_BOUNDS.size()) {
            out << Metrics::ROUND_TRIP_BOUNDS[i];
        } else {
            out << "+Inf";
        }
        out << "\"} " << count << '\n';
    }
    // A stream rounds to six digits: after a day the sum would grow by leaps.
    out << PREFIX << NAME << "_sum " << std::to_string(metrics.roundTripSum) << '\n'
        << PREFIX << NAME << "_count " << count << '\n';
}

}  // namespace

void Metrics::add_round_trip(std::chrono::duration<double> time) noexcept {
    const auto bound =
        std::lower_bound(ROUND_TRIP_BOUNDS.begin(), ROUND_TRIP_BOUNDS.end(), time.count());
    ++roundTrips[static_cast<std::size_t>(bound - ROUND_TRIP_BOUNDS.begin())];
    roundTripSum += time.count();
}

std::string Metrics::to_prometheus() const {
    std::ostringstream out;
    value(out, "connections", "gauge", "Connections now.", connections);
    value(out, "members", "gauge", "Clients that are logged in now.", members);
    value(out, "groups", "gauge", "Groups now.", groups);
    value(out, "queued_bytes", "gauge", "Bytes that wait for clients now.", queuedBytes);
    value(out, "accepted_total", "counter", "Connections accepted.", accepted);
    value(out, "frames_received_total", "counter", "Messages received.", framesReceived);
    value(out, "frames_forwarded_total", "counter", "Messages forwarded.", framesForwarded);
    value(out, "frames_dropped_total", "counter", "Messages that went nowhere.", framesDropped);
    value(out, "bytes_received_total", "counter", "Bytes off the wire.", bytesReceived);
    value(out, "bytes_sent_total", "counter", "Bytes sent, before TLS.", bytesSent);
    add_refusals(out, *this);
    add_round_trips(out, *this);
    return out.str();
}

}  // namespace relay
