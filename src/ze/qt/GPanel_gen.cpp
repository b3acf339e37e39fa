// What a panel generates.
#include "ze/log/pp.h"
#include "ze/qt/GPanel.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GCheckBox.h"
#include "ze/qt/components/GComboBox.h"
#include "ze/qt/components/GLabel.h"
#include "ze/qt/inline/GGui_inline.h"
#include "ze/qt/world_lang.h"

#include <QColor>
#include <QLabel>

namespace ze::qt {

GLabel* GPanel::gen_label(const QString& text, int minWidth) {
    auto* label = gen<GLabel>(text);
    if (minWidth > 0) {
        label->setMinimumWidth(minWidth);
    }
    return label;
}

QWidget* GPanel::gen_spacer() {
    return ze::qt::set_growable(gen<QLabel>(QString()));
}

QWidget* GPanel::gen_spacer_vert() {
    return ze::qt::set_growable_vertical(gen<QLabel>(QString()));
}

QWidget* GPanel::gen_spacer_horz() {
    return ze::qt::set_growable_horizontal(gen<QLabel>(QString()));
}

GPanel* GPanel::gen_panel(GLAYOUT kind, int margin) {
    auto* panel = gen<GPanel>(kind);
    if (margin >= 0) {
        panel->set_margins(margin);
    }
    return panel;
}

GPanel* GPanel::gen_pan_vert(int margin) {
    return gen_panel(GLAYOUT::VERTICAL, margin);
}

GPanel* GPanel::gen_pan_horz(int margin) {
    return gen_panel(GLAYOUT::HORIZONTAL, margin);
}

GPanel* GPanel::gen_pan_flow(int margin) {
    return gen_panel(GLAYOUT::FLOW, margin);
}

GPanel* GPanel::gen_pan_stacked(int margin) {
    return gen_panel(GLAYOUT::STACKED, margin);
}

GCheckBox* GPanel::gen_checkBox(const QString& text, bool checked, QString tip) {
    auto* box = gen<GCheckBox>(text);
    box->setChecked(checked);
    if (!tip.isEmpty()) {
        box->setToolTip(tip);
    }
    return box;
}

GButton* GPanel::gen_placeholder(const QString& text, bool growH, bool growV) {
    auto* button = gen<GButton>(text);
    if (growH && growV) {
        ze::qt::set_growable(button);
    } else if (growH) {
        ze::qt::set_growable_horizontal(button);
    } else if (growV) {
        ze::qt::set_growable_vertical(button);
    }
    button->clicked_listener += [text] {
        ze::pp("GPanel::create_placeholder <<<$>>>", text);
    };
    return button;
}

GLabel* GPanel::gen_horz_line_str(int height, const QString& color, const QString& name) {
    auto* line = gen<GLabel>(QString());
    line->set_horz_line(height, color, name);
    ze::qt::set_growable_horizontal(static_cast<QWidget*>(line));
    return line;
}

GLabel* GPanel::gen_horz_line(int height, const QColor& color) {
    return gen_horz_line_str(height, color.name());
}

GComboBox* GPanel::gen_combobox_world_lang() {
    auto* box = gen<GComboBox>();
    for (const auto& [code, name] : create_vector_world_lang_20()) {
        box->addItem(name, code);
    }
    return box;
}

}  // namespace ze::qt
