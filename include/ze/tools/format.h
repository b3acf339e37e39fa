// The text formatter: one untyped placeholder `$`, the type of the argument decides how it prints.
// There is no escape, no width, no index; text that an argument brings in is never scanned again.
// It is not a locale-aware formatter: a decimal point is always a point.
#pragma once

#include <QString>

#include <concepts>
#include <cstring>
#include <sstream>
#include <string>
#include <type_traits>
#include <typeinfo>

#include <glm/vec2.hpp>

class QMouseEvent;
class QPoint;
class QPointF;
class QRect;
class QRectF;
class QSize;
class QVariant;

namespace ze {

/// Writes one value as the formatter prints it. A class prints through its `to_string() const`; a
/// type that has none specialises this function beside its declaration. A type with neither prints
/// as the marker "PP-TYPE?-'<type>'", which keeps the log call building and shows the gap.
template <typename T>
void obj_to_stream(std::stringstream& out, const T& value);

// Anybody can name a pointer to a class that is only announced: were these declared beside
// ze::qt::event::mouse::to_string, an include would decide whether the text or the marker prints.
template <>
void obj_to_stream(std::stringstream& out, QMouseEvent* const& ev);
template <>
void obj_to_stream(std::stringstream& out, const QMouseEvent* const& ev);

namespace str {

[[nodiscard]] std::string to_utf8(const QString& text);

// The types that the formatter knows itself. They need no stream.

/// The integers whose text is decimal. `long` is here because a 64-bit integer is a `long` on some
/// platforms and a `long long` on others; characters and enumerations are not numbers.
template <typename T>
concept Decimal = std::same_as<T, int> || std::same_as<T, unsigned> || std::same_as<T, long> ||
    std::same_as<T, unsigned long> || std::same_as<T, long long> ||
    std::same_as<T, unsigned long long> || std::same_as<T, unsigned short>;

/// Nothing converts on its way in: a QSizeF must not print as the QVariant that it converts to.
template <typename T>
void append_text(std::string& out, const T& value) = delete;

void append_decimal(std::string& out, long long value);
void append_decimal(std::string& out, unsigned long long value);

template <Decimal T>
void append_text(std::string& out, const T& value) {
    using Wide = std::conditional_t<std::is_signed_v<T>, long long, unsigned long long>;
    append_decimal(out, static_cast<Wide>(value));
}

void append_text(std::string& out, float value);   ///< two decimals
void append_text(std::string& out, double value);  ///< six decimals
void append_text(std::string& out, bool value);
void append_text(std::string& out, const char* value);  ///< "nullptr" for null
void append_text(std::string& out, char* value);
void append_text(std::string& out, const std::string& value);
void append_text(std::string& out, const QString& value);
void append_text(std::string& out, QStringView value);
void append_text(std::string& out, const glm::vec2& value);
void append_text(std::string& out, const QPoint& value);
void append_text(std::string& out, const QPointF& value);
void append_text(std::string& out, const QSize& value);
void append_text(std::string& out, const QRect& value);
void append_text(std::string& out, const QRectF& value);
void append_text(std::string& out, const QVariant& value);

/// A character array is a field of a structure: its NULs are skipped, what stands behind them is
/// text too.
void append_chars(std::string& out, const char* chars, std::size_t count);

template <typename T>
concept PlainText = requires(std::string& out, const T& value) {
    append_text(out, value);
};

template <typename T>
concept CharArray = std::is_bounded_array_v<T> && std::same_as < std::remove_extent_t<T>,
char > ;

template <typename T>
void append_value(std::string& out, const T& value) {
    if constexpr (CharArray<T>) {
        append_chars(out, value, std::extent_v<T>);
    } else if constexpr (PlainText<T>) {
        append_text(out, value);
    } else {
        std::stringstream stream;
        obj_to_stream(stream, value);
        out += stream.view();
    }
}

template <typename First, typename... Rest>
void append_format(std::string& out, const char* format, const First& first, const Rest&... rest) {
    const char* const mark = std::strchr(format, '$');
    if (mark == nullptr) {
        out += format;
        return;
    }
    out.append(format, static_cast<std::size_t>(mark - format));
    append_value(out, first);
    if constexpr (sizeof...(rest) > 0) {
        append_format(out, mark + 1, rest...);
    } else {
        out += mark + 1;
    }
}

/// Writes the format with its `$` replaced in turn by the arguments. Arguments over are dropped
/// unconverted, a `$` over stays.
template <typename First, typename... Rest>
void streamIt(std::stringstream& out, const char* format, First first, Rest... rest) {
    std::string text;
    append_format(text, format, first, rest...);
    out << text;
}

/// The same as text, behind `indent` blanks. A null format gives an empty string, whatever the rest
/// is.
template <typename... Args>
[[nodiscard]] std::string xprintF(unsigned indent, const char* format, const Args&... args) {
    if (format == nullptr) {
        return {};
    }
    constexpr std::size_t USUAL_ARGUMENT = 16;
    std::string text;
    text.reserve(indent + std::strlen(format) + sizeof...(args) * USUAL_ARGUMENT);
    text.append(indent, ' ');
    if constexpr (sizeof...(args) > 0) {
        append_format(text, format, args...);
    } else {
        text += format;
    }
    return text;
}

/// The text of the formatter without indent for Qt's side.
template <typename... Args>
[[nodiscard]] QString qprintF(const char* format, const Args&... args) {
    return QString::fromStdString(xprintF(0, format, args...));
}

/// Formats by printf's rules. The marker "<<<sprintF,nullpointer>>>" for a null format, nothing for
/// one of 4096 characters or more; a result of that length is cut.
[[nodiscard]] __attribute__((format(printf, 1, 2))) std::string sprintF(const char* format, ...);

/// The text that stream insertion gives.
template <typename T>
[[nodiscard]] std::string to_string(const T& value) {
    std::stringstream out;
    out << value;
    return out.str();
}

}  // namespace str

template <typename T>
void obj_to_stream(std::stringstream& out, const T& value) {
    std::string text;
    if constexpr (str::CharArray<T> || str::PlainText<T>) {
        str::append_value(text, value);
    } else if constexpr (requires { value.to_string(); }) {
        str::append_value(text, value.to_string());
    } else {
        str::append_format(text, "PP-TYPE?-'$'", typeid(value).name());
    }
    out << text;
}

}  // namespace ze
