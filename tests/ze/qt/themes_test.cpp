#include "ze/qt/themes.h"

#include "ze/qt/GApp.h"
#include "ze/qt/GLogView.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GListView.h"

#include "support/LogCapture.h"
#include "support/QtPrinters.h"
#include "support/contrast.h"

#include <QApplication>
#include <QFont>
#include <QFontInfo>
#include <QPalette>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;
using Lines = std::vector<std::string>;

/// Puts the application's theme, palette and limits back at the end of a test.
class Themes : public testing::Test {
protected:
    ~Themes() override {
        themes::set_max_theme(themes::GREEN);
        themes::set(themes::NORMAL);
        QApplication::setPalette(paletteBefore);
    }

    QPalette paletteBefore = QApplication::palette();
};

// --- palettes ------------------------------------------------------------------------------------

struct PaletteRow {
    const char* name;
    QPalette::ColorRole role;
    const char* normal;  // null: not set
    const char* dark;
    const char* green;
};

QString color_text(const QPalette& palette, QPalette::ColorGroup group, QPalette::ColorRole role) {
    return palette.isBrushSet(group, role) ? palette.color(group, role).name()
                                           : QStringLiteral("not set");
}

void expect_color(const char* theme, const PaletteRow& row, const QPalette& palette,
                  QPalette::ColorGroup group, const char* expected) {
    EXPECT_EQ(color_text(palette, group, row.role),
              QLatin1String(expected == nullptr ? "not set" : expected))
        << theme << ", " << row.name << ", group " << group;
}

constexpr PaletteRow ACTIVE_ROWS[] = {
    {"Window", QPalette::Window, "#efefef", "#353535", "#1e321e"},
    {"WindowText", QPalette::WindowText, "#000000", "#ffffff", "#c8ffc8"},
    {"Base", QPalette::Base, "#ffffff", "#232323", "#192819"},
    {"AlternateBase", QPalette::AlternateBase, "#f7f7f7", "#353535", "#233c23"},
    {"Text", QPalette::Text, "#000000", "#ffffff", "#dcffdc"},
    {"Button", QPalette::Button, "#efefef", "#353535", "#284628"},
    {"ButtonText", QPalette::ButtonText, "#000000", "#ffffff", "#dcffdc"},
    {"Highlight", QPalette::Highlight, "#4ca3e0", "#2a82da", "#3ca03c"},
    {"HighlightedText", QPalette::HighlightedText, "#ffffff", "#000000", "#000000"},
    {"ToolTipBase", QPalette::ToolTipBase, "#ffffff", "#353535", nullptr},
    {"ToolTipText", QPalette::ToolTipText, "#000000", "#ffffff", nullptr},
    {"PlaceholderText", QPalette::PlaceholderText, nullptr, "#c8c8c8", "#c8c8c8"},
    {"Light", QPalette::Light, "#ffffff", "#6e6e6e", "#6e6e6e"},
    {"Midlight", QPalette::Midlight, "#f5f5f5", "#5a5a5a", "#5a5a5a"},
    {"Mid", QPalette::Mid, "#c8c8c8", "#4b4b4b", "#4b4b4b"},
    {"Dark", QPalette::Dark, "#a0a0a0", "#2d2d2d", "#2d2d2d"},
    {"Shadow", QPalette::Shadow, "#696969", "#141414", "#141414"},
};

// Green has no disabled colours of its own: its rows hold for all groups.
constexpr PaletteRow DISABLED_ROWS[] = {
    {"Text", QPalette::Text, "#787878", "#828282", "#dcffdc"},
    {"ButtonText", QPalette::ButtonText, "#787878", "#828282", "#dcffdc"},
    {"WindowText", QPalette::WindowText, "#787878", "#828282", "#c8ffc8"},
    {"Base", QPalette::Base, "#f0f0f0", "#2d2d2d", "#192819"},
    {"Button", QPalette::Button, "#f0f0f0", "#2d2d2d", "#284628"},
    {"Window", QPalette::Window, "#efefef", "#2d2d2d", "#1e321e"},
    {"AlternateBase", QPalette::AlternateBase, "#f7f7f7", "#2d2d2d", "#233c23"},
    {"ToolTipBase", QPalette::ToolTipBase, "#ffffff", "#2d2d2d", nullptr},
    {"ToolTipText", QPalette::ToolTipText, "#000000", "#828282", nullptr},
    {"Highlight", QPalette::Highlight, "#4ca3e0", "#505050", "#3ca03c"},
    {"HighlightedText", QPalette::HighlightedText, "#ffffff", "#a0a0a0", "#000000"},
    {"PlaceholderText", QPalette::PlaceholderText, nullptr, "#787878", "#c8c8c8"},
    {"Light", QPalette::Light, nullptr, nullptr, "#6e6e6e"},
};

void expect_row(const PaletteRow& row, QPalette::ColorGroup group) {
    expect_color("normal", row, themes::get_palette_normal(), group, row.normal);
    expect_color("dark", row, themes::get_palette_dark(), group, row.dark);
    expect_color("green", row, themes::get_palette_green(), group, row.green);
}

TEST_F(Themes, the_palettes_have_their_colours) {
    for (const PaletteRow& row : ACTIVE_ROWS) {
        expect_row(row, QPalette::Active);
        expect_row(row, QPalette::Inactive);
    }
    for (const PaletteRow& row : DISABLED_ROWS) {
        expect_row(row, QPalette::Disabled);
    }
}

TEST_F(Themes, an_unknown_number_gives_the_normal_palette) {
    EXPECT_EQ(&themes::get_palette(0), &themes::get_palette_normal());
    EXPECT_EQ(&themes::get_palette(1), &themes::get_palette_dark());
    EXPECT_EQ(&themes::get_palette(2), &themes::get_palette_green());
    EXPECT_EQ(&themes::get_palette(7), &themes::get_palette_normal());
}

// --- contrast ------------------------------------------------------------------------------------

struct TextPair {
    const char* name;
    QPalette::ColorRole text;
    QPalette::ColorRole background;
};

constexpr TextPair TEXT_PAIRS[] = {
    {"window", QPalette::WindowText, QPalette::Window},
    {"base", QPalette::Text, QPalette::Base},
    {"alternate base", QPalette::Text, QPalette::AlternateBase},
    {"button", QPalette::ButtonText, QPalette::Button},
    {"tool tip", QPalette::ToolTipText, QPalette::ToolTipBase},
    {"selection", QPalette::HighlightedText, QPalette::Highlight},
    {"hint", QPalette::PlaceholderText, QPalette::Base},
};

Lines weak_pairs(QPalette::ColorGroup group) {
    Lines weak;
    for (unsigned theme = themes::NORMAL; theme <= themes::GREEN; ++theme) {
        const QPalette& palette = themes::get_palette(theme);
        for (const TextPair& pair : TEXT_PAIRS) {
            if (test::contrast(palette.color(group, pair.text),
                               palette.color(group, pair.background)) < test::READABLE) {
                weak.push_back(themes::theme_to_string(theme).toStdString() + ' ' + pair.name);
            }
        }
    }
    return weak;
}

TEST_F(Themes, text_can_be_read_in_every_theme) {
    // What the palettes themselves make weak: white on light blue, 2.8 to 1, and the half black
    // that Qt gives a hint where a palette says nothing, 4 to 1. What is disabled may be dimmer.
    EXPECT_EQ(weak_pairs(QPalette::Active), (Lines{"normal selection", "normal hint"}));
    EXPECT_EQ(weak_pairs(QPalette::Inactive), (Lines{"normal selection", "normal hint"}));
}

TEST_F(Themes, the_text_of_a_list_can_be_read_selected_or_not) {
    const QRegularExpression pair(QStringLiteral("background: (#\\w{6}); color: (#\\w{6});"));
    for (const QString& sheet : {create_style_GListView_normal(), create_style_GListView_dark()}) {
        int pairs = 0;
        for (auto found = pair.globalMatch(sheet); found.hasNext(); ++pairs) {
            const QRegularExpressionMatch match = found.next();
            EXPECT_GE(test::contrast(QColor(match.captured(1)), QColor(match.captured(2))), 4.5)
                << match.captured(0).toStdString();
        }
        EXPECT_EQ(pairs, 2);
    }
}

// --- the number ----------------------------------------------------------------------------------

TEST_F(Themes, the_number_can_be_stored_and_asked_for) {
    themes::set(themes::GREEN);
    EXPECT_EQ(themes::get(), 2U);
    EXPECT_EQ(themes::get_theme_type(), 2U);
    EXPECT_EQ(themes::get_theme(), QStringLiteral("green"));
    EXPECT_TRUE(themes::is_theme(2));
    EXPECT_TRUE(themes::is_theme_green());
    EXPECT_FALSE(themes::is_theme_dark());
    EXPECT_FALSE(themes::is_theme_normal());
}

TEST_F(Themes, a_number_above_the_limit_is_reported_and_not_stored) {
    test::LogCapture log;
    log.expect_error("zek::qt::theme::set, th > maxTheme, 3 > 2");
    themes::set(themes::DARK);
    themes::set(3);
    EXPECT_EQ(themes::get(), themes::DARK);
    EXPECT_EQ(log.lines(), Lines{"zek::qt::theme::set, th > maxTheme, 3 > 2"});
}

TEST_F(Themes, a_raised_limit_lets_the_number_in) {
    test::LogCapture log;
    themes::set_max_theme(3);
    themes::set(3);
    EXPECT_EQ(themes::get(), 3U);
    EXPECT_EQ(themes::get_theme(), QStringLiteral("theme-not-set"));
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(Themes, texts_and_numbers_are_inverse) {
    const std::pair<unsigned, const char*> rows[] = {{0, "normal"}, {1, "dark"}, {2, "green"}};
    for (const auto& [theme, text] : rows) {
        EXPECT_EQ(themes::theme_to_string(theme), QLatin1String(text));
        EXPECT_EQ(themes::string_to_theme(QLatin1String(text)), theme);
    }
    EXPECT_GT(themes::string_to_theme(QStringLiteral("Dark")), themes::get_max_theme());
}

// --- applying ------------------------------------------------------------------------------------

TEST_F(Themes, applying_a_theme_reaches_palette_log_view_and_icons) {
    test::LogCapture log;
    GPanelLogView panel;
    GButton button(QStringLiteral("^icons/copy.svg"));
    const QImage iconBefore = button.icon().pixmap(32, 32).toImage();
    log.clear();

    themes::apply_the_theme(themes::DARK);

    EXPECT_EQ(themes::get(), themes::DARK);
    EXPECT_EQ(log.lines_with_level(), Lines{"DEB zek::qt::theme::apply_the_theme:1, dark"});
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(0x35, 0x35, 0x35));
    EXPECT_EQ(panel.get_view()->palette().color(QPalette::Base), QColor(Qt::black));
    EXPECT_NE(button.icon().pixmap(32, 32).toImage(), iconBefore);
    log.ignore("Listener::~Listener@");
}

TEST_F(Themes, applying_above_the_limit_is_reported_and_changes_nothing) {
    test::LogCapture log;
    log.expect_error("zekt::qt::theme::apply_the_theme, theTheme > get_max_theme(), 3 > 2");
    themes::apply_the_theme(3);
    EXPECT_EQ(themes::get(), themes::NORMAL);
    EXPECT_EQ(QApplication::palette(), paletteBefore);
}

TEST_F(Themes, a_word_applies_its_theme_and_an_unknown_one_does_nothing) {
    test::LogCapture log;
    themes::apply_theme(QStringLiteral("blue"));
    EXPECT_EQ(themes::get(), themes::NORMAL);
    EXPECT_EQ(log.lines(), Lines());
    themes::apply_theme(QStringLiteral("green"));
    EXPECT_EQ(themes::get(), themes::GREEN);
}

TEST_F(Themes, a_refresh_reaches_widgets_that_were_made_since) {
    themes::apply_the_theme(themes::DARK);
    const GPanelLogView panel;
    themes::refresh_theme();
    EXPECT_EQ(panel.get_view()->palette().color(QPalette::Base), QColor(Qt::black));
}

// --- icons ---------------------------------------------------------------------------------------

TEST_F(Themes, the_path_of_an_icon_follows_the_theme) {
    struct Row {
        const char* name;
        const char* path;
        const char* theme;
        const char* expected;
    };
    const Row rows[] = {
        {"dark", ":/wb/shared-res/icons/copy.svg", "dark", ":/wb/shared-res/icons/dark/copy.svg"},
        {"green", ":/wb/shared-res/icons/copy.svg", "green",
         ":/wb/shared-res/icons/green/copy.svg"},
        {"normal", ":/wb/shared-res/icons/copy.svg", "normal", ":/wb/shared-res/icons/copy.svg"},
        {"no theme", ":/wb/shared-res/icons/copy.svg", "", ":/wb/shared-res/icons/copy.svg"},
        {"another prefix", ":/wb/other/icons/copy.svg", "dark", ":/wb/other/dark/copy.svg"},
        {"four pieces", ":/wb/icons/copy.svg", "dark", ":/wb/icons/dark/copy.svg"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(themes::make_theme_path(QLatin1String(row.path), QLatin1String(row.theme)),
                  QLatin1String(row.expected))
            << row.name;
    }
}

TEST_F(Themes, a_path_of_three_pieces_is_returned_unchanged) {
    test::LogCapture log;
    EXPECT_EQ(themes::make_theme_path(QStringLiteral("a/b/c"), QStringLiteral("dark")),
              QStringLiteral("a/b/c"));
    EXPECT_EQ(log.lines_with_level(), Lines{"DEB make_theme_path, toks.size() < 4"});
}

TEST_F(Themes, a_widget_without_an_icon_of_the_theme_keeps_what_it_shows) {
    test::LogCapture log;
    QWidget plain;
    EXPECT_FALSE(themes::adapt_icon(&plain, QStringLiteral("dark")));
    plain.setProperty("sIcon", QStringLiteral(":/wb/shared-res/icons/copy.svg"));
    EXPECT_FALSE(themes::adapt_icon(&plain, QStringLiteral("dark")));
    GButton button(QStringLiteral("^icons/copy.svg"));
    EXPECT_FALSE(themes::adapt_icon(&button, QStringLiteral("theme-not-set")));
    EXPECT_FALSE(button.icon().isNull());
    EXPECT_TRUE(themes::adapt_icon(&button, QStringLiteral("dark")));
    EXPECT_EQ(log.lines(),
              Lines{"resource does not exist: :/wb/shared-res/icons/theme-not-set/copy.svg"});
    log.ignore("Listener::~Listener@");
}

/// How much of a square of this size, in pixels, the icon covers: 1 is all of it.
double drawn_share(const QIcon& icon, int side) {
    const QImage picture = icon.pixmap(side, side).toImage();
    double sum = 0.0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            sum += picture.pixelColor(x, y).alphaF();
        }
    }
    return sum / (side * side);
}

TEST_F(Themes, every_icon_draws_in_every_theme) {
    for (const char* icon : {"wheel", "expand", "delete", "copy", "minus1", "vork2d"}) {
        GButton button(QStringLiteral("^icons/%1.svg").arg(QLatin1String(icon)));
        for (const char* theme : {"normal", "dark", "green"}) {
            EXPECT_TRUE(themes::adapt_icon(&button, QLatin1String(theme))) << icon << ' ' << theme;
            for (const int side : {16, 32}) {
                EXPECT_GE(drawn_share(button.icon(), side), 0.05) << icon << ' ' << theme << side;
            }
        }
    }
}

// --- the monospace font --------------------------------------------------------------------------

class MonoFont : public testing::Test {
protected:
    ~MonoFont() override {
        themes::set_mono_font_path(QStringLiteral("^fonts/SourceCodePro-Regular.ttf"));
    }

    /// The font read from this path, and what was written meanwhile.
    static std::pair<QString, std::string> read(const QString& path) {
        themes::set_mono_font_path(path);
        testing::internal::CaptureStdout();
        const QString family = themes::get_mono_font().family();
        return {family, testing::internal::GetCapturedStdout()};
    }
};

TEST_F(MonoFont, the_embedded_font_is_read) {
    const auto [family, output] = read(QStringLiteral("^fonts/SourceCodePro-Regular.ttf"));
    EXPECT_EQ(family, QStringLiteral("Source Code Pro"));
    EXPECT_EQ(output, "");
    EXPECT_TRUE(QFontInfo(themes::get_mono_font()).fixedPitch());
}

TEST_F(MonoFont, a_missing_file_gives_monospace_without_a_message) {
    test::LogCapture log;
    const auto [family, output] = read(QStringLiteral("^fonts/none.ttf"));
    EXPECT_EQ(family, QStringLiteral("Monospace"));
    EXPECT_EQ(output, "");
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(MonoFont, a_file_is_read_once) {
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("this is no font");
    file.close();
    themes::set_mono_font_path(file.fileName());
    testing::internal::CaptureStdout();
    (void)themes::get_mono_font();
    (void)themes::get_mono_font();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "PROBLEM READING FONT\n");
}

TEST_F(MonoFont, a_damaged_file_prints_the_failure) {
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("this is no font");
    file.close();
    const auto [family, output] = read(file.fileName());
    EXPECT_EQ(output, "PROBLEM READING FONT\n");
    EXPECT_EQ(family, QStringLiteral("Monospace"));
}

}  // namespace
