// How large the screen is and in which orientation it stands. The size is taken once and kept.
#pragma once

#include <QSize>

#include <optional>
#include <string>

class QScreen;

namespace ze::qt::dim {

/// The size that all questions here are answered from; empty until the first question.
extern std::optional<QSize> optSize;

/// Size classes by the width of the available screen area in pixels.
enum Dimension : unsigned {
    UNINITIALIZED = 0,
    TINY = 1,    ///< below 300
    SMALL = 2,   ///< 300 to 598
    MEDIUM = 3,  ///< 600 to 898
    LARGE = 4,   ///< 900 to 1298
    XLARGE = 5,  ///< 1299 and up, and also exactly 599 and exactly 899
};

/// The available size of a screen; 300 by 300 without one, or when a side is smaller than that.
[[nodiscard]] QSize size_of(const QScreen* screen);
[[nodiscard]] QSize usable_size(const QSize& available);

/// The kept size; taken from the primary screen when there is none yet.
[[nodiscard]] QSize get_size();
void reset_cache();

[[nodiscard]] unsigned get_dimension();
/// The word of a size class; "UNKNOWN-" and the number above 5.
[[nodiscard]] std::string to_string(unsigned dimension);
[[nodiscard]] std::string dimension_as_string();
[[nodiscard]] bool is_dimension(unsigned dimension);
[[nodiscard]] bool is_tiny();
[[nodiscard]] bool is_small();
[[nodiscard]] bool is_medium();
[[nodiscard]] bool is_large();
[[nodiscard]] bool is_xlarge();

/// Vertical when the height exceeds the width.
[[nodiscard]] Qt::Orientation get_orientation();
[[nodiscard]] bool is_orient_vert();
[[nodiscard]] bool is_orient_horz();

/// Orientation, size and size class in one line.
[[nodiscard]] std::string get_info();

}  // namespace ze::qt::dim
