#include "utf8.h"

#include <algorithm>

namespace relay {

namespace {

constexpr bool is_continuation(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

constexpr std::size_t length_of(unsigned char lead) noexcept {
    if (lead < 0xC0U) {
        return 1;
    }
    return lead < 0xE0U ? 2 : lead < 0xF0U ? 3 : 4;
}

}  // namespace

char32_t take_code_point(std::string_view& text) noexcept {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = std::min(length_of(lead), text.size());
    char32_t point = length == 1 ? lead : lead & (0x7FU >> length);
    for (const char byte : text.substr(1, length - 1)) {
        point = (point << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    text.remove_prefix(length);
    return point;
}

std::size_t count_code_points(std::string_view text) noexcept {
    return text.size() -
           static_cast<std::size_t>(std::count_if(text.begin(), text.end(), is_continuation));
}

}  // namespace relay
