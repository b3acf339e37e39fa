// The input is the text of a vector.

#include "ze/math/vec_text.h"

#include "support/check.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace {

// What was read is finite, and its text reads as nearly the same again.
template <typename Vector>
void check_vector(const std::string& text) {
    const Vector value = ze::math::from_string(text, Vector(7.0f));
    const Vector again = ze::math::from_string(ze::math::to_string(value), Vector(NAN));
    for (glm::length_t i = 0; i < Vector::length(); ++i) {
        FUZZ_CHECK(std::isfinite(value[i]));
        // Six digits may round the largest floats up to one that is none.
        const bool is_near = std::abs(again[i] - value[i]) <= std::abs(value[i]) * 1e-5f;
        FUZZ_CHECK(is_near || std::isnan(again[i]) || std::fpclassify(value[i]) == FP_SUBNORMAL);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    check_vector<glm::vec2>(text);
    check_vector<glm::vec3>(text);
    return 0;
}
