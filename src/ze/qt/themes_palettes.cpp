// The palettes of the three themes, one table each.
#include "ze/qt/themes.h"

#include <QColor>
#include <QPalette>

#include <initializer_list>

namespace ze::qt::themes {

namespace {

struct Row {
    QPalette::ColorRole role;
    QRgb color;
};

void fill(QPalette& palette, std::initializer_list<QPalette::ColorGroup> groups,
          std::initializer_list<Row> rows) {
    for (const QPalette::ColorGroup group : groups) {
        for (const Row& row : rows) {
            palette.setColor(group, row.role, QColor(row.color));
        }
    }
}

constexpr QRgb BLACK = 0x000000;
constexpr QRgb WHITE = 0xFFFFFF;

QPalette make_normal() {
    QPalette palette;
    fill(palette, {QPalette::All},
         {{QPalette::Window, 0xEFEFEF},
          {QPalette::WindowText, BLACK},
          {QPalette::Base, WHITE},
          {QPalette::AlternateBase, 0xF7F7F7},
          {QPalette::Text, BLACK},
          {QPalette::Button, 0xEFEFEF},
          {QPalette::ButtonText, BLACK},
          {QPalette::Highlight, 0x4CA3E0},
          {QPalette::HighlightedText, WHITE},
          {QPalette::ToolTipBase, WHITE},
          {QPalette::ToolTipText, BLACK}});
    fill(palette, {QPalette::Active, QPalette::Inactive},
         {{QPalette::Light, WHITE},
          {QPalette::Midlight, 0xF5F5F5},
          {QPalette::Mid, 0xC8C8C8},
          {QPalette::Dark, 0xA0A0A0},
          {QPalette::Shadow, 0x696969}});
    fill(palette, {QPalette::Disabled},
         {{QPalette::Text, 0x787878},
          {QPalette::ButtonText, 0x787878},
          {QPalette::WindowText, 0x787878},
          {QPalette::Base, 0xF0F0F0},
          {QPalette::Button, 0xF0F0F0}});
    return palette;
}

QPalette make_dark() {
    QPalette palette;
    fill(palette, {QPalette::Active, QPalette::Inactive},
         {{QPalette::Window, 0x353535},
          {QPalette::WindowText, WHITE},
          {QPalette::Base, 0x232323},
          {QPalette::AlternateBase, 0x353535},
          {QPalette::Text, WHITE},
          {QPalette::Button, 0x353535},
          {QPalette::ButtonText, WHITE},
          {QPalette::Highlight, 0x2A82DA},
          {QPalette::HighlightedText, BLACK},
          {QPalette::ToolTipBase, 0x353535},
          {QPalette::ToolTipText, WHITE},
          {QPalette::PlaceholderText, 0xC8C8C8},
          {QPalette::Light, 0x6E6E6E},
          {QPalette::Midlight, 0x5A5A5A},
          {QPalette::Mid, 0x4B4B4B},
          {QPalette::Dark, 0x2D2D2D},
          {QPalette::Shadow, 0x141414}});
    fill(palette, {QPalette::Disabled},
         {{QPalette::Text, 0x828282},
          {QPalette::ButtonText, 0x828282},
          {QPalette::WindowText, 0x828282},
          {QPalette::Base, 0x2D2D2D},
          {QPalette::Button, 0x2D2D2D},
          {QPalette::Window, 0x2D2D2D},
          {QPalette::AlternateBase, 0x2D2D2D},
          {QPalette::ToolTipBase, 0x2D2D2D},
          {QPalette::ToolTipText, 0x828282},
          {QPalette::Highlight, 0x505050},
          {QPalette::HighlightedText, 0xA0A0A0},
          {QPalette::PlaceholderText, 0x787878}});
    return palette;
}

QPalette make_green() {
    QPalette palette;
    fill(palette, {QPalette::All},
         {{QPalette::Window, 0x1E321E},
          {QPalette::WindowText, 0xC8FFC8},
          {QPalette::Base, 0x192819},
          {QPalette::AlternateBase, 0x233C23},
          {QPalette::Text, 0xDCFFDC},
          {QPalette::Button, 0x284628},
          {QPalette::ButtonText, 0xDCFFDC},
          {QPalette::Highlight, 0x3CA03C},
          {QPalette::HighlightedText, BLACK},
          {QPalette::PlaceholderText, 0xC8C8C8},
          {QPalette::Light, 0x6E6E6E},
          {QPalette::Midlight, 0x5A5A5A},
          {QPalette::Mid, 0x4B4B4B},
          {QPalette::Dark, 0x2D2D2D},
          {QPalette::Shadow, 0x141414}});
    return palette;
}

}  // namespace

const QPalette& get_palette_normal() {
    static const QPalette palette = make_normal();
    return palette;
}

const QPalette& get_palette_dark() {
    static const QPalette palette = make_dark();
    return palette;
}

const QPalette& get_palette_green() {
    static const QPalette palette = make_green();
    return palette;
}

const QPalette& get_palette(unsigned int theme) {
    switch (theme) {
        case DARK:
            return get_palette_dark();
        case GREEN:
            return get_palette_green();
        default:
            return get_palette_normal();
    }
}

}  // namespace ze::qt::themes
