// A slider whose handle is large enough for a finger and follows the theme.
#pragma once

#include <QSlider>

namespace ze::qt {

class BasicSlider : public QSlider {
public:
    explicit BasicSlider(Qt::Orientation orientation = Qt::Horizontal, QWidget* parent = nullptr);

    /// Takes the style sheet of its orientation for a theme number.
    void adapt_style(unsigned int theme);
};

}  // namespace ze::qt
