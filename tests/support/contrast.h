// How well a text can be read on its ground.
#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace test {

constexpr double READABLE =
    4.5;  ///< the least contrast of a text of common size, by the same rules

inline double linear(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// Relative luminance and contrast as the web's accessibility guidelines (WCAG 2.1) define them.
inline double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// What is seen of a colour that lets its ground shine through.
inline QColor blended(const QColor& color, const QColor& ground) {
    const auto mix = [alpha = color.alphaF()](float over, float under) {
        return over * alpha + under * (1 - alpha);
    };
    return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                            mix(color.blueF(), ground.blueF()));
}

/// From 1, no difference, to 21, black on white.
inline double contrast(const QColor& text, const QColor& ground) {
    const auto [dark, light] = std::minmax({luminance(blended(text, ground)), luminance(ground)});
    return (light + 0.05) / (dark + 0.05);
}

}  // namespace test
