#include "settings.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace relay {

namespace {

constexpr std::uint64_t MILLION = 1000000;
constexpr std::uint64_t GIGABYTE = 1 << 30;
constexpr std::uint64_t HOUR = 3600;
constexpr std::uint64_t DAY = 24 * HOUR;

const std::array<Setting, 24> TABLE = {{
    {"listen", &Options::listen, "HOST:PORT to serve players on; port 0 takes a free one"},
    {"cert", &Options::cert, "certificate chain in PEM; empty for one that signs itself"},
    {"key", &Options::key, "private key of the certificate, in PEM"},
    {"status", &Options::status, "loopback HOST:PORT for /health and /metrics; empty for none"},
    {"state-dir", &Options::stateDir, "folder for the certificate that the relay makes"},
    {"max-connections", &Limits::connections, "connections in all", 1, MILLION},
    {"max-connections-per-address", &Limits::connectionsPerAddress, "connections from one address",
     1, MILLION},
    {"max-half-open", &Limits::halfOpen, "handshakes at the same time", 1, MILLION},
    {"max-half-open-per-address", &Limits::halfOpenPerAddress,
     "handshakes at the same time from one address", 1, MILLION},
    {"connects-per-minute", &Limits::connectsPerMinute, "new connections a minute from one address",
     1, MILLION},
    {"frames-per-second", &Limits::framesPerSecond, "messages a second from one client", 1,
     MILLION},
    {"bytes-per-second", &Limits::bytesPerSecond, "bytes a second from one client", 1024, GIGABYTE},
    {"burst-seconds", &Limits::burstSeconds, "seconds' worth of either that may come at once", 1,
     HOUR},
    {"frame-size", &Limits::frameSize, "bytes of one message", 1024, GIGABYTE},
    {"queued-output", &Limits::queuedOutput, "bytes that may wait for one client", 1024, GIGABYTE},
    {"queued-total", &Limits::queuedTotal,
     "bytes waiting in all; beyond it each client has only its share", 1024, 64 * GIGABYTE},
    {"failed-logins", &Limits::failedLogins, "failed logins a minute from one address", 1, MILLION},
    {"failed-logins-per-group", &Limits::failedLoginsPerGroup,
     "wrong passwords a minute at one group; then logins wait for a turn", 1, MILLION},
    {"chat-length", &Limits::chatLength, "characters of one chat text", 1, MILLION},
    {"chat-burst", &Limits::chatBurst, "chat texts at once; then one a second", 1, MILLION},
    {"handshake-seconds", &Limits::handshake, "until a connection has to be open", 1, HOUR},
    {"login-seconds", &Limits::login, "until an open connection has to log in", 1, HOUR},
    {"ping-seconds", &Limits::ping, "between two heartbeats", 1, DAY},
    {"silence-seconds", &Limits::silence, "without a sign of a client until it is closed", 1, DAY},
}};

std::string number_fault(const Setting& setting) {
    return std::string(setting.key) + " takes a whole number from " +
           std::to_string(setting.least) + " to " + std::to_string(setting.most);
}

}  // namespace

std::string Setting::variable() const {
    std::string name = "VORK2D_RELAY_";
    for (const char letter : key) {
        name += letter == '-' ? '_' : static_cast<char>(letter - 'a' + 'A');
    }
    return name;
}

std::string Setting::value(const Options& options) const {
    if (const auto* text = std::get_if<TextMember>(&member)) {
        return options.*(*text);
    }
    if (const auto* count = std::get_if<CountMember>(&member)) {
        return std::to_string(options.limits.*(*count));
    }
    return std::to_string((options.limits.*std::get<SecondsMember>(member)).count());
}

std::string Setting::assign(Options& options, std::string_view value) const {
    if (const auto* text = std::get_if<TextMember>(&member)) {
        options.*(*text) = value;
        return {};
    }
    std::uint64_t number = 0;
    const char* end = value.data() + value.size();
    const auto result = std::from_chars(value.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || number < least || number > most) {
        return number_fault(*this);
    }
    if (const auto* count = std::get_if<CountMember>(&member)) {
        options.limits.*(*count) = static_cast<std::size_t>(number);
    } else {
        options.limits.*std::get<SecondsMember>(member) = std::chrono::seconds(number);
    }
    return {};
}

std::span<const Setting> settings() noexcept {
    return TABLE;
}

const Setting* find_setting(std::string_view key) noexcept {
    const auto found = std::find_if(TABLE.begin(), TABLE.end(),
                                    [key](const Setting& setting) { return setting.key == key; });
    return found == TABLE.end() ? nullptr : &*found;
}

}  // namespace relay
