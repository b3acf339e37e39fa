#include "ServiceManager.h"

#include <filesystem>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using std::chrono::microseconds;

/// The manager's side: a datagram socket at a path or a name of the kernel's.
class Inbox {
public:
    explicit Inbox(const std::string& name) : path_(name) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        name.copy(address.sun_path, sizeof address.sun_path - 1);
        if (name.front() == '@') {
            address.sun_path[0] = '\0';
        }
        const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
        EXPECT_EQ(bind(socket_, reinterpret_cast<const sockaddr*>(&address), size), 0);
    }
    ~Inbox() {
        ::close(socket_);
        std::filesystem::remove(path_);
    }

    /// The next datagram; empty if there is none.
    [[nodiscard]] std::string take() const {
        char text[100];
        const ssize_t size = recv(socket_, text, sizeof text, MSG_DONTWAIT);
        return size < 0 ? "" : std::string(text, static_cast<std::size_t>(size));
    }

private:
    int socket_ = socket(AF_UNIX, SOCK_DGRAM, 0);
    std::string path_;
};

relay::Environment environment(std::map<std::string, std::string> values) {
    return {std::move(values)};
}

TEST(ServiceManager, hears_what_it_is_told_at_a_path_and_at_a_name) {
    const std::string unique = "vork2d-relay-test-" + std::to_string(getpid());
    for (const std::string& name : {testing::TempDir() + unique, "@" + unique}) {
        const Inbox inbox(name);
        const relay::ServiceManager manager(environment({{"NOTIFY_SOCKET", name}}));
        EXPECT_EQ(inbox.take(), "") << name;
        manager.tell("READY=1");
        manager.tell("STOPPING=1");
        EXPECT_EQ(inbox.take(), "READY=1") << name;
        EXPECT_EQ(inbox.take(), "STOPPING=1") << name;
        EXPECT_EQ(inbox.take(), "") << name;
    }
}

TEST(ServiceManager, a_manager_that_reads_nothing_holds_nobody_up) {
    const std::string name = "@vork2d-relay-full-" + std::to_string(getpid());
    const Inbox inbox(name);
    const relay::ServiceManager manager(environment({{"NOTIFY_SOCKET", name}}));
    for (int i = 0; i < 10000; ++i) {
        manager.tell("WATCHDOG=1");
    }
    EXPECT_EQ(inbox.take(), "WATCHDOG=1");
}

TEST(ServiceManager, nobody_is_told_where_there_is_none) {
    const std::string tooLong = "/" + std::string(200, 'x');
    for (const std::string& name : {std::string(), std::string("relative"), tooLong,
                                    std::string("vsock:2:1234"), std::string("/nowhere/at/all")}) {
        const relay::ServiceManager manager(environment({{"NOTIFY_SOCKET", name}}));
        manager.tell("READY=1");
    }
    const relay::ServiceManager none(environment({{"WATCHDOG_USEC", "3000000"}}));
    none.tell("READY=1");
    EXPECT_EQ(none.watchdog_interval(), std::nullopt);
}

struct WatchdogRow {
    std::map<std::string, std::string> values;
    std::optional<microseconds> interval;
};

TEST(ServiceManager, the_watchdog_is_fed_three_times_before_it_bites) {
    const WatchdogRow rows[] = {
        {{}, std::nullopt},
        {{{"WATCHDOG_USEC", "3000000"}}, microseconds(1000000)},
        {{{"WATCHDOG_USEC", "18446744073709551615"}}, std::chrono::hours(1)},
        {{{"WATCHDOG_USEC", "3000000"}, {"WATCHDOG_PID", std::to_string(getpid())}},
         microseconds(1000000)},
        {{{"WATCHDOG_USEC", "3000000"}, {"WATCHDOG_PID", "1"}}, std::nullopt},
        {{{"WATCHDOG_USEC", "3000000"}, {"WATCHDOG_PID", "x"}}, std::nullopt},
        {{{"WATCHDOG_USEC", "0"}}, std::nullopt},
        {{{"WATCHDOG_USEC", "-3"}}, std::nullopt},
        {{{"WATCHDOG_USEC", "3s"}}, std::nullopt},
        {{{"WATCHDOG_USEC", "18446744073709551616"}}, std::nullopt},
    };
    for (const WatchdogRow& row : rows) {
        auto values = row.values;
        values["NOTIFY_SOCKET"] = "@nobody";
        EXPECT_EQ(relay::ServiceManager(environment(values)).watchdog_interval(), row.interval)
            << testing::PrintToString(row.values);
    }
}

}  // namespace
