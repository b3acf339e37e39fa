#include "Server.h"

#include "address.h"
#include "descriptors.h"
#include "tune.h"

#include <csignal>
#include <thread>
#include <utility>

#include <boost/asio/ip/host_name.hpp>

namespace relay {

namespace {

constexpr std::chrono::milliseconds ACCEPT_PAUSE{100};
// Of the two seconds that a stop may take, under an attack too.
constexpr std::chrono::milliseconds SHUTDOWN_TIME{1000};
// At most one wake-up in this time, which serves all that has come meanwhile: with hundreds of
// players each message would wake the relay for itself, and a wake-up costs a good part of what
// forwarding does. After a turn that served one thing there is nothing to gather: two players,
// whose messages come milliseconds apart, wait for nothing.
constexpr std::chrono::microseconds TURN{250};
// For what the relay opens beside connections: listening, signals, the log, the certificate.
constexpr std::size_t OWN_DESCRIPTORS = 32;

}  // namespace

Server::Server(const Options& options, const Log& log, const ServiceManager& manager)
    : options_(options),
      log_(log),
      manager_(manager),
      addresses_(options.limits),
      hub_(options.limits, addresses_, metrics_, log),
      deadlines_(context_),
      turns_(context_),
      shared_{options.limits,
              hub_,
              deadlines_,
              turns_,
              metrics_,
              log,
              [this](Connection& connection) { on_handshake_over(connection); },
              [this](Reason reason, const std::string& address) { drop(reason, address); },
              [this] { --staying_; },
              [this](Connection& connection) {
                  on_gone(connection);
              }},
      certificate_(context_, options.certificate_files(), log),
      acceptor_(context_.get_executor()),
      signals_(context_, SIGTERM, SIGINT, SIGHUP),
      watchdog_(context_),
      timer_(context_),
      handshakes_(options.limits) {}

std::string Server::start() {
    std::string fault = certificate_.start();
    if (!fault.empty()) {
        return fault;
    }
    const Endpoint endpoint = resolve(options_.listen, fault);
    if (fault.empty()) {
        fault = listen_on(acceptor_, endpoint);
    }
    if (!fault.empty()) {
        return fault;
    }
    if (!options_.status.empty()) {
        status_ = std::make_unique<StatusServer>(context_, metrics_);
        fault = status_->start(options_.status);
        if (!fault.empty()) {
            return fault;
        }
    }
    wait_for_signal();
    accept();
    return {};
}

std::string Server::reach() const {
    error_code ec;
    const Endpoint endpoint = acceptor_.local_endpoint(ec);
    std::string host =
        endpoint.address().is_unspecified() ? net::ip::host_name(ec) : url_host(endpoint.address());
    host += ":" + std::to_string(endpoint.port());
    return "Play with: vork2d --server " + host + "  (wss://" + host + "/ws/chat?sessid=play, " +
           (options_.cert.empty() ? "self-signed certificate)"
                                  : "certificate " + options_.cert + ")");
}

void Server::run() {
    announce();
    while (context_.run_one() > 0) {
        const TimePoint begin = Clock::now();
        const bool flagBusy = context_.poll() > 0;
        if (flagBusy) {
            std::this_thread::sleep_until(begin + TURN);
        }
    }
    log_.event("stopped");
}

void Server::announce() {
    log_.event("ready", {{"connections", options_.limits.connections}});
    if (status_) {
        log_.event("status", {{"address", status_->address()}});
    }
    // Beside those who play stand those in a handshake and those who are only being told to go.
    const std::size_t needed =
        options_.limits.connections + 2 * options_.limits.halfOpen + OWN_DESCRIPTORS;
    if (const auto allowed = descriptor_limit(); allowed && *allowed < needed) {
        log_.event("few_descriptors", {{"allowed", *allowed}, {"needed", needed}});
    }
    manager_.tell("READY=1");
    feed_watchdog();
}

// From the loop: it stops when the loop stands still, and the relay is started afresh.
void Server::feed_watchdog() {
    if (const auto interval = manager_.watchdog_interval()) {
        manager_.tell("WATCHDOG=1");
        watchdog_.expires_after(*interval);
        watchdog_.async_wait([this](error_code ec) {
            if (!ec) {
                feed_watchdog();
            }
        });
    }
}

void Server::accept() {
    acceptor_.async_accept([this](error_code ec, TlsStream::Socket socket) {
        if (!flagShuttingDown_) {
            on_accept(ec, std::move(socket));
        }
    });
}

void Server::on_accept(error_code ec, TlsStream::Socket socket) {
    if (ec) {
        const bool flagRoom = ec == net::error::no_descriptors && let_go(handshakes_.first_to_go());
        if (!flagRoom && ec != net::error::connection_aborted) {
            pause_accepting(ec);
            return;
        }
    } else if (const Endpoint from = socket.remote_endpoint(ec); !ec) {
        admit(std::move(socket), from);
    }
    accept();
}

// Out of descriptors, most likely: the backlog of the kernel waits with us.
void Server::pause_accepting(const error_code& ec) {
    if (const std::uint64_t count = acceptFailures_.count(Clock::now()); count > 0) {
        log_.event("accept_failed", {{"detail", ec.message()}, {"count", count}});
    }
    timer_.expires_after(ACCEPT_PAUSE);
    timer_.async_wait([this](error_code waited) {
        if (!waited) {
            accept();
        }
    });
}

void Server::admit(TlsStream::Socket socket, const Endpoint& from) {
    const std::string address = address_key(from.address());
    ++metrics_.accepted;
    if (const std::optional<Reason> reason = drop_reason(address)) {
        drop(*reason, address);
        return;
    }
    let_go(handshakes_.in_the_way_of(address));
    tune(socket);
    const auto connection =
        std::make_shared<Connection>(std::move(socket), certificate_.get(), shared_, address);
    connections_.emplace(connection.get(), connection);
    metrics_.connections = connections_.size();
    addresses_.connect(address, Clock::now());
    handshakes_.enter(connection.get(), address);
    connection->start();
}

/// False if there is none.
bool Server::let_go(std::optional<Connection*> handshake) {
    if (!handshake) {
        return false;
    }
    drop(Reason::HALF_OPEN, (*handshake)->address());
    (*handshake)->end();
    return true;
}

// Who is over a limit is told so and may take two seconds to go; these hard limits bound how many
// are being told.
std::optional<Reason> Server::drop_reason(const std::string& address) const noexcept {
    const Limits& limits = options_.limits;
    if (addresses_.is_at_end(address) || !addresses_.may_connect(address, Clock::now())) {
        return Reason::CONNECTIONS_PER_ADDRESS;
    }
    if (connections_.size() - handshakes_.size() >= limits.connections + limits.halfOpen) {
        return Reason::CONNECTIONS;
    }
    return std::nullopt;
}

// Those that are leaving make the relay full for nobody, and neither do those that stand in their
// handshake.
std::optional<Reason> Server::refusal(const std::string& address) const noexcept {
    if (staying_ >= options_.limits.connections) {
        return Reason::CONNECTIONS;
    }
    return addresses_.is_full(address) ? std::optional(Reason::CONNECTIONS_PER_ADDRESS)
                                       : std::nullopt;
}

// Before the end of the TLS handshake there are no words to tell it with. A flood of these leaves
// one line a second for each reason, with the address of the last.
void Server::drop(Reason reason, const std::string& address) {
    metrics_.refuse(reason);
    if (const std::uint64_t count = drops_[reason].count(Clock::now()); count > 0) {
        log_.event("dropped",
                   {{"reason", info(reason).word}, {"address", address}, {"count", count}});
    }
}

void Server::on_handshake_over(Connection& connection) {
    handshakes_.leave(&connection);
    if (const std::optional<Reason> reason = refusal(connection.address())) {
        connection.refuse_later(*reason);
    } else {
        ++staying_;
    }
    addresses_.enter(connection.address(), Clock::now());
}

void Server::on_gone(Connection& connection) {
    if (connection.is_half_open()) {
        handshakes_.leave(&connection);
    } else {
        staying_ -= connection.is_leaving() ? 0 : 1;
        addresses_.leave(connection.address(), Clock::now());
    }
    connections_.erase(&connection);
    metrics_.connections = connections_.size();
    if (flagShuttingDown_ && connections_.empty()) {
        context_.stop();
    }
}

void Server::wait_for_signal() {
    signals_.async_wait([this](error_code ec, int signal) {
        if (ec) {
            return;
        }
        if (signal == SIGHUP) {
            certificate_.reload();
            wait_for_signal();
        } else {
            shut_down();
        }
    });
}

void Server::shut_down() {
    flagShuttingDown_ = true;
    manager_.tell("STOPPING=1");
    log_.event("stopping", {{"connections", connections_.size()}});
    error_code ignored;
    acceptor_.close(ignored);
    const auto copy = connections_;  // stop() may let one go at once
    for (const auto& [connection, keptAlive] : copy) {
        connection->stop(CloseCode::GOING_AWAY, "The relay is shutting down.");
    }
    if (connections_.empty()) {
        context_.stop();
    }
    timer_.expires_after(SHUTDOWN_TIME);
    timer_.async_wait([this](error_code) { end_all(); });
}

// Those that have not answered the close frame in time.
void Server::end_all() {
    const auto copy = connections_;
    for (const auto& [connection, keptAlive] : copy) {
        connection->end();
    }
    context_.stop();
}

}  // namespace relay
