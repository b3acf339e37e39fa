// Numbers, sizes and bytes as text for people.
#include "ze/tools/str.h"

#include <algorithm>
#include <array>

namespace ze::str {
namespace {

constexpr std::size_t GROUP = 3;

struct Magnitude {
    unsigned long long value;
    const char* word;
};

// Largest first.
constexpr std::array<Magnitude, 6> MAGNITUDES = {{
    {1'000'000'000'000'000'000, "quintillion"},
    {1'000'000'000'000'000, "quadrillion"},
    {1'000'000'000'000, "trillion"},
    {1'000'000'000, "billion"},
    {1'000'000, "million"},
    {1'000, "thousand"},
}};

// The magnitude without its sign; the smallest value has no positive one of its own type.
unsigned long long absolute(long long value) {
    const auto bits = static_cast<unsigned long long>(value);
    return value < 0 ? 0 - bits : bits;
}

std::string format_bytes_of_base(double bytes, double base) {
    const double kilo = base;
    const double mega = kilo * base;
    const double giga = mega * base;
    const double tera = giga * base;
    if (bytes > tera) {
        return sprintF("%2.2f TB", bytes / giga);  // the word changes, the number does not
    }
    if (bytes > giga) {
        return sprintF("%2.2f GB", bytes / giga);
    }
    if (bytes > mega) {
        return sprintF("%2.2f MB", bytes / kilo / kilo);
    }
    return sprintF("%2.2f KB", bytes / kilo);
}

}  // namespace

std::string format_1000(long long value, char separator) {
    const std::string digits = format_str_1000(std::to_string(absolute(value)), separator);
    return value < 0 ? '-' + digits : digits;
}

std::string format_str_1000(const std::string& text, char separator) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i > 0 && (text.size() - i) % GROUP == 0) {
            out += separator;
        }
        out += text[i];
    }
    return out;
}

std::string format_magnitude(unsigned long long value, bool with_number) {
    const auto found = std::find_if(MAGNITUDES.begin(), MAGNITUDES.end(),
                                    [value](const Magnitude& m) { return m.value <= value; });
    if (found == MAGNITUDES.end()) {
        return std::to_string(value);
    }
    return with_number ? xprintF(0, "$ $", value / found->value, found->word) : found->word;
}

std::string format_real(double value, unsigned decimals, bool force_dot) {
    const std::string pattern = xprintF(0, "%2.$f", decimals);
    std::string text = sprintF(pattern.c_str(), value);
    if (force_dot) {
        std::replace(text.begin(), text.end(), ',', '.');
    }
    return text;
}

std::string format_fill(char fill, unsigned width, long long value) {
    const std::string text = std::to_string(value);
    return text.size() < width ? std::string(width - text.size(), fill) + text : text;
}

std::string format_fill_zero(unsigned width, long long value) {
    std::string text = std::to_string(value);
    if (text.size() < width) {
        text.insert(value < 0 ? 1 : 0, width - text.size(), '0');
    }
    return text;
}

std::string format_fill_zero_microseconds(unsigned long long value) {
    return format_fill_zero(6, static_cast<long long>(value));
}

std::string format_fill_zero_milliseconds(unsigned long long value) {
    return format_fill_zero(3, static_cast<long long>(value));
}

std::string format_bytes(double bytes) {
    return format_bytes_of_base(bytes, 1000);
}

std::string format_bytes_1024(double bytes) {
    return format_bytes_of_base(bytes, 1024);
}

std::string format_array_as_hex(const unsigned char* data, unsigned size, unsigned long long head,
                                unsigned long long tail) {
    std::string out = xprintF(0, "[$] = {", format_str_1000(std::to_string(size), '.'));
    const bool all = head >= size || tail >= size - head;
    for (unsigned i = 0; i < size; ++i) {
        if (!all && i == head) {
            out += " .. ";
        } else if (all || i < head || i >= size - tail) {
            out += sprintF("%02X", data[i]);
            out += i + 1 < size ? " " : "";
        }
    }
    return out + '}';
}

}  // namespace ze::str
