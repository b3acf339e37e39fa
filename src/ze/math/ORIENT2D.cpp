#include "ze/math/ORIENT2D.h"

#include "ze/log/pp.h"
#include "ze/tools/format.h"

#include <array>

namespace ze::math::ORIENT2D {

namespace {

struct Row {
    const char* text;
    Type opposite;
};

constexpr std::array<Row, 4> ROWS = {{
    {"LEFT", RIGHT},
    {"RIGHT", LEFT},
    {"UP", DOWN},
    {"DOWN", UP},
}};

}  // namespace

std::string to_string(unsigned type) {
    if (type >= ROWS.size()) {
        return str::xprintF(0, "ORIENT2D-type-unknown:$", type);
    }
    return ROWS[type].text;
}

Type from_string(const std::string& text) {
    for (unsigned type = 0; type < ROWS.size(); ++type) {
        if (text == ROWS[type].text) {
            return static_cast<Type>(type);
        }
    }
    pp_format(log::ERROR, 0, "ORIENT2D::from_string, cannot parse <<<$>>>", text);
    return LEFT;
}

Type get_opposite(unsigned type) {
    if (type >= ROWS.size()) {
        pp_format(log::ERROR, 0, "ORIENT2D::get_opposite, type:$ is unknown, return LEFT (default)",
                  type);
        return LEFT;
    }
    return ROWS[type].opposite;
}

}  // namespace ze::math::ORIENT2D
