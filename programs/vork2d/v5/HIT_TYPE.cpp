#include "HIT_TYPE.h"

namespace vork2d::v5 {

std::string to_string(HIT_TYPE type) {
    switch (type) {
        case rally::HIT_NONE:
            return "HIT_NONE";
        case rally::HIT_TOP:
            return "HIT_TOP";
        case rally::HIT_BOTTOM:
            return "HIT_BOTTOM";
        case rally::HIT_PADDLE_LEFT:
            return "HIT_PADDLE_LEFT";
        case rally::HIT_PADDLE_RIGHT:
            return "HIT_PADDLE_RIGHT";
    }
    return ze::str::xprintF(0, "hitType:$ is unknown", static_cast<unsigned>(type));
}

}  // namespace vork2d::v5

template <>
void ze::obj_to_stream(std::stringstream& out, const vork2d::rally::HIT_TYPE& type) {
    out << vork2d::v5::to_string(type);
}
