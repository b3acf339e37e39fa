#include "ServiceManager.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

#include <unistd.h>

namespace relay {

namespace {

// Of the time after which the manager takes the relay for dead: two of these may come late.
constexpr std::uint64_t BEATS = 3;

std::optional<std::uint64_t> read_number(const std::optional<std::string>& text) noexcept {
    std::uint64_t number = 0;
    if (!text) {
        return std::nullopt;
    }
    const char* end = text->data() + text->size();
    const auto result = std::from_chars(text->data(), end, number);
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

/// Nothing where no watchdog is asked for, or that of another process.
std::optional<std::chrono::microseconds> read_watchdog_interval(const Environment& environment) {
    constexpr std::chrono::microseconds LONGEST = std::chrono::hours(1);
    const auto micros = read_number(environment("WATCHDOG_USEC")).value_or(0);
    const auto process = environment("WATCHDOG_PID");
    const bool flagOurs = !process || read_number(process) == static_cast<std::uint64_t>(getpid());
    if (micros < BEATS || !flagOurs) {
        return std::nullopt;
    }
    const auto most = static_cast<std::uint64_t>(LONGEST.count());
    return std::chrono::microseconds(std::min(micros / BEATS, most));
}

/// A path, or after an @ a name in the kernel's own table. Returns the size, 0 for neither.
socklen_t read_address(std::string_view text, sockaddr_un& address) noexcept {
    const bool flagName = text.starts_with('@');
    if ((!flagName && !text.starts_with('/')) || text.size() >= sizeof address.sun_path) {
        return 0;
    }
    address.sun_family = AF_UNIX;
    std::copy(text.begin(), text.end(), address.sun_path);
    if (flagName) {
        address.sun_path[0] = '\0';
    }
    return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + text.size());
}

}  // namespace

ServiceManager::ServiceManager(const Environment& environment) {
    addressSize_ = read_address(environment("NOTIFY_SOCKET").value_or(""), address_);
    if (addressSize_ > 0) {
        socket_ = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        watchdogInterval_ = read_watchdog_interval(environment);
    }
}

ServiceManager::~ServiceManager() {
    if (socket_ >= 0) {
        ::close(socket_);
    }
}

void ServiceManager::tell(std::string_view state) const noexcept {
    if (socket_ >= 0) {
        static_cast<void>(sendto(socket_, state.data(), state.size(), MSG_NOSIGNAL,
                                 reinterpret_cast<const sockaddr*>(&address_), addressSize_));
    }
}

}  // namespace relay
