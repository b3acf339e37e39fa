// A main window's keys and the operations behind them.
#include "ze/log/pp.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/components/GAction.h"
#include "ze/qt/dialogs/GMessageBox.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/tools/format.h"
#include "ze/tools/version.h"

#include <QKeySequence>

namespace ze::qt {

void GMainWindow::bind_key(GAction* action, void (GMainWindow::*operation)()) {
    action->triggered_signal += [this, operation] {
        (this->*operation)();
    };
}

void GMainWindow::setup_base_hotkeys() {
    bind_key(gen_action(QKeySequence(QKeySequence::HelpContents)), &GMainWindow::on_help);
    bind_key(gen_action(QKeySequence(QKeySequence::Close)), &GMainWindow::on_close);
    bind_key(gen_action(QKeySequence(QKeySequence::New)), &GMainWindow::on_new_window);
    bind_key(gen_action(QKeySequence(QKeySequence::Open)), &GMainWindow::on_open);
    bind_key(gen_action(QKeySequence(QKeySequence::FullScreen)),
             &GMainWindow::on_toggle_fullscreen);
    bind_key(gen_action(QKeySequence(QKeySequence::SelectAll)), &GMainWindow::on_select_all);
    bind_key(gen_action(QStringLiteral("Ctrl+L")), &GMainWindow::on_logger);
    bind_key(gen_action(QStringLiteral("Ctrl+Alt+Q")), &GMainWindow::on_reset_config_and_quit);
    bind_key(gen_action(QStringLiteral("Ctrl+Shift+T")), &GMainWindow::on_rotate_themes);
}

GAction* GMainWindow::gen_action(const QString& keys) {
    QKeySequence sequence = QKeySequence::fromString(keys, QKeySequence::PortableText);
    // A word that Qt does not know gives a sequence that is not empty and that no key can press.
    if (sequence.isEmpty() || sequence[0].key() == Qt::Key_unknown) {
        ze::pp_error("GMainWindow::create_action, '$' parsing problems", keys);
        sequence = QKeySequence();
    }
    return gen_action(sequence);
}

GAction* GMainWindow::gen_action(const QKeySequence& keys) {
    release_key(keys);
    auto* action = new GAction(this, QString());
    action->setShortcut(keys);
    addAction(action);
    return action;
}

void GMainWindow::release_key(const QKeySequence& key) {
    // With two actions on one key Qt takes the press for ambiguous and runs neither.
    for (QAction* action : actions()) {
        QList<QKeySequence> shortcuts = action->shortcuts();
        if (!key.isEmpty() && shortcuts.removeAll(key) > 0) {
            action->setShortcuts(shortcuts);
        }
    }
}

void GMainWindow::on_help() {
    GMessageBox::show_info(this, QStringLiteral("About ZEK"),
                           str::qprintF("ZEK/TOVA - v $", framework_version()));
}

void GMainWindow::on_close() {
    close();
}

void GMainWindow::on_new_window() {
    ze::pp("GMainWindow::on_new_window - overwrite me");
}

void GMainWindow::on_open() {
    ze::pp("GMainWindow::on_open");
}

void GMainWindow::on_select_all() {
    ze::pp("GMainWindow::on_select_all");
}

void GMainWindow::on_toggle_fullscreen() {
    toggle_full_screen(this, false);
}

void GMainWindow::on_reset_config_and_quit() {
    ze::pp("GMainWindow::on_reset_config_and_quit");
    GApp::reset_settings_and_quit();
}

}  // namespace ze::qt
