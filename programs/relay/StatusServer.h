// GET /health and GET /metrics in plain HTTP, for the host's own tools on the same machine.
#pragma once

#include <string>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>

namespace relay {

struct Metrics;

class StatusServer {
public:
    StatusServer(boost::asio::io_context& context, const Metrics& metrics);

    /// Listens on "HOST:PORT", which must be a loopback address; what is wrong, or an empty text.
    [[nodiscard]] std::string start(const std::string& address);
    /// "HOST:PORT" with the port that the system chose.
    [[nodiscard]] std::string address() const;

private:
    class Client;

    void accept();

    boost::asio::ip::tcp::acceptor acceptor_;
    const Metrics& metrics_;
    boost::asio::steady_timer pause_;
};

}  // namespace relay
