// The inner padding of a widget in pixels: the room between its edge and its contents.
#pragma once

#include <string>

class QWidget;

namespace ze::qt {

struct GPadding {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    /// Measures the padding that the style gives a button or a line edit, or the contents margins
    /// of any other widget. Null leaves the values as they are.
    void from_QWidget(const QWidget* widget);

    /// Makes a button only as wide as its text and the padding; gives any other widget the padding
    /// by style sheet.
    void set_padding(QWidget* widget) const;

    [[nodiscard]] std::string to_string() const;
};

}  // namespace ze::qt
