// The one way to set the text of a widget, whatever its Qt class calls it. `T` is that Qt class.
#pragma once

#include "ze/tools/format.h"

#include <QString>

namespace ze::qt {

template <class T>
class StringSetter {
public:
    /// The widget is usually the object that derives from this class; it is not owned.
    explicit StringSetter(T* theWidget) noexcept : textTarget(theWidget) {}

    void set_string(const QString& text) {
        if constexpr (requires(T & widget) { widget.setText(text); }) {
            textTarget->setText(text);
        } else {
            textTarget->setPlainText(text);
        }
    }

    /// The formatter's text: each `$` is replaced in turn by an argument.
    template <class... Args>
    void set_string(const char* format, const Args&... args) {
        set_string(str::qprintF(format, args...));
    }

protected:
    ~StringSetter() = default;

private:
    T* textTarget;
};

}  // namespace ze::qt
