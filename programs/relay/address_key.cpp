#include "address_key.h"

#include <algorithm>
#include <string_view>

namespace relay {

namespace ip = boost::asio::ip;

namespace {

constexpr std::string_view ADDRESS_SUFFIX = "/64";
constexpr std::size_t ADDRESS_BYTES = 8;
constexpr std::string_view NETWORK_SUFFIX = "/56";
constexpr std::size_t NETWORK_BYTES = 7;

std::string prefix_text(const ip::address_v6& address, std::size_t size, std::string_view suffix) {
    auto bytes = address.to_bytes();
    std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(size), bytes.end(),
              static_cast<unsigned char>(0));
    return ip::address_v6(bytes).to_string().append(suffix);
}

}  // namespace

std::string address_key(const ip::address& address) {
    if (address.is_v4()) {
        return address.to_string();
    }
    const ip::address_v6 v6 = address.to_v6();
    if (v6.is_v4_mapped()) {
        return ip::make_address_v4(ip::v4_mapped, v6).to_string();
    }
    return prefix_text(v6, ADDRESS_BYTES, ADDRESS_SUFFIX);
}

std::string network_key(const std::string& address) {
    if (!address.ends_with(ADDRESS_SUFFIX)) {
        return address;
    }
    boost::system::error_code ec;
    const auto v6 =
        ip::make_address_v6(address.substr(0, address.size() - ADDRESS_SUFFIX.size()), ec);
    return ec ? address : prefix_text(v6, NETWORK_BYTES, NETWORK_SUFFIX);
}

}  // namespace relay
