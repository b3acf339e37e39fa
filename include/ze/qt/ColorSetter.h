// Gives a widget a background colour. The palette from before the first change is kept.
#pragma once

#include <QColor>
#include <QPalette>

#include <optional>

class QWidget;

namespace ze::qt {

class ColorSetter {
public:
    /// The widget is usually the object that derives from this class; it is not owned.
    explicit ColorSetter(QWidget* theWidget) noexcept : colorTarget(theWidget) {}

    /// Fills the widget with the colour, whichever role its kind paints its background with.
    void set_bg(QColor color);

protected:
    ~ColorSetter() = default;

    // How the widget looked before: for a derived class that wants to put it back.
    QWidget* colorTarget;
    std::optional<QPalette> palSaved;
    std::optional<bool> flagAutoFillSaved;
};

}  // namespace ze::qt
