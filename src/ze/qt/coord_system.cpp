#include "ze/qt/coord_system.h"

#include "ze/tools/format.h"

namespace ze::qt::coord_system {

std::string to_string(Type type) {
    switch (type) {
        case SCREEN:
            return "SCREEN";
        case CARTESIAN:
            return "CARTESIAN";
        case NDC:
            return "NDC";
        case UV:
            return "UV";
    }
    return str::xprintF(0, "COORDINATE_SYSTEM:$", static_cast<unsigned>(type));
}

}  // namespace ze::qt::coord_system
