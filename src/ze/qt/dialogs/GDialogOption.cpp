#include "ze/qt/dialogs/GDialogOption.h"

#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/qt/GMainPanel.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GCheckBox.h"
#include "ze/qt/components/GComboBox.h"
#include "ze/qt/components/GLabel.h"

#include <QColor>

namespace ze::qt {

namespace {

constexpr const char* SOURCE = "src/ze/qt/dialogs/GDialogOption";
constexpr int MARGIN = 9;                // pixels around the rows
constexpr int LABEL_WIDTH = 80;          // pixels, so that the boxes stand below each other
constexpr unsigned FONT_SIZE_FIRST = 8;  // points
constexpr unsigned FONT_SIZE_LAST = 16;
constexpr unsigned FONT_SIZE_LIMIT = 19;
constexpr unsigned LEVEL_FALLBACK = 2;

struct Column {
    const char* text;
    unsigned bit;  // of LogConfig::logControl
};

constexpr Column COLUMNS[] = {
    {"number", log::COLUMN_NUMBER},   {"time", log::COLUMN_TIME},
    {"abs time", log::ABSOLUTE_TIME}, {"log level", log::COLUMN_LEVEL},
    {"thread", log::COLUMN_THREAD},   {"micro seconds", log::MICRO_SECONDS},
};

GComboBox* gen_row(GPanel* rows, const QString& text) {
    GPanel* row = rows->gen_pan_horz(0);
    GLabel* label = row->gen_label(text, LABEL_WIDTH);
    auto* box = row->gen<GComboBox>();
    label->setBuddy(box);
    box->setAccessibleName(text);
    row->gen_spacer_horz();
    return box;
}

}  // namespace

GDialogOption::GDialogOption(GMainWindow* parent) : GDialog(parent), winMain(parent) {
    if (parent == nullptr) {
        ze::nullPointerHandling(SOURCE, __LINE__, QStringLiteral("parent == NULL"));
    }
}

GPanelLogView* GDialogOption::log_panel() const {
    return winMain->get_panel_log_view();
}

void GDialogOption::ini() {
    setWindowTitle(QStringLiteral("Log Options"));
    if (log_panel() == nullptr) {
        ze::pp("WHAT, panLog == nullptr ?");
        ze::nullPointerHandling(SOURCE, __LINE__, QStringLiteral("panLog == NULL"));
    }
    config = log_panel()->config;
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(true);
    GPanel* rows = gen_main_panel(GLAYOUT::VERTICAL);
    rows->set_margins(MARGIN);
    gen_row_level(rows);
    gen_row_font_size(rows);
    gen_row_scroll(rows);
    rows->gen_horz_line(1, Qt::black);
    gen_columns(rows);
    rows->gen_horz_line(1, Qt::black);
    rows->gen_spacer_vert();
    gen_row_buttons(rows);
}

void GDialogOption::gen_row_level(GPanel* rows) {
    GComboBox* box = gen_row(rows, QStringLiteral("Log Level"));
    for (const char* level : {"ERROR", "WARN", "INFO", "DEBUG", "TRACE"}) {
        box->addItem(QLatin1String(level));
    }
    box->setCurrentIndex(static_cast<int>(config.logLevel));
    box->current_text_listener += [this](const QString& text) {
        ze::pp("sLevel:$", text);
        config.logLevel = log::parse_log_level(text, LEVEL_FALLBACK);
    };
}

void GDialogOption::gen_row_font_size(GPanel* rows) {
    GComboBox* box = gen_row(rows, QStringLiteral("Font Size"));
    for (unsigned size = FONT_SIZE_FIRST; size <= FONT_SIZE_LAST; ++size) {
        box->addItem(QString::number(size));
    }
    box->setCurrentText(QString::number(config.fontSize));
    box->current_text_listener += [this](const QString& text) {
        ze::pp("GDialogOption....fontSize:$", text);
        const unsigned size = text.toUInt();
        if (size <= FONT_SIZE_LIMIT) {
            config.fontSize = size;
        }
    };
}

void GDialogOption::gen_row_scroll(GPanel* rows) {
    GPanel* row = rows->gen_pan_horz(0);
    GCheckBox* box = row->gen_checkBox(
        QStringLiteral("Scroll Left Auto"), config.autoScrollHorz,
        QStringLiteral("Each new line in the logger automatically triggers horizontal scrolling to "
                       "the left."));
    box->toggled_listener += [this](const bool& on) {
        config.autoScrollHorz = on;
    };
    row->gen_spacer_horz();
}

void GDialogOption::gen_columns(GPanel* rows) {
    rows->gen_label(QStringLiteral("Columns"));
    for (const Column& column : COLUMNS) {
        GCheckBox* box = rows->gen_checkBox(QLatin1String(column.text),
                                            config.logControl.is_bit(column.bit), QString());
        box->toggled_listener += [this, bit = column.bit](const bool& on) {
            config.logControl.set_bit(bit, on);
        };
    }
}

void GDialogOption::gen_row_buttons(GPanel* rows) {
    GPanel* row = rows->gen_pan_horz(0);
    row->gen_spacer_horz();
    row->gen<GButton>(QStringLiteral("Cancel"))->clicked_listener += [this] {
        on_cancel();
    };
    auto* buttonOk = row->gen<GButton>(QStringLiteral("OK"));
    buttonOk->setDefault(true);
    buttonOk->clicked_listener += [this] {
        on_ok();
    };
}

void GDialogOption::on_cancel() {
    ze::pp("GDialogOption, Cancel");
    close();
}

void GDialogOption::on_ok() {
    ze::pp("GDialogOption, OK");
    if (GPanelLogView* panel = log_panel()) {
        panel->set_config(config);
        font_size_changed.fire_event(config.fontSize, FIRE_DIRECT);
        auto_scroll_changed.fire_event(config.autoScrollHorz, FIRE_DIRECT);
        winMain->sync_win_settings(false);
        winMain->sync_win_settings(true);
    } else {
        ze::pp("WHAT, panLog == nullptr ?");  // it went while the dialog was open
    }
    close();
}

}  // namespace ze::qt
