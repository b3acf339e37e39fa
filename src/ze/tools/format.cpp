#include "ze/tools/format.h"

#include "ze/tools/convert.h"

#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVariant>

#include <array>
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <limits>

namespace ze::str {
namespace {

// The longest double: sign, integer digits, point, six decimals.
constexpr std::size_t FIXED_BUFFER = std::numeric_limits<double>::max_exponent10 + 16;
constexpr std::size_t PRINTF_BUFFER = 4096;
constexpr std::size_t DECIMAL_BUFFER = std::numeric_limits<unsigned long long>::digits10 + 2;

void append_fixed(std::string& out, double value, int decimals) {
    std::array<char, FIXED_BUFFER> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    out.append(buffer.data(), result.ptr);
}

template <typename T>
void append_integer(std::string& out, T value) {
    std::array<char, DECIMAL_BUFFER> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    out.append(buffer.data(), result.ptr);
}

}  // namespace

std::string to_utf8(const QString& text) {
    return text.toStdString();
}

void append_decimal(std::string& out, long long value) {
    append_integer(out, value);
}

void append_decimal(std::string& out, unsigned long long value) {
    append_integer(out, value);
}

void append_text(std::string& out, float value) {
    append_fixed(out, static_cast<double>(value), 2);
}

void append_text(std::string& out, double value) {
    append_fixed(out, value, 6);
}

void append_text(std::string& out, bool value) {
    out += value ? "true" : "false";
}

void append_text(std::string& out, const char* value) {
    out += value != nullptr ? value : "nullptr";
}

void append_text(std::string& out, char* value) {
    append_text(out, static_cast<const char*>(value));
}

void append_text(std::string& out, const std::string& value) {
    out += value;
}

void append_text(std::string& out, const QString& value) {
    append_text(out, QStringView(value));
}

void append_text(std::string& out, QStringView value) {
    const QByteArray utf8 = value.toUtf8();
    out.append(utf8.constData(), static_cast<std::size_t>(utf8.size()));
}

void append_text(std::string& out, const glm::vec2& value) {
    append_format(out, "$, $", value.x, value.y);
}

void append_text(std::string& out, const QPoint& value) {
    append_format(out, "$,$", value.x(), value.y());
}

void append_text(std::string& out, const QPointF& value) {
    append_format(out, "$,$", value.x(), value.y());
}

void append_text(std::string& out, const QSize& value) {
    append_format(out, "$,$", value.width(), value.height());
}

void append_text(std::string& out, const QRect& value) {
    append_format(out, "$,$,$,$", value.x(), value.y(), value.width(), value.height());
}

void append_text(std::string& out, const QRectF& value) {
    append_format(out, "$,$,$,$", value.x(), value.y(), value.width(), value.height());
}

void append_text(std::string& out, const QVariant& value) {
    out += convert::to_string_basic_info(value);
}

void append_chars(std::string& out, const char* chars, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        if (chars[i] != '\0') {
            out += chars[i];
        }
    }
}

std::string sprintF(const char* format, ...) {
    if (format == nullptr) {
        return "<<<sprintF,nullpointer>>>";
    }
    std::array<char, PRINTF_BUFFER> buffer;
    if (std::strlen(format) >= buffer.size()) {
        return {};
    }
    std::va_list args;
    va_start(args, format);
    const int length = std::vsnprintf(buffer.data(), buffer.size(), format, args);
    va_end(args);
    return length < 0 ? std::string() : std::string(buffer.data());
}

}  // namespace ze::str
