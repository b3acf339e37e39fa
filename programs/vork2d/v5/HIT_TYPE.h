// The names of what the ball can meet, for the log.
#pragma once

#include "ze/tools/format.h"

#include "vork2d/rally/HitInfo.h"

#include <string>

namespace vork2d::v5 {

using rally::HIT_TYPE;

/// The enumerator's text; a number beyond the enumeration is named as unknown. The formatter prints
/// a type so.
[[nodiscard]] std::string to_string(HIT_TYPE type);

}  // namespace vork2d::v5

namespace ze {
template <>
void obj_to_stream(std::stringstream& out, const vork2d::rally::HIT_TYPE& type);
}
