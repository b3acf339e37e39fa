// A push button that reports through listeners and carries an icon that follows the theme.
#pragma once

#include "ze/qt/StringSetter.h"
#include "ze/tools/Listener.h"

#include <QPushButton>

namespace ze::qt {

class GButton : public QPushButton, public StringSetter<QPushButton> {
public:
    Listener<NO_PAYLOAD> clicked_listener;
    Listener<NO_PAYLOAD> pressed_listener;
    Listener<NO_PAYLOAD> released_listener;
    Listener<bool> toggled_listener;

    /// A first argument that begins with "^" (below the resource prefix), ":/" or "/" is the path
    /// of an icon; any other is the text, and the id unless `id` is given.
    explicit GButton(const QString& textOrIcon, const QString& toolTip = {},
                     const QString& id = {});

    /// The id is the object name, by which a button is found again.
    void set_id(const QString& id) { setObjectName(id); }

    /// Sets the icon by a path as in the constructor; any other text is dropped.
    void set_icon_res(const QString& path);
    /// The path of the icon in the normal theme, empty without an icon.
    [[nodiscard]] QString get_icon_res() const;

    /// Makes a button with a text only as wide as the text and `margin` pixels on both sides.
    void adapt_size_to_font(int margin);

    void set_text_toolTip(const QString& text, const QString& toolTip);

    /// With `notify` false the toggled listener is not told.
    void set_checked(bool value, bool notify);

protected:
    bool event(QEvent* ev) override;

private:
    void take_icon(const QString& path, const char* errorText);
    void connect_listeners();
};

}  // namespace ze::qt
