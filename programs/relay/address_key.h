// By what a client is counted. One line has one IPv4 address, but many IPv6 addresses: the lowest
// 64 bits are the client's to choose, and most lines have 256 networks of that size.
#pragma once

#include <cstddef>
#include <string>

#include <boost/asio/ip/address.hpp>

namespace relay {

/// So many times what one address may take is what its wider network may. Not once only: a mobile
/// network puts many customers into one.
inline constexpr std::size_t NETWORK_SHARES = 4;

/// The IPv4 address, or the IPv6 /64 network.
[[nodiscard]] std::string address_key(const boost::asio::ip::address& address);

/// The IPv6 /56 network that an address_key() lies in; an IPv4 address stands for itself.
[[nodiscard]] std::string network_key(const std::string& address);

}  // namespace relay
