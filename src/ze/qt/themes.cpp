#include "ze/qt/themes.h"

#include "ze/log/pp.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/resources.h"
#include "ze/tools/format.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QFont>
#include <QFontDatabase>
#include <QVariant>

#include <array>
#include <iostream>
#include <limits>
#include <optional>

namespace ze::qt::themes {

namespace {

unsigned int themeCurrent = NORMAL;
unsigned int maxTheme = GREEN;

constexpr std::array<const char*, 3> THEME_WORDS = {"normal", "dark", "green"};

QString monoFontPath = QStringLiteral("^fonts/SourceCodePro-Regular.ttf");
std::optional<QFont> monoFont;

QFont read_mono_font() {
    QFont font(QStringLiteral("Monospace"));
    QFile file(get_res_path(monoFontPath));
    if (!file.open(QIODevice::ReadOnly)) {
        return font;
    }
    const int id = QFontDatabase::addApplicationFontFromData(file.readAll());
    if (id == -1) {
        std::cout << "PROBLEM READING FONT\n" << std::flush;
        return font;
    }
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    return families.isEmpty() ? font : QFont(families.first());
}

void report_too_large(const char* format, unsigned int theme) {
    ze::pp_format(ze::log::ERROR, 0, format, theme, maxTheme);
}

}  // namespace

void set(unsigned int theme) {
    if (theme > maxTheme) {
        report_too_large("zek::qt::theme::set, th > maxTheme, $ > $", theme);
        return;
    }
    themeCurrent = theme;
}

unsigned int get() noexcept {
    return themeCurrent;
}

unsigned int get_theme_type() noexcept {
    return themeCurrent;
}

QString get_theme() {
    return theme_to_string(themeCurrent);
}

void set_max_theme(unsigned int theme) noexcept {
    maxTheme = theme;
}

unsigned int get_max_theme() noexcept {
    return maxTheme;
}

bool is_theme(unsigned int theme) noexcept {
    return themeCurrent == theme;
}

bool is_theme_normal() noexcept {
    return is_theme(NORMAL);
}

bool is_theme_dark() noexcept {
    return is_theme(DARK);
}

bool is_theme_green() noexcept {
    return is_theme(GREEN);
}

QString theme_to_string(unsigned int theme) {
    return QLatin1String(theme < THEME_WORDS.size() ? THEME_WORDS[theme] : "theme-not-set");
}

unsigned int string_to_theme(const QString& text) {
    for (unsigned int theme = 0; theme < THEME_WORDS.size(); ++theme) {
        if (text == QLatin1String(THEME_WORDS[theme])) {
            return theme;
        }
    }
    return std::numeric_limits<unsigned int>::max();
}

void apply_the_theme(unsigned int theme) {
    if (theme > maxTheme) {
        report_too_large("zekt::qt::theme::apply_the_theme, theTheme > get_max_theme(), $ > $",
                         theme);
        return;
    }
    themeCurrent = theme;
    ze::pp_format(ze::log::DEBUG, 0, "zek::qt::theme::apply_the_theme:$, $", theme, get_theme());
    QApplication::setPalette(get_palette(theme));
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets) {
        if (auto* panel = dynamic_cast<GPanelLogView*>(widget)) {
            panel->adapt_to_settings(theme);
        }
    }
    for (QWidget* widget : widgets) {
        adapt_icon(widget, get_theme());
    }
}

void apply_theme(const QString& text) {
    const unsigned int theme = string_to_theme(text);
    if (theme < THEME_WORDS.size()) {
        apply_the_theme(theme);
    }
}

void refresh_theme() {
    apply_the_theme(themeCurrent);
}

QString make_theme_path(const QString& path, const QString& theme) {
    const QStringList tokens = path.split(u'/');
    if (tokens.size() < 4) {
        ze::pp("make_theme_path, toks.size() < 4");
        return path;
    }
    QString themed = tokens.mid(0, 3).join(u'/') + u'/';
    if (match_end_of_prefix(tokens[2])) {
        themed += tokens[3] + u'/';
    }
    if (!theme.isEmpty() && theme != QLatin1String(THEME_WORDS[NORMAL])) {
        themed += theme + u'/';
    }
    return themed + tokens.last();
}

bool adapt_icon(QWidget* widget, const QString& theme) {
    QString resource = widget->property("sIcon").toString();
    if (resource.isEmpty()) {
        return false;
    }
    if (resource.startsWith(u'^')) {
        resource = get_res_path(resource);
    }
    const QString themed = make_theme_path(resource, theme);
    auto* button = dynamic_cast<QAbstractButton*>(widget);
    if (button == nullptr || !does_res_exist(themed)) {
        return false;
    }
    button->setIcon(get_icon(themed));
    return true;
}

void set_mono_font_path(const QString& path) {
    monoFontPath = path;
    monoFont.reset();
}

QFont get_mono_font() {
    if (!monoFont) {
        monoFont = read_mono_font();
    }
    return *monoFont;
}

}  // namespace ze::qt::themes
