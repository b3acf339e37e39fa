// What started the relay as a service and wants to hear how it does, as systemd with Type=notify
// and WatchdogSec. Without one, everything here does nothing.
#pragma once

#include "Options.h"

#include <chrono>
#include <optional>

#include <sys/socket.h>
#include <sys/un.h>

namespace relay {

class ServiceManager {
public:
    /// `environment` is asked for NOTIFY_SOCKET, WATCHDOG_USEC and WATCHDOG_PID. The socket is
    /// opened here: later there may be no descriptor left.
    explicit ServiceManager(const Environment& environment);
    ~ServiceManager();
    ServiceManager(const ServiceManager&) = delete;
    ServiceManager& operator=(const ServiceManager&) = delete;

    /// "READY=1" and the like. Never waits; what the manager can not take now is lost.
    void tell(std::string_view state) const noexcept;

    /// How often it wants to hear "WATCHDOG=1"; nothing if it does not.
    [[nodiscard]] std::optional<std::chrono::microseconds> watchdog_interval() const noexcept {
        return watchdogInterval_;
    }

private:
    int socket_ = -1;
    sockaddr_un address_{};
    socklen_t addressSize_ = 0;
    std::optional<std::chrono::microseconds> watchdogInterval_;
};

}  // namespace relay
