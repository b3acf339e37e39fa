#include "ze/math/Size.h"

#include "ze/tools/format.h"

namespace ze::math {

std::string Size::to_string() const {
    return str::xprintF(0, "$, $", width, height);
}

}  // namespace ze::math
