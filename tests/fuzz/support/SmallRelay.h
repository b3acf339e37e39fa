// The relay from the socket on, with small limits: its connections and its hub are the real ones,
// admission is what the server does, and nothing listens.
#pragma once

#include "relay/Addresses.h"
#include "relay/Connection.h"
#include "relay/Deadlines.h"
#include "relay/Handshakes.h"
#include "relay/Hub.h"
#include "relay/Log.h"
#include "relay/Metrics.h"
#include "relay/OneByOne.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include <boost/asio/io_context.hpp>

namespace fuzz {

class SmallRelay {
public:
    SmallRelay();

    /// Takes a client in; the client's end of the line, which belongs to the caller.
    [[nodiscard]] int connect(const std::string& address);
    /// Does what there is to do now; how much that was.
    std::size_t poll();
    /// Moves the clock on and does what is due.
    void pass(std::chrono::milliseconds time);
    /// Tells everybody to go.
    void stop();

    /// Aborts where more waits for a client than may.
    void check_queues() const;
    /// Aborts where anything is left of a client.
    void check_nobody_is_left(const std::string& address);

    /// Bytes that wait for clients to take them.
    [[nodiscard]] std::uint64_t queued() const noexcept { return metrics_.queuedBytes; }
    [[nodiscard]] const relay::Limits& limits() const noexcept { return limits_; }

private:
    void on_handshake_over(relay::Connection& connection);
    void on_gone(relay::Connection& connection);

    relay::Limits limits_;
    relay::Metrics metrics_;
    relay::Addresses addresses_{limits_};
    relay::Log log_;
    relay::Hub hub_{limits_, addresses_, metrics_, log_};
    boost::asio::io_context context_{1};
    relay::Deadlines deadlines_{context_};
    relay::OneByOne turns_{context_};
    relay::Shared shared_;
    std::unordered_map<relay::Connection*, std::shared_ptr<relay::Connection>> connections_;
    relay::Handshakes<relay::Connection*> handshakes_{limits_};
    std::size_t staying_ = 0;
};

}  // namespace fuzz
