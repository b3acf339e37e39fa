#include "ze/tools/version.h"

namespace ze {

const char* framework_version() noexcept {
    return ZE_VERSION;
}

}  // namespace ze
