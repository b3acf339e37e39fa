#include "ze/tools/convert.h"

#include "ze/tools/format.h"

#include <QByteArray>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace ze::convert {

namespace {

template <std::size_t COUNT>
std::optional<std::array<int, COUNT>> read_numbers(const QString& text) {
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != COUNT) {
        return std::nullopt;
    }
    std::array<int, COUNT> numbers{};
    for (std::size_t i = 0; i < COUNT; ++i) {
        bool ok = false;
        numbers[i] = parts[static_cast<qsizetype>(i)].trimmed().toInt(&ok, 10);
        if (!ok) {
            return std::nullopt;
        }
    }
    return numbers;
}

// What a rectangle computes in int between its position, its size and its last pixel.
bool is_in_range(int start, int length) noexcept {
    using Limits = std::numeric_limits<int>;
    const long long end = static_cast<long long>(start) + length;
    return end <= Limits::max() && end > Limits::min() && length > Limits::min();
}

std::string joined(const QByteArray& bytes) {
    std::string text;
    for (const char byte : bytes) {
        if (!text.empty()) {
            text += ", ";
        }
        text += std::to_string(static_cast<int>(static_cast<signed char>(byte)));
    }
    return text;
}

bool is_one_of(const QString& text, const std::array<const char*, 4>& words) {
    return std::any_of(words.begin(), words.end(),
                       [&text](const char* word) { return text == QLatin1String(word); });
}

}  // namespace

QString to_string(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

std::string to_std_string(const QString& text) {
    return text.toStdString();
}

QString to_string(const QRect& rect) {
    return str::qprintF("$", rect);
}

QString to_string(const QPoint& point) {
    return str::qprintF("$", point);
}

QString to_string(const QSize& size) {
    return str::qprintF("$", size);
}

QPoint QPoint_from_string(const QString& text, const QPoint& fallback) {
    const auto numbers = read_numbers<2>(text);
    return numbers ? QPoint((*numbers)[0], (*numbers)[1]) : fallback;
}

QSize QSize_from_string(const QString& text, const QSize& fallback) {
    const auto numbers = read_numbers<2>(text);
    return numbers ? QSize((*numbers)[0], (*numbers)[1]) : fallback;
}

QRect QRect_from_string(const QString& text, const QRect& fallback) {
    const auto numbers = read_numbers<4>(text);
    if (!numbers) {
        return fallback;
    }
    const auto [x, y, width, height] = *numbers;
    const bool ok = is_in_range(x, width) && is_in_range(y, height);
    return ok ? QRect(x, y, width, height) : fallback;
}

bool bool_from_string(const QString& text, const bool& fallback) {
    const QString word = text.trimmed().toLower();
    if (is_one_of(word, {"1", "true", "yes", "on"})) {
        return true;
    }
    if (is_one_of(word, {"0", "false", "no", "off"})) {
        return false;
    }
    return fallback;
}

std::string to_std_string(const QByteArray& bytes, unsigned max) {
    const std::string head = str::xprintF(0, "[$] = {", static_cast<long long>(bytes.size()));
    if (bytes.size() <= static_cast<qsizetype>(max)) {
        return head + joined(bytes) + "}";
    }
    const auto half = static_cast<qsizetype>(max / 2);
    return head + joined(bytes.first(half)) + "...," + joined(bytes.last(half)) + "}";
}

int to_int(double value) noexcept {
    using Limits = std::numeric_limits<int>;
    if (std::isnan(value)) {
        return 0;
    }
    const double lowest = Limits::min();
    const double highest = Limits::max();
    return static_cast<int>(std::lround(std::clamp(value, lowest, highest)));
}

int get_compass_degrees(int degrees) noexcept {
    constexpr int CIRCLE = 360;
    const int rest = degrees % CIRCLE;
    return rest < 0 ? rest + CIRCLE : rest;
}

}  // namespace ze::convert
