// Addresses to listen on, and their texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <boost/asio/ip/address.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/socket_base.hpp>

namespace relay {

struct HostPort {
    std::string host;  ///< without the brackets of an IPv6 address
    std::string port;
};

/// "HOST:PORT" or "[IPv6]:PORT", port 0 to 65535 in decimal.
[[nodiscard]] std::optional<HostPort> split_host_port(std::string_view text);

/// As it stands in a URL: an IPv6 address in brackets.
[[nodiscard]] std::string url_host(const boost::asio::ip::address& address);

/// "HOST:PORT", an IPv6 address in brackets.
[[nodiscard]] std::string host_port(const boost::asio::ip::tcp::endpoint& endpoint);

/// The first address that the text stands for; what is wrong goes to `fault`.
[[nodiscard]] boost::asio::ip::tcp::endpoint resolve(std::string_view text, std::string& fault);

/// The same for an address that only this machine can reach; another one is a fault.
[[nodiscard]] boost::asio::ip::tcp::endpoint resolve_loopback(std::string_view text,
                                                              std::string& fault);

/// Listens there; what is wrong, or an empty text.
template <class Acceptor>
[[nodiscard]] std::string listen_on(Acceptor& acceptor,
                                    const boost::asio::ip::tcp::endpoint& endpoint) {
    boost::system::error_code ec;
    acceptor.open(endpoint.protocol(), ec);
    if (!ec) {
        acceptor.set_option(boost::asio::socket_base::reuse_address(true), ec);
    }
    if (!ec) {
        acceptor.bind(endpoint, ec);
    }
    if (!ec) {
        acceptor.listen(boost::asio::socket_base::max_listen_connections, ec);
    }
    return ec ? "can not listen on " + host_port(endpoint) + ": " + ec.message() : "";
}

}  // namespace relay
