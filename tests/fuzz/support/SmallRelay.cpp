#include "SmallRelay.h"

#include "check.h"
#include "hand_clock.h"

#include <boost/asio/steady_timer.hpp>
#include <sys/socket.h>

namespace fuzz {

namespace {

constexpr std::size_t LAST_WORDS = 1024;  ///< of a refusal, or the answer to a request

relay::Limits small_limits() {
    relay::Limits limits;
    limits.connections = 3;
    limits.halfOpen = 3;
    limits.framesPerSecond = 20;
    limits.bytesPerSecond = 4096;
    limits.frameSize = 2048;
    limits.queuedOutput = 4096;
    limits.queuedTotal = 8192;
    limits.failedLogins = 3;
    limits.failedLoginsPerGroup = 2;
    limits.chatLength = 50;
    return limits;
}

}  // namespace

SmallRelay::SmallRelay()
    : limits_(small_limits()),
      log_([](std::string_view line) { FUZZ_CHECK(line.find('\n') == line.npos); }),
      shared_{limits_,
              hub_,
              deadlines_,
              turns_,
              metrics_,
              log_,
              [this](relay::Connection& connection) { on_handshake_over(connection); },
              [this](relay::Reason reason, const std::string&) { metrics_.refuse(reason); },
              [this] { --staying_; },
              [this](relay::Connection& connection) {
                  on_gone(connection);
              }} {}

int SmallRelay::connect(const std::string& address) {
    if (const auto oldest = handshakes_.in_the_way_of(address)) {
        (*oldest)->end();
    }
    int line[2];
    FUZZ_CHECK(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, line) == 0);
    const int room = 1;  // the least that the kernel allows: a client that does not read is felt
    FUZZ_CHECK(setsockopt(line[0], SOL_SOCKET, SO_SNDBUF, &room, sizeof room) == 0);
    // The protocol is only remembered, and never asked for.
    relay::TlsStream::Socket socket(context_.get_executor(), boost::asio::ip::tcp::v4(), line[0]);
    const auto connection =
        std::make_shared<relay::Connection>(std::move(socket), nullptr, shared_, address);
    connections_.emplace(connection.get(), connection);
    addresses_.connect(address, now);
    handshakes_.enter(connection.get(), address);
    connection->start();
    return line[1];
}

void SmallRelay::on_handshake_over(relay::Connection& connection) {
    handshakes_.leave(&connection);
    if (staying_ >= limits_.connections) {
        connection.refuse_later(relay::Reason::CONNECTIONS);
    } else {
        ++staying_;
    }
    addresses_.enter(connection.address(), now);
}

void SmallRelay::on_gone(relay::Connection& connection) {
    if (connection.is_half_open()) {
        handshakes_.leave(&connection);
    } else {
        staying_ -= connection.is_leaving() ? 0 : 1;
        addresses_.leave(connection.address(), now);
    }
    connections_.erase(&connection);
}

std::size_t SmallRelay::poll() {
    context_.restart();
    return context_.poll();
}

// Asio sleeps by the real clock and compares with ours when it wakes up. A timer that is due
// already wakes it.
void SmallRelay::pass(std::chrono::milliseconds time) {
    now += time;
    bool flagAwake = false;
    boost::asio::steady_timer alarm(context_, relay::TimePoint());
    alarm.async_wait([&flagAwake](boost::system::error_code) { flagAwake = true; });
    context_.restart();
    while (!flagAwake) {
        context_.run_one();
    }
    poll();
}

void SmallRelay::stop() {
    const auto copy = connections_;  // stop() may let one go at once
    for (const auto& [connection, keptAlive] : copy) {
        connection->stop(relay::CloseCode::GOING_AWAY, "The relay is shutting down.");
    }
}

void SmallRelay::check_queues() const {
    for (const auto& [connection, keptAlive] : connections_) {
        FUZZ_CHECK(connection->queued() <= limits_.queuedOutput + LAST_WORDS);
    }
}

void SmallRelay::check_nobody_is_left(const std::string& address) {
    FUZZ_CHECK(connections_.empty());
    FUZZ_CHECK(handshakes_.size() == 0);
    FUZZ_CHECK(staying_ == 0);
    FUZZ_CHECK(metrics_.members == 0);
    FUZZ_CHECK(metrics_.queuedBytes == 0);
    FUZZ_CHECK(hub_.count_groups() == 0);
    limits_.connectionsPerAddress = 1;
    FUZZ_CHECK(!addresses_.is_full(address));
}

}  // namespace fuzz
