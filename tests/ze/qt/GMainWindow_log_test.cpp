// A main window's log panel: making it, its buttons, its menu and its dialog.
#include "ze/log/pp.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GLogView.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/ProbeWindow.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GMenu.h"
#include "ze/qt/components/GSplitter.h"
#include "ze/qt/dialogs/GDialogOption.h"

#include "support/LogCapture.h"
#include "support/children.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QPointer>
#include <QPushButton>

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;
using test::ProbeWindow;
using ze::log::LogConfig;
using Lines = std::vector<std::string>;

class WindowLog : public testing::Test {
protected:
    WindowLog() {
        log.ignore("Listener::~Listener@");
        test::clear_settings();
        window.setup();
        panel = window.get_panel_log_view();
        test::turn_event_loop();
        log.clear();
    }
    ~WindowLog() override { test::turn_event_loop(); }

    template <typename T>
    [[nodiscard]] static T* by_text(const QWidget* parent, const char* text) {
        for (T* widget : parent->findChildren<T*>()) {
            if (widget->text() == QLatin1String(text)) {
                return widget;
            }
        }
        ADD_FAILURE() << "no widget '" << text << "'";
        return nullptr;
    }

    [[nodiscard]] LogConfig stored() const {
        return window.settingsNode.get_pod(QStringLiteral("log"), LogConfig());
    }

    test::LogCapture log;
    ProbeWindow window;
    GPanelLogView* panel = nullptr;
};

// --- the panel -----------------------------------------------------------------------------------

TEST_F(WindowLog, a_new_window_has_a_disabled_log_with_all_columns) {
    EXPECT_FALSE(window.is_logPanel_enabled());
    EXPECT_EQ(panel->config.logControl, ze::GBits<unsigned>(990));
    EXPECT_EQ(panel->minimumHeight(), 100);
    EXPECT_EQ(panel->get_font_size(), 10);
}

TEST_F(WindowLog, a_second_panel_is_an_error_and_the_first_one_returned) {
    log.expect_error("GMainWindow::gen_log_panel, already called");
    EXPECT_EQ(window.gen_log_panel(window.panMain), panel);
}

TEST_F(WindowLog, a_panel_and_a_splitter_can_hold_the_log_and_nothing_else) {
    log.expect_error("GMainWindow::gen_log_panel, parent must be GPanel | GPanelLogView");
    log.expect_error("GMainWindow::gen_log_panel, parent must be GPanel | GPanelLogView");
    ProbeWindow other;
    other.withLog = false;
    other.setup();
    QWidget plain;
    EXPECT_EQ(other.gen_log_panel(&plain), nullptr);
    EXPECT_EQ(other.gen_log_panel(nullptr), nullptr);
    auto* splitter = other.panMain->gen<GSplitter>(Qt::Vertical);
    EXPECT_EQ(other.gen_log_panel(splitter)->parentWidget(), splitter);
}

TEST_F(WindowLog, a_moved_divider_is_a_change_of_settings) {
    Lines fired;
    GSplitter splitter;
    splitter.gen<QLabel>(QStringLiteral("a"));
    splitter.gen<QLabel>(QStringLiteral("b"));
    splitter.divider_listener += [&fired](const DividerEvent& event) {
        fired.push_back("divider at " + std::to_string(event.pos));
    };
    gApp->settings_changed_listener.set("test", [&fired] { fired.push_back("settings"); });
    Q_EMIT splitter.splitterMoved(120, 1);
    gApp->settings_changed_listener.set("test", {});
    EXPECT_EQ(fired, (Lines{"divider at 120", "settings"}));
}

TEST_F(WindowLog, a_damaged_configuration_leaves_a_log_that_can_be_read) {
    for (const unsigned size : {0U, 5U, 29U, 1000U, 2'000'000'000U}) {
        LogConfig damaged;
        damaged.fontSize = size;
        damaged.logLevel = 77;
        damaged.logControl.set_bit(ze::log::ENABLED, true);
        window.settingsNode.set_pod(QStringLiteral("log"), damaged);
        ProbeWindow again;
        again.settingsNode = window.settingsNode;
        again.ini_standards();
        again.show();
        ze::pp("a line");
        EXPECT_EQ(again.get_panel_log_view()->get_font_size(), 10) << size;
        EXPECT_EQ(again.get_panel_log_view()->get_view()->font().pointSize(), 10) << size;
    }
}

TEST_F(WindowLog, the_stored_configuration_comes_back) {
    panel->config.fontSize = 14;
    panel->config.autoScrollHorz = true;
    panel->config.logLevel = ze::log::WARN;
    panel->set_enabled(true);
    window.sync_win_settings(true);
    ProbeWindow again;
    again.settingsNode = window.settingsNode;
    again.ini_standards();
    const GPanelLogView* other = again.get_panel_log_view();
    EXPECT_EQ(other->config.to_string(), panel->config.to_string());
    EXPECT_EQ(other->get_view()->font().pointSize(), 14);
    EXPECT_TRUE(other->is_auto_scroll_left());
    EXPECT_TRUE(other->is_enabled());
}

TEST_F(WindowLog, syncing_without_the_log_leaves_its_key_alone) {
    window.sync_win_settings(false);
    EXPECT_FALSE(window.settingsNode.contains(QStringLiteral("log")));
}

TEST_F(WindowLog, the_toggle_shows_stores_and_tells) {
    std::vector<bool> told;
    window.log_toggle_listener += [&told](const bool& on) {
        told.push_back(on);
    };
    window.show();
    EXPECT_FALSE(window.is_logger_visible());
    log.clear();
    window.on_logger();
    EXPECT_EQ(log.lines().front(), "GMainWindow::on_logger, toggle panLog");
    EXPECT_TRUE(window.is_logger_visible());
    EXPECT_TRUE(window.panMain->is_logger_visible());
    EXPECT_TRUE(stored().is_enabled());
    window.on_logger();
    EXPECT_FALSE(window.is_logger_visible());
    EXPECT_FALSE(stored().is_enabled());
    EXPECT_EQ(told, (std::vector<bool>{true, false}));
}

TEST_F(WindowLog, a_log_that_went_with_its_panel_is_not_used_any_more) {
    log.expect_error("GMainWindow::gen_main_panel, already called!");
    panel->set_enabled(true);
    window.on_log_options();
    auto* dialog = test::child_of<GDialogOption>(window);
    window.gen_main_panel(GLAYOUT::VERTICAL);
    EXPECT_TRUE(test::wait_for([this] { return window.get_panel_log_view() == nullptr; }));
    log.clear();
    window.on_logger();
    window.sync_win_settings(true);
    dialog->font_size_changed.fire_event(12);
    dialog->auto_scroll_changed.fire_event(true);
    EXPECT_FALSE(window.is_logPanel_enabled());
    EXPECT_EQ(log.lines(),
              (Lines{"GMainWindow::on_logger, panLogger == nullptr",
                     "GMainWindow::sync_win_settings", "GMainWindow::on_options, fontSize:12",
                     "pan log ?", "GMainWindow::on_options, flagAutoHScroll:true"}));
}

TEST_F(WindowLog, a_dialog_whose_log_went_closes_on_ok) {
    log.expect_error("GMainWindow::gen_main_panel, already called!");
    panel->set_enabled(true);
    window.on_log_options();
    const QPointer<GDialogOption> dialog = test::child_of<GDialogOption>(window);
    window.gen_main_panel(GLAYOUT::VERTICAL);
    ASSERT_TRUE(test::wait_for([this] { return window.get_panel_log_view() == nullptr; }));
    log.clear();
    by_text<QPushButton>(dialog, "OK")->click();
    EXPECT_EQ(log.lines_with_level(),
              (Lines{"DEB GDialogOption, OK", "DEB WHAT, panLog == nullptr ?"}));
    EXPECT_TRUE(test::wait_for([&dialog] { return dialog == nullptr; }));
}

// --- the buttons ---------------------------------------------------------------------------------

TEST_F(WindowLog, the_text_buttons_work_the_log) {
    window.log_panel_control(window.panMain, QStringLiteral("log"));
    const GPanel* row = window.find_widget<GPanel>(QStringLiteral("panOptionLog"));
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->get_margins(), QMargins());
    EXPECT_EQ(by_text<QPushButton>(row, "log")->toolTip(),
              QStringLiteral("Options (Logging,Themes,...)"));
    panel->set_enabled(true);
    by_text<QPushButton>(row, "clear")->click();
    ze::pp_info("a line");
    by_text<QPushButton>(row, "copy")->click();
    EXPECT_TRUE(QApplication::clipboard()->text().endsWith(QStringLiteral("a line")));
    log.clear();
    by_text<QPushButton>(row, "-")->click();
    ASSERT_EQ(log.lines().size(), 1U);
    EXPECT_TRUE(log.lines_with_level()[0].starts_with("INF === ["));
    by_text<QPushButton>(row, "clear")->click();
    EXPECT_EQ(panel->get_view()->toPlainText(), QString());
}

TEST_F(WindowLog, the_icon_buttons_have_tips_and_names) {
    window.log_panel_control_icons(window.panMain, QStringLiteral("^icons/wheel.svg"),
                                   QStringLiteral("Options"));
    QStringList tips;
    QStringList icons;
    for (const auto* button :
         window.find_widget<GPanel>(QStringLiteral("panOptionLog"))->findChildren<QPushButton*>()) {
        tips.append(button->toolTip());
        icons.append(button->property("sIcon").toString().section(u'/', -1));
        EXPECT_FALSE(button->icon().isNull()) << button->toolTip().toStdString();
        EXPECT_EQ(button->accessibleName(), button->toolTip());
        EXPECT_NE(button->focusPolicy() & Qt::TabFocus, 0);
    }
    EXPECT_EQ(tips, (QStringList{QStringLiteral("Options"), QStringLiteral("Clears Log Panel"),
                                 QStringLiteral("copy to clipboard"),
                                 QStringLiteral("Creates a Debug Line")}));
    EXPECT_EQ(icons, (QStringList{QStringLiteral("wheel.svg"), QStringLiteral("delete.svg"),
                                  QStringLiteral("copy.svg"), QStringLiteral("minus1.svg")}));
}

TEST_F(WindowLog, every_control_can_be_reached_by_tab) {
    window.log_panel_control_icons(window.panMain, QStringLiteral("^icons/wheel.svg"),
                                   QStringLiteral("Options"));
    window.on_logger();
    ASSERT_TRUE(window.show_active());
    std::set<const QWidget*> reached;
    for (int i = 0; i < 20; ++i) {
        QTest::keyClick(window.focusWidget() == nullptr ? &window : window.focusWidget(),
                        Qt::Key_Tab);
        reached.insert(window.focusWidget());
    }
    std::set<const QWidget*> controls = {panel->get_view()};
    for (const auto* button : window.findChildren<QPushButton*>()) {
        controls.insert(button);
    }
    EXPECT_EQ(reached, controls);
}

TEST_F(WindowLog, the_log_s_own_buttons_show_only_with_the_log) {
    window.log_panel_control(window.panMain, QStringLiteral("log"));
    const GPanel* row = window.find_widget<GPanel>(QStringLiteral("panOptionLog"));
    const auto hidden = [row] {
        QStringList texts;
        for (const auto* button : row->findChildren<QPushButton*>()) {
            if (button->isHidden()) {
                texts.append(button->text());
            }
        }
        return texts;
    };
    const QStringList own = {QStringLiteral("clear"), QStringLiteral("copy"), QStringLiteral("-")};
    EXPECT_EQ(hidden(), own);
    window.on_logger();
    EXPECT_EQ(hidden(), QStringList());
    window.on_logger();
    EXPECT_EQ(hidden(), own);
}

TEST_F(WindowLog, a_row_made_while_the_log_shows_shows_all_its_buttons) {
    panel->set_enabled(true);
    window.log_panel_control(window.panMain, QStringLiteral("log"));
    for (const auto* button :
         window.find_widget<GPanel>(QStringLiteral("panOptionLog"))->findChildren<QPushButton*>()) {
        EXPECT_FALSE(button->isHidden()) << button->text().toStdString();
    }
}

TEST_F(WindowLog, a_row_of_buttons_may_die_before_its_window) {
    GPanel* box = window.panMain->gen_pan_horz(0);
    window.log_panel_control(box, QStringLiteral("log"));
    delete box;
    window.on_logger();
    EXPECT_TRUE(window.is_logPanel_enabled());
}

// --- the menu ------------------------------------------------------------------------------------

/// The entries of a menu: text, mark and state, such as "Logging [ ]".
Lines entries(const QMenu* menu) {
    Lines found;
    for (const QAction* action : menu->actions()) {
        std::string entry = action->isSeparator() ? "---" : action->text().toStdString();
        if (action->isCheckable()) {
            entry += action->isChecked() ? " [x]" : " [ ]";
        }
        found.push_back(entry + (action->isEnabled() ? "" : " off"));
    }
    return found;
}

QAction* entry_of(const QMenu* menu, const char* text) {
    for (QAction* action : menu->actions()) {
        if (action->text() == QLatin1String(text)) {
            return action;
        }
    }
    return nullptr;
}

TEST_F(WindowLog, the_menu_shows_the_state) {
    window.show();
    log.clear();
    window.on_menu_options();
    auto* menu = test::child_of<GMenu>(window);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(entries(menu), (Lines{"Logging [ ]", "Options off", "---", "Theme"}));
    EXPECT_EQ(entries(entry_of(menu, "Theme")->menu()),
              (Lines{"Normal [x]", "Dark [ ]", "Green [ ]"}));
    EXPECT_EQ(log.lines_with_level().front(),
              "DEB GMainWindow::on_menu_options, flagGui:false, cfg: (" +
                  panel->config.to_string() + ")");
    menu->close();
}

TEST_F(WindowLog, the_menu_turns_the_log_on) {
    std::vector<bool> told;
    window.log_toggle_listener += [&told](const bool& on) {
        told.push_back(on);
    };
    int changes = 0;
    gApp->settings_changed_listener.set("test", [&changes] { ++changes; });
    window.show();
    window.on_menu_options();
    log.clear();
    entry_of(test::child_of<GMenu>(window), "Logging")->trigger();
    const Lines lines = log.lines_with_level();
    EXPECT_NE(std::find(lines.begin(), lines.end(), "DEB GMainWindow::on_menu_log, flag:true"),
              lines.end());
    EXPECT_TRUE(window.is_logPanel_enabled());
    EXPECT_TRUE(stored().is_enabled());
    EXPECT_EQ(told, std::vector<bool>{true});
    EXPECT_EQ(changes, 0);
    test::turn_event_loop();
    EXPECT_EQ(changes, 1);
    gApp->settings_changed_listener.set("test", {});
}

TEST_F(WindowLog, the_menu_opens_the_dialog_of_a_log_that_is_on) {
    panel->set_enabled(true);
    window.show();
    window.on_menu_options();
    auto* menu = test::child_of<GMenu>(window);
    EXPECT_EQ(entries(menu), (Lines{"Logging [x]", "Options", "---", "Theme"}));
    entry_of(menu, "Options")->trigger();
    EXPECT_NE(test::child_of<GDialogOption>(window), nullptr);
    menu->close();
}

TEST_F(WindowLog, the_menu_has_the_colours_of_its_window) {
    window.set_theme(1, 0);
    window.show();
    window.on_menu_options();
    auto* menu = test::child_of<GMenu>(window);
    auto* themes = entry_of(menu, "Theme")->menu();
    themes->popup(QPoint());
    const QColor dark = window.palette().color(QPalette::Window);
    EXPECT_EQ(menu->palette().color(QPalette::Window), dark);
    EXPECT_EQ(themes->palette().color(QPalette::Window), dark);
    themes->close();
    menu->close();
}

TEST_F(WindowLog, the_menu_sets_the_theme) {
    window.show();
    window.on_menu_options();
    const QPointer<GMenu> menu = test::child_of<GMenu>(window);
    entry_of(entry_of(menu, "Theme")->menu(), "Green")->trigger();
    EXPECT_TRUE(window.is_theme_green());
    menu->close();
    EXPECT_TRUE(test::wait_for([&menu] { return menu == nullptr; }));
}

// --- the dialog ----------------------------------------------------------------------------------

class LogDialog : public WindowLog {
protected:
    LogDialog() {
        panel->set_enabled(true);
        window.show();
        log.clear();
        window.on_log_options();
        dialog = window.findChild<QDialog*>();
    }

    [[nodiscard]] QComboBox* box(const char* name) const {
        for (auto* candidate : dialog->findChildren<QComboBox*>()) {
            if (candidate->accessibleName() == QLatin1String(name)) {
                return candidate;
            }
        }
        return nullptr;
    }

    void change_everything() const {
        box("Log Level")->setCurrentText(QStringLiteral("WARN"));
        box("Font Size")->setCurrentText(QStringLiteral("15"));
        for (auto* check : dialog->findChildren<QCheckBox*>()) {
            check->setChecked(!check->isChecked());
        }
    }

    QPointer<QDialog> dialog;
};

/// What a widget of the dialog shows; a box its entries and the current one. Empty for a spacer.
std::string shown_by(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        const bool isLine = label->styleSheet().contains(QStringLiteral("1px solid #000000"));
        return isLine ? "---" : label->text().toStdString();
    }
    if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
        QStringList texts;
        for (int i = 0; i < box->count(); ++i) {
            texts.append(box->itemText(i));
        }
        return (texts.join(u' ') + QStringLiteral(": ") + box->currentText()).toStdString();
    }
    if (const auto* check = qobject_cast<const QCheckBox*>(widget)) {
        return check->text().toStdString() + (check->isChecked() ? " [x]" : " [ ]");
    }
    const auto* button = qobject_cast<const QPushButton*>(widget);
    return button == nullptr ? std::string() : button->text().toStdString();
}

TEST_F(LogDialog, it_shows_the_configuration_row_by_row) {
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Log Options"));
    Lines shown;
    for (const auto* widget : dialog->findChildren<QWidget*>()) {
        if (const std::string text = shown_by(widget); !text.empty()) {
            shown.push_back(text);
        }
    }
    EXPECT_EQ(shown, (Lines{"Log Level", "ERROR WARN INFO DEBUG TRACE: DEBUG", "Font Size",
                            "8 9 10 11 12 13 14 15 16: 10", "Scroll Left Auto [ ]", "---",
                            "Columns", "number [x]", "time [x]", "abs time [x]", "log level [x]",
                            "thread [x]", "micro seconds [ ]", "---", "Cancel", "OK"}));
    EXPECT_EQ(by_text<QCheckBox>(dialog, "Scroll Left Auto")->toolTip(),
              QStringLiteral("Each new line in the logger automatically triggers horizontal "
                             "scrolling to the left."));
}

TEST_F(LogDialog, it_is_modal_and_deletes_itself) {
    EXPECT_TRUE(dialog->isModal());
    EXPECT_TRUE(dialog->testAttribute(Qt::WA_DeleteOnClose));
}

TEST_F(WindowLog, the_dialog_has_the_looks_of_its_window) {
    panel->set_enabled(true);
    window.set_theme(1, 0);
    window.set_font_size(17);
    window.on_log_options();
    const auto* dialog = test::child_of<GDialogOption>(window);
    EXPECT_EQ(dialog->palette().color(QPalette::Window), QColor(0x35, 0x35, 0x35));
    EXPECT_TRUE(dialog->autoFillBackground());
    EXPECT_EQ(dialog->font().pointSize(), 17);
}

TEST_F(LogDialog, its_choices_are_logged) {
    log.clear();
    box("Log Level")->setCurrentText(QStringLiteral("TRACE"));
    box("Font Size")->setCurrentText(QStringLiteral("8"));
    EXPECT_EQ(log.lines_with_level(),
              (Lines{"DEB sLevel:TRACE", "DEB GDialogOption....fontSize:8"}));
}

TEST_F(LogDialog, a_font_size_beyond_19_is_not_taken) {
    box("Font Size")->addItems({QStringLiteral("19"), QStringLiteral("20")});
    box("Font Size")->setCurrentText(QStringLiteral("19"));
    box("Font Size")->setCurrentText(QStringLiteral("20"));
    by_text<QPushButton>(dialog, "OK")->click();
    EXPECT_EQ(panel->get_font_size(), 19);
}

TEST_F(WindowLog, each_column_of_the_dialog_has_its_bit) {
    panel->set_enabled(true);
    const std::pair<const char*, unsigned> columns[] = {{"number", 6},   {"time", 8},
                                                        {"abs time", 4}, {"log level", 7},
                                                        {"thread", 9},   {"micro seconds", 5}};
    for (const auto& [text, bit] : columns) {
        const unsigned before = panel->config.logControl.value();
        window.on_log_options();
        const QPointer<GDialogOption> dialog = test::child_of<GDialogOption>(window);
        by_text<QCheckBox>(dialog, text)->toggle();
        by_text<QPushButton>(dialog, "OK")->click();
        EXPECT_EQ(panel->config.logControl.value(), before ^ (1U << bit)) << text;
        ASSERT_TRUE(test::wait_for([&dialog = dialog] { return dialog == nullptr; }));
    }
}

TEST_F(LogDialog, cancel_leaves_the_configuration) {
    const std::string before = panel->config.to_string();
    change_everything();
    log.clear();
    by_text<QPushButton>(dialog, "Cancel")->click();
    EXPECT_EQ(log.lines_with_level().front(), "DEB GDialogOption, Cancel");
    EXPECT_EQ(panel->config.to_string(), before);
    EXPECT_EQ(panel->get_font_size(), 10);
    EXPECT_TRUE(test::wait_for([this] { return dialog == nullptr; }));
}

TEST_F(LogDialog, ok_hands_everything_over) {
    change_everything();
    log.clear();
    by_text<QPushButton>(dialog, "OK")->click();
    EXPECT_EQ(
        log.lines(),
        (Lines{"GDialogOption, OK", "GMainWindow::on_options, fontSize:15",
               "GMainWindow::on_options, YEAH", "GMainWindow::on_options, flagAutoHScroll:true",
               "GMainWindow::on_options, flagAutoHScroll:YEAH", "GMainWindow::sync_win_settings",
               "GMainWindow::sync_win_settings"}));
    EXPECT_EQ(panel->config.logLevel, static_cast<unsigned>(ze::log::WARN));
    EXPECT_EQ(panel->get_view()->font().pointSize(), 15);
    EXPECT_TRUE(panel->is_auto_scroll_left());
    EXPECT_TRUE(panel->is_enabled());
    EXPECT_EQ(stored().to_string(), panel->config.to_string());
}

TEST_F(LogDialog, after_ok_the_next_line_has_the_columns_and_the_level) {
    change_everything();
    by_text<QPushButton>(dialog, "OK")->click();
    panel->clear();
    ze::pp_info("below the level");
    ze::pp_warn("no column is left");
    EXPECT_EQ(panel->get_view()->toPlainText(), QStringLiteral("no column is left"));
}

}  // namespace
