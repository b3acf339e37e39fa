// A main window's log panel: making it, its buttons, its menu and its dialog.
#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/components/GAction.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GMenu.h"
#include "ze/qt/components/GSplitter.h"
#include "ze/qt/dialogs/GDialogOption.h"
#include "ze/tools/os.h"

#include <QFont>
#include <QPalette>
#include <QPointer>

#include <array>

namespace ze::qt {

namespace {

const QString KEY_LOG = QStringLiteral("log");  // in the settings

constexpr int PANEL_MIN_HEIGHT = 100;  // pixels
constexpr unsigned MENU_WIDTH = 150;   // pixels
constexpr unsigned MENU_DELAY = 200;   // milliseconds

Generator* as_generator(QWidget* parent) {
    if (auto* panel = dynamic_cast<GPanel*>(parent)) {
        return panel;
    }
    return dynamic_cast<GSplitter*>(parent);
}

}  // namespace

/// What stands on the buttons of the log panel, as text or as icon.
struct GMainWindow::LogRowFaces {
    QString options;
    QString optionsTip;
    QString clear;
    QString copy;
    QString line;
};

GPanelLogView* GMainWindow::gen_log_panel(QWidget* parent) {
    if (panLog != nullptr) {
        ze::pp_error("GMainWindow::gen_log_panel, already called");
        return panLog;
    }
    Generator* generator = as_generator(parent);
    if (generator == nullptr) {
        ze::pp_error("GMainWindow::gen_log_panel, parent must be GPanel | GPanelLogView");
        return nullptr;
    }
    log::LogConfig defaults;
    defaults.ini();
    const auto stored = settingsNode.get_pod(KEY_LOG, defaults);
    panLog = generator->gen<GPanelLogView>(stored);
    panLog->apply_config(stored);
    panLog->setMinimumHeight(PANEL_MIN_HEIGHT);
    return panLog;
}

void GMainWindow::store_log_config() {
    if (panLog != nullptr) {
        settingsNode.set_pod(KEY_LOG, panLog->config);
    }
}

GPanelLogView* GMainWindow::get_panel_log_view() const {
    return find_widget<GPanelLogView>(QString());
}

bool GMainWindow::is_logger_visible() const {
    return panLog != nullptr && panLog->isVisible();
}

bool GMainWindow::is_logPanel_enabled() const {
    return panLog != nullptr && panLog->is_enabled();
}

void GMainWindow::log_panel_control_icons(GPanel* parent, const QString& icon, const QString& tip) {
    gen_log_row(parent, {icon, tip, QStringLiteral("^icons/delete.svg"),
                         QStringLiteral("^icons/copy.svg"), QStringLiteral("^icons/minus1.svg")});
}

void GMainWindow::log_panel_control(GPanel* parent, const QString& text) {
    gen_log_row(parent, {text, QStringLiteral("Options (Logging,Themes,...)"),
                         QStringLiteral("clear"), QStringLiteral("copy"), QStringLiteral("-")});
}

void GMainWindow::gen_log_row(GPanel* parent, const LogRowFaces& faces) {
    if (parent == nullptr) {
        ze::nullPointerHandling("src/ze/qt/GMainWindow", __LINE__,
                                QStringLiteral("panParent == NULL"));
    }
    GPanel* row = parent->gen_pan_horz(0);
    row->setObjectName(QStringLiteral("panOptionLog"));
    row->gen<GButton>(faces.options, faces.optionsTip)->clicked_listener += [this] {
        on_menu_options();
    };
    gen_log_buttons(row, faces);
}

void GMainWindow::gen_log_buttons(GPanel* row, const LogRowFaces& faces) {
    auto* clear = row->gen<GButton>(faces.clear, QStringLiteral("Clears Log Panel"));
    clear->clicked_listener += [this] {
        if (panLog != nullptr) {
            panLog->clear();
        }
    };
    auto* copy = row->gen<GButton>(faces.copy, QStringLiteral("copy to clipboard"));
    copy->clicked_listener += [this] {
        if (panLog != nullptr) {
            panLog->copy_to_clipboard();
        }
    };
    auto* line = row->gen<GButton>(faces.line, QStringLiteral("Creates a Debug Line"));
    line->clicked_listener += [] {
        ze::pp_info_line();
    };

    const bool enabled = is_logPanel_enabled();
    clear->setVisible(enabled);
    copy->setVisible(enabled);
    line->setVisible(enabled && !ze::os::is_mobile());
    const std::array<QPointer<GButton>, 3> buttons = {clear, copy, line};
    log_toggle_listener += [buttons](const bool& on) {
        for (const QPointer<GButton>& button : buttons) {
            if (button != nullptr) {
                button->setVisible(on);
            }
        }
    };
}

void GMainWindow::on_logger() {
    if (panLog == nullptr) {
        ze::pp("GMainWindow::on_logger, panLogger == nullptr");
        return;
    }
    ze::pp("GMainWindow::on_logger, toggle panLog");
    panLog->set_enabled(!panLog->is_enabled());
    store_log_config();
    log_toggle_listener.fire_event(panLog->is_enabled());
}

void GMainWindow::on_menu_log(bool on) {
    ze::pp("GMainWindow::on_menu_log, flag:$", on);
    if (panLog != nullptr) {
        panLog->set_enabled(on);
        store_log_config();
    }
    log_toggle_listener.fire_event(on);
    post_settings_changed();
}

void GMainWindow::on_menu_options() {
    const bool enabled = is_logPanel_enabled();
    ze::pp_format(log::DEBUG, 0, "GMainWindow::on_menu_options, flagGui:$, cfg: ($)", enabled,
                  panLog == nullptr ? log::LogConfig() : panLog->config);
    GMenu* menu = GMenu::gen_menu(this, MENU_WIDTH);
    connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);  // the next call makes another
    menu->gen_action(QStringLiteral("Logging"), true, enabled, true, MENU_DELAY)
        ->triggered_listener += [this](const bool& on) {
        on_menu_log(on);
    };
    menu->gen_action(QStringLiteral("Options"), false, false, enabled, MENU_DELAY)
        ->triggered_signal += [this] {
        on_log_options();
    };
    menu->gen_separator();
    gen_menu_theme(menu);
    menu->show_at_mouse_pos(0);
}

void GMainWindow::gen_menu_theme(GMenu* menu) {
    GMenu* subMenu = menu->gen_sub_menu(QStringLiteral("Theme"), MENU_WIDTH);
    constexpr std::array<const char*, 3> NAMES = {"Normal", "Dark", "Green"};
    for (unsigned int theme = 0; theme < NAMES.size(); ++theme) {
        subMenu
            ->gen_action(QLatin1String(NAMES[theme]), true, theme == get_theme(), true, MENU_DELAY)
            ->triggered_signal += [this, theme] {
            set_theme(theme, 0);
        };
    }
}

void GMainWindow::on_log_options() {
    ze::pp("GMainWindow::on_options");
    auto* dialog = new GDialogOption(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setPalette(palette());
    dialog->setAutoFillBackground(true);
    dialog->setFont(font());
    dialog->ini();
    dialog->setModal(true);
    dialog->font_size_changed += [this](const unsigned int& size) {
        on_option_font_size(size);
    };
    dialog->auto_scroll_changed += [this](const bool& on) {
        on_option_auto_scroll(on);
    };
    dialog->show();
}

void GMainWindow::on_option_font_size(unsigned int size) {
    ze::pp("GMainWindow::on_options, fontSize:$", size);
    GPanelLogView* panel = get_panel_log_view();
    if (panel == nullptr) {
        ze::pp("pan log ?");
        return;
    }
    panel->set_font_size(static_cast<int>(size));
    ze::pp("GMainWindow::on_options, YEAH");
}

void GMainWindow::on_option_auto_scroll(bool on) {
    ze::pp("GMainWindow::on_options, flagAutoHScroll:$", on);
    if (GPanelLogView* panel = get_panel_log_view()) {
        panel->set_auto_scroll_left(on);
        ze::pp("GMainWindow::on_options, flagAutoHScroll:YEAH");
    }
}

}  // namespace ze::qt
