// The application's theme: its number, the three palettes, the path of an icon in a theme, and the
// monospace font. A window has a theme of its own, GMainWindow::set_theme.
#pragma once

#include <QString>

class QFont;
class QPalette;
class QWidget;

namespace ze::qt::themes {

inline constexpr unsigned int NORMAL = 0;
inline constexpr unsigned int DARK = 1;
inline constexpr unsigned int GREEN = 2;

/// Stores the number and changes no widget. A number above the largest allowed one is an error in
/// the log and changes nothing.
void set(unsigned int theme);
[[nodiscard]] unsigned int get() noexcept;
[[nodiscard]] unsigned int get_theme_type() noexcept;
/// The present theme as text, see theme_to_string().
[[nodiscard]] QString get_theme();

/// The largest number that set() and apply_the_theme() take, GREEN at the start.
void set_max_theme(unsigned int theme) noexcept;
[[nodiscard]] unsigned int get_max_theme() noexcept;

[[nodiscard]] bool is_theme(unsigned int theme) noexcept;
[[nodiscard]] bool is_theme_normal() noexcept;
[[nodiscard]] bool is_theme_dark() noexcept;
[[nodiscard]] bool is_theme_green() noexcept;

/// "normal", "dark", "green", and "theme-not-set" for any other number.
[[nodiscard]] QString theme_to_string(unsigned int theme);
/// The inverse; a text that is no theme gives a number above every theme.
[[nodiscard]] unsigned int string_to_theme(const QString& text);

/// Made on first use and kept. An unknown number gives the normal palette.
[[nodiscard]] const QPalette& get_palette(unsigned int theme);
[[nodiscard]] const QPalette& get_palette_normal();
[[nodiscard]] const QPalette& get_palette_dark();
[[nodiscard]] const QPalette& get_palette_green();

/// Gives the theme to the whole application: palette, log views and icons. A number above the
/// largest allowed one is an error in the log and changes nothing.
void apply_the_theme(unsigned int theme);
/// The same by its text; an unknown text does nothing.
void apply_theme(const QString& text);
/// Applies the present theme once more, for widgets that were made since.
void refresh_theme();

/// The file of an icon in a theme: ":/wb/shared-res/icons/copy.svg" in "dark" is
/// ":/wb/shared-res/icons/dark/copy.svg". An empty text and "normal" mean the icon itself; a path
/// of fewer than four pieces is returned as it is.
[[nodiscard]] QString make_theme_path(const QString& path, const QString& theme);

/// Gives a button that has an icon resource the icon of the theme. False for any other widget and
/// where the theme has no such icon; the widget then keeps what it shows.
bool adapt_icon(QWidget* widget, const QString& theme);

/// The resource that get_mono_font() reads; a font that was read before is forgotten.
void set_mono_font_path(const QString& path);
/// The program's monospace font, read on first use; "Monospace" of the system without its file.
[[nodiscard]] QFont get_mono_font();

}  // namespace ze::qt::themes
