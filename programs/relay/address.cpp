#include "address.h"

#include <charconv>

#include <boost/asio/io_context.hpp>

namespace relay {

namespace ip = boost::asio::ip;

namespace {

bool is_port(std::string_view text) noexcept {
    unsigned port = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, port);
    return result.ec == std::errc() && result.ptr == end && port <= 0xFFFFU;
}

}  // namespace

std::optional<HostPort> split_host_port(std::string_view text) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos || !is_port(text.substr(colon + 1))) {
        return std::nullopt;
    }
    std::string_view host = text.substr(0, colon);
    const bool flagBrackets = host.size() > 2 && host.front() == '[' && host.back() == ']';
    if (flagBrackets) {
        host = host.substr(1, host.size() - 2);
    }
    if (host.empty() || (!flagBrackets && host.find_first_of(":[]") != std::string_view::npos)) {
        return std::nullopt;
    }
    return HostPort{std::string(host), std::string(text.substr(colon + 1))};
}

std::string url_host(const ip::address& address) {
    return address.is_v6() ? "[" + address.to_string() + "]" : address.to_string();
}

std::string host_port(const ip::tcp::endpoint& endpoint) {
    return url_host(endpoint.address()) + ":" + std::to_string(endpoint.port());
}

ip::tcp::endpoint resolve(std::string_view text, std::string& fault) {
    const auto parts = split_host_port(text);
    if (!parts) {
        fault = "\"" + std::string(text) + "\" is no HOST:PORT";
        return {};
    }
    boost::asio::io_context context;
    boost::system::error_code ec;
    const auto found = ip::tcp::resolver(context).resolve(parts->host, parts->port,
                                                          ip::tcp::resolver::passive, ec);
    if (ec || found.empty()) {
        fault = "can not find " + parts->host + ": " + ec.message();
        return {};
    }
    return found.begin()->endpoint();
}

ip::tcp::endpoint resolve_loopback(std::string_view text, std::string& fault) {
    const ip::tcp::endpoint endpoint = resolve(text, fault);
    if (fault.empty() && !endpoint.address().is_loopback()) {
        fault = std::string(text) + " is no loopback address; the status is not for others";
    }
    return endpoint;
}

}  // namespace relay
