#include "HitInfo.h"

#include "ze/log/pp.h"
#include "ze/tools/format.h"

#include "vork2d/early/measures.h"

#include <cmath>

namespace vork2d::v3 {

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

HitInfo HitInfo::hit_vertical(HIT_TYPE type, glm::vec2 ptStart, glm::vec2 ptEnd, float x,
                              float yMin, float yMax) {
    if (yMin > yMax) {
        ze::pp_format(ze::log::ERROR, 0, "HitInfo::hit_vertical invalid params: yMin:$ > yMax:$",
                      yMin, yMax);
        return {};
    }
    const float dx = ptEnd.x - ptStart.x;
    if (early::EPS > std::fabs(dx)) {
        return {};
    }
    const float t = (x - ptStart.x) / dx;
    if (0 > t || t > 1) {
        return {};
    }
    const float y = (ptEnd.y - ptStart.y) * t + ptStart.y;
    if (yMin > y || y > yMax) {
        return {};
    }
    return {type, t, {dx * t + ptStart.x, y}};
}

}  // namespace vork2d::v3
