// A main window's start, its stored settings, and its end.
#include "ze/log/pp.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/qt/resources.h"
#include "ze/qt/themes.h"
#include "ze/tools/GSettings.h"
#include "ze/tools/convert.h"
#include "ze/tools/os.h"

#include <QCloseEvent>
#include <QFont>
#include <QScreen>

#include <algorithm>

namespace ze::qt {

namespace {

const QString KEY_BOUNDS = QStringLiteral("__bounds");  // on the command line
const QString KEY_GEOMETRY = QStringLiteral("geometry");
const QString KEY_STATE = QStringLiteral("state");
const QString KEY_POINT_SIZE = QStringLiteral("pointSize");

constexpr int STORED_POINT_SIZE_MIN = 6;
constexpr int STORED_POINT_SIZE_MAX = 28;

// A window is taken by its title bar, the top of its frame.
constexpr int TITLE_HEIGHT = 30;    // pixels
constexpr QSize REACHABLE(60, 15);  // pixels of it that must lie on a screen

}  // namespace

void GMainWindow::take_identity(std::unique_ptr<BaseWindowClazz> made) {
    identity = std::move(made);
    settingsNode = GSettings::instance().get_window_node(get_object_name());
}

void GMainWindow::setup() {
    setup_node<WindowClazz<"CMainWindow">>();
    ini_standards();
}

void GMainWindow::ini_standards() {
    if (has_res_prefix()) {
        // Qt forgets all fonts that it has loaded when one is added: before the first is used it
        // forgets none.
        (void)themes::get_mono_font();
    }
    ini();
    restore_state();
    adapt_icons_to_theme();
    adapt_log_view();
    adapt_themes();
    setup_base_hotkeys();
    post([this] { post_ini(); });
}

void GMainWindow::post_ini() {
    if (post_ini_hook) {
        post_ini_hook();
    }
}

void GMainWindow::restore_state() {
    restore_theme();
    if (ze::os::is_desktop()) {
        restore_geometry();
    }
    restore_font();
}

void GMainWindow::restore_geometry() {
    const auto geometryStored = settingsNode.get<QByteArray>(KEY_GEOMETRY, {});
    if (!geometryStored.isEmpty() && screen() != nullptr) {
        restoreGeometry(geometryStored);
        keep_reachable();
    }
    const auto state = settingsNode.get<QByteArray>(KEY_STATE, {});
    if (!state.isEmpty()) {
        restoreState(state);
    }
}

void GMainWindow::restore_font() {
    QFont changed = font();
    const int size = settingsNode.get<int>(KEY_POINT_SIZE, changed.pointSize());
    if (size < STORED_POINT_SIZE_MIN || size > STORED_POINT_SIZE_MAX ||
        size == changed.pointSize()) {
        return;
    }
    changed.setPointSize(size);
    setFont(changed);
}

void GMainWindow::keep_reachable() {
    // The layout would make a smaller window this large later, when its place has been judged.
    resize(size().expandedTo(minimumSizeHint()));
    const QRect frame = frameGeometry();
    const QRect title(frame.topLeft(), QSize(frame.width(), TITLE_HEIGHT));
    const QSize needed = title.size().boundedTo(REACHABLE);
    const QList<QScreen*> screens = QGuiApplication::screens();
    const bool reachable =
        std::any_of(screens.begin(), screens.end(), [&title, needed](const QScreen* candidate) {
            const QSize shown = candidate->availableGeometry().intersected(title).size();
            return shown.width() >= needed.width() && shown.height() >= needed.height();
        });
    if (reachable || screens.isEmpty()) {
        return;
    }
    const QScreen* const under = QGuiApplication::screenAt(frame.center());
    const QScreen* const own = under == nullptr ? screens.first() : under;
    move(get_place_inside(own->availableGeometry(), frame));
}

void GMainWindow::save_state() {
    ze::pp("GMainWindow::save_state");
    if (screen() != nullptr) {  // Qt crashes in both where there is none
        settingsNode.set(KEY_GEOMETRY, saveGeometry());
    }
    settingsNode.set(KEY_STATE, saveState());
    settingsNode.set(KEY_POINT_SIZE, font().pointSize());
    sync_win_settings(false);
}

void GMainWindow::sync_win_settings(bool withLog) {
    ze::pp("GMainWindow::sync_win_settings");
    if (withLog) {
        store_log_config();
    }
    GSettings::instance().set_window_node(settingsNode, get_object_name());
}

void GMainWindow::show() {
    QWidget::show();
    if (!GApp::argv.contains(KEY_BOUNDS)) {
        return;
    }
    const QRect bounds =
        convert::QRect_from_string(GApp::argv.get<QString>(KEY_BOUNDS, {}), geometry());
    ze::pp("__bounds, r:$", bounds);
    setGeometry(bounds);
    keep_reachable();
}

void GMainWindow::closeEvent(QCloseEvent* event) {
    ze::pp("GMainWindow::closeEvent");
    if (close_hook) {
        close_hook();
    }
    event->accept();
    cleanup();
    save_state();
    sync_win_settings(false);
    close_listener.fire_event({});
}

void GMainWindow::cleanup() {
    for (QWidget* widget : get_all_widgets()) {
        if (auto* panel = dynamic_cast<GPanelLogView*>(widget)) {
            panel->remove_appender();
        }
    }
}

}  // namespace ze::qt
