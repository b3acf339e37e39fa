#include "code_points.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace relay {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

#include "code_points.inc"

bool is_in(std::span<const Range> ranges, char32_t point) noexcept {
    const auto behind =
        std::upper_bound(ranges.begin(), ranges.end(), point,
                         [](char32_t value, const Range& range) { return value < range.first; });
    return behind != ranges.begin() && point <= std::prev(behind)->last;
}

}  // namespace

bool is_refused_in_name(char32_t point) noexcept {
    return is_in(REFUSED, point);
}

bool is_stacking_mark(char32_t point) noexcept {
    return is_in(STACKING, point);
}

}  // namespace relay
