// Text to and from Qt value types. Text is UTF-8 in a std::string inside the framework and a
// QString at Qt's edge; this is where one becomes the other.
#pragma once

#include <QString>

#include <string>

class QByteArray;
class QPoint;
class QRect;
class QSize;
class QVariant;

namespace ze::convert {

[[nodiscard]] QString to_string(const std::string& utf8);
[[nodiscard]] std::string to_std_string(const QString& text);

/// "x,y,width,height", "x,y", "width,height".
[[nodiscard]] QString to_string(const QRect& rect);
[[nodiscard]] QString to_string(const QPoint& point);
[[nodiscard]] QString to_string(const QSize& size);

/// Reads the form above, with blanks around the numbers allowed; the fallback for anything else.
[[nodiscard]] QPoint QPoint_from_string(const QString& text, const QPoint& fallback);
[[nodiscard]] QSize QSize_from_string(const QString& text, const QSize& fallback);
[[nodiscard]] QRect QRect_from_string(const QString& text, const QRect& fallback);

/// "1", "true", "yes", "on" and "0", "false", "no", "off" in any case and with blanks around; the
/// fallback for anything else.
[[nodiscard]] bool bool_from_string(const QString& text, const bool& fallback);

/// A short dump, "[3] = {1, -2, 3}": each byte as a signed decimal. Of more than `max` bytes only
/// the first and the last `max / 2` show, with "...," between.
[[nodiscard]] std::string to_std_string(const QByteArray& bytes, unsigned max);

/// The nearest integer, halves away from zero; the nearest limit outside the range of int, and 0
/// for a NaN.
[[nodiscard]] int to_int(double value) noexcept;

/// Degrees folded into 0 to 359.
[[nodiscard]] int get_compass_degrees(int degrees) noexcept;

/// What a log says of a variant: type, validity, and its value where it has a text.
[[nodiscard]] QString to_qstring_basic_info(const QVariant& value);
[[nodiscard]] std::string to_string_basic_info(const QVariant& value);

}  // namespace ze::convert
