#include "ze/qt/guitools/dim.h"

#include "ze/log/pp.h"

#include <QGuiApplication>
#include <QScreen>

#include <array>

namespace ze::qt::dim {

namespace {

constexpr int SMALLEST_SIDE = 300;

// Each class ends below its limit; what lies between two ranges, 599 and 899, is XLARGE with the
// rest.
struct Range {
    int from;
    int to;
    Dimension dimension;
};
constexpr std::array RANGES{Range{0, 299, TINY}, Range{300, 598, SMALL}, Range{600, 898, MEDIUM},
                            Range{900, 1298, LARGE}};

constexpr std::array WORDS{"uninitialized", "TINY", "SMALL", "MEDIUM", "LARGE", "XLARGE"};

}  // namespace

std::optional<QSize> optSize;

QSize size_of(const QScreen* screen) {
    return screen == nullptr ? QSize(SMALLEST_SIDE, SMALLEST_SIDE)
                             : usable_size(screen->availableGeometry().size());
}

QSize usable_size(const QSize& available) {
    if (available.width() < SMALLEST_SIDE || available.height() < SMALLEST_SIDE) {
        pp("dim::get_size - really so small ? $", available);
        return {SMALLEST_SIDE, SMALLEST_SIDE};
    }
    return available;
}

QSize get_size() {
    if (!optSize) {
        optSize = size_of(QGuiApplication::primaryScreen());
    }
    return *optSize;
}

void reset_cache() {
    pp("reset_cache");
    optSize.reset();
    pp("ok, no size any more");
}

unsigned get_dimension() {
    const int width = get_size().width();
    for (const Range& range : RANGES) {
        if (range.from <= width && width <= range.to) {
            return range.dimension;
        }
    }
    return XLARGE;
}

std::string to_string(unsigned dimension) {
    return dimension < WORDS.size() ? WORDS[dimension] : str::xprintF(0, "UNKNOWN-$", dimension);
}

std::string dimension_as_string() {
    return to_string(get_dimension());
}

bool is_dimension(unsigned dimension) {
    return get_dimension() == dimension;
}

bool is_tiny() {
    return is_dimension(TINY);
}

bool is_small() {
    return is_dimension(SMALL);
}

bool is_medium() {
    return is_dimension(MEDIUM);
}

bool is_large() {
    return is_dimension(LARGE);
}

bool is_xlarge() {
    return is_dimension(XLARGE);
}

Qt::Orientation get_orientation() {
    const QSize size = get_size();
    return size.height() > size.width() ? Qt::Vertical : Qt::Horizontal;
}

bool is_orient_vert() {
    return get_orientation() == Qt::Vertical;
}

bool is_orient_horz() {
    return get_orientation() == Qt::Horizontal;
}

std::string get_info() {
    const QSize size = get_size();
    return str::xprintF(0, "$, $x$ => $", is_orient_vert() ? "VERTICAL" : "HORIZONTAL",
                        size.width(), size.height(), dimension_as_string());
}

}  // namespace ze::qt::dim
