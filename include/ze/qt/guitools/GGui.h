// Small helpers for widgets that belong to no class: windows, clipboard, icons, looks.
// Null arguments go to nullPointerHandling unless the function says otherwise.
#pragma once

#include "ze/log/exits.h"
#include "ze/qt/inline/GGui_inline.h"
#include "ze/qt/resources.h"

#include <QColor>
#include <QPoint>
#include <QString>

#include <functional>

class QAbstractButton;
class QObject;
class QRect;
class QWidget;

namespace ze::qt {

class GMainWindow;

/// The main window in which a widget lies; null for null and where the top-level window is another.
[[nodiscard]] GMainWindow* get_main_window(const QWidget* w);

/// Gives the keyboard back to the main window of a dialog that has just closed, where the platform
/// has left it with no window at all. Takes effect when the event loop turns next.
void activate_main_window_later(const QWidget* dialog);

/// Where the frame of a window has to go to lie inside an area: no further than needed, and with
/// its upper left corner there where it is larger than the area.
[[nodiscard]] QPoint get_place_inside(const QRect& area, const QRect& frame);

/// Runs a function on the application's thread when its event loop turns next.
void invoke_later(std::function<void()> fn);

/// Switches between full screen and normal. With `flagAnyWidget` also a child widget can fill the
/// screen: it becomes a window meanwhile. A null widget, and a child without the flag, give an
/// error and nothing changes.
void toggle_full_screen(QWidget* w, bool flagAnyWidget);

/// UTF-8; null copies an empty text.
void copy_to_clipboard(const char* text);
void copy_to_clipboard(const QString& text);

/// Whether an object has a property with a value, its class's or one added at run time; false for
/// null.
[[nodiscard]] bool has_property(const QObject* obj, const char* name);

/// Shows a widget in another background colour for `milliseconds`. A flash during a flash is left
/// out.
void flash(QWidget* w, const QColor& color, unsigned long long milliseconds);

/// Whether a text names an icon: "^" stands for the resource prefix, ":/" and "/" begin a plain
/// path.
[[nodiscard]] bool is_icon_path(const QString& text);
/// The path with the prefix in place of "^"; empty where the text names no icon or no prefix is
/// set.
[[nodiscard]] QString get_icon_path(const QString& path);

/// Gives a widget or an action the icon of a path and returns it; a path that names no icon changes
/// nothing.
template <class T>
T* set_icon(T* target, const QString& path) {
    if (target == nullptr) {
        nullPointerHandling("include/ze/qt/guitools/GGui", __LINE__,
                            QStringLiteral("target == NULL"));
    }
    const QString resolved = get_icon_path(path);
    if (!resolved.isEmpty()) {
        target->setIcon(get_icon(resolved));
        target->setProperty("sIcon", resolved);
    }
    return target;
}

/// Adds a piece, formatted by the rules of printf, to the style sheet of a widget.
void set_xstyle(QWidget* w, const char* format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(2, 3);

/// The maximum width becomes the width of the text and the margin.
void set_margin_horz(QAbstractButton* bt, unsigned int margin);

/// Style sheet with a solid border. With a selector only the widgets that it names take it, without
/// one also the widget's children.
void set_border(QWidget* widget, QColor color, unsigned int width, const QString& selector = {});

/// Changes the palette role that this kind of widget paints its background or its text with.
void set_background(QWidget* widget, QColor color);
void set_text_color(QWidget* widget, QColor color);

}  // namespace ze::qt
