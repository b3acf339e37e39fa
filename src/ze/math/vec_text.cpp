#include "ze/math/vec_text.h"

#include <locale>
#include <sstream>

namespace ze::math {

namespace {

template <typename Vector>
std::string write_vector(const Vector& value) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out << value[0];
    for (glm::length_t i = 1; i < Vector::length(); ++i) {
        out << ',' << value[i];
    }
    return out.str();
}

template <typename Vector>
Vector read_vector(const std::string& text, const Vector& fallback) {
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
