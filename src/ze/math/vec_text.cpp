#include "ze/math/vec_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <locale>
#include <optional>
#include <sstream>

namespace ze::math {

namespace {

// What a stream with default settings writes, without the stream: these texts are the bulk of the
// traffic, and a stream costs more than the rest of such a message.
template <typename Vector>
std::string write_vector(const Vector& value) {
    constexpr int DIGITS = 6;
    constexpr std::size_t LONGEST = sizeof("-1.23457e-38,");
    std::array<char, LONGEST * std::size_t{Vector::length()}> text;
    char* end = text.data();
    for (glm::length_t i = 0; i < Vector::length(); ++i) {
        if (i > 0) {
            *end++ = ',';
        }
        end = std::to_chars(end, text.data() + text.size(), value[i], std::chars_format::general,
                            DIGITS)
                  .ptr;
    }
    return {text.data(), end};
}

/// The vector of a text in exactly the form of write_vector; nothing for any other text, which
/// may be a vector all the same.
template <typename Vector>
std::optional<Vector> read_own_form(const std::string& text) {
    Vector value;
    const char* at = text.data();
    const char* const end = at + text.size();
    for (glm::length_t i = 0; i < Vector::length(); ++i) {
        if (i > 0 && (at == end || *at++ != ',')) {
            return std::nullopt;
        }
        const auto [stop, error] = std::from_chars(at, end, value[i]);
        if (error != std::errc{} || !std::isfinite(value[i])) {
            return std::nullopt;
        }
        at = stop;
    }
    return at == end ? std::optional(value) : std::nullopt;
}

template <typename Vector>
Vector read_vector(const std::string& text, const Vector& fallback) {
    if (const auto value = read_own_form<Vector>(text)) {
        return *value;
    }
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    Vector value = fallback;
    for (glm::length_t i = 0; i < Vector::length(); ++i) {
        char separator = ',';
        if (i > 0) {
            in >> separator;
        }
        in >> value[i];
        if (!in || separator != ',') {
            return fallback;
        }
    }
    return value;
}

}  // namespace

std::string to_string(const glm::vec2& value) {
    return write_vector(value);
}

std::string to_string(const glm::vec3& value) {
    return write_vector(value);
}

glm::vec2 from_string(const std::string& text, const glm::vec2& fallback) {
    return read_vector(text, fallback);
}

glm::vec3 from_string(const std::string& text, const glm::vec3& fallback) {
    return read_vector(text, fallback);
}

}  // namespace ze::math
