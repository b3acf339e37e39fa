#include "HitInfo.h"

#include "ze/log/pp.h"

namespace vork2d::v5 {

std::string to_string(HIT_TYPE type) {
    switch (type) {
        case HIT_NONE:
            return "HIT_NONE";
        case HIT_TOP:
            return "HIT_TOP";
        case HIT_BOTTOM:
            return "HIT_BOTTOM";
        case HIT_PADDLE_LEFT:
            return "HIT_PADDLE_LEFT";
        case HIT_PADDLE_RIGHT:
            return "HIT_PADDLE_RIGHT";
    }
    return ze::str::xprintF(0, "hitType:$ is unknown", static_cast<unsigned>(type));
}

void HitInfo::report_upside_down(float yMin, float yMax) {
    ze::pp_format(ze::log::ERROR, 0, "HitInfo::hit_vertical invalid params: yMin:$ > yMax:$", yMin,
                  yMax);
}

}  // namespace vork2d::v5

template <>
void ze::obj_to_stream(std::stringstream& out, const vork2d::v5::HIT_TYPE& type) {
    out << to_string(type);
}
