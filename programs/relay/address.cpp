#include "address.h"

#include <algorithm>
#include <charconv>

#include <boost/asio/io_context.hpp>

namespace relay {

namespace ip = boost::asio::ip;

namespace {

constexpr std::size_t NETWORK_BYTES = 8;

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

std::string address_key(const ip::address& address) {
    if (address.is_v4()) {
        return address.to_string();
    }
    const ip::address_v6 v6 = address.to_v6();
    if (v6.is_v4_mapped()) {
        return ip::make_address_v4(ip::v4_mapped, v6).to_string();
    }
    auto bytes = v6.to_bytes();
    std::fill(bytes.begin() + NETWORK_BYTES, bytes.end(), static_cast<unsigned char>(0));
    return ip::address_v6(bytes).to_string() + "/64";
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
