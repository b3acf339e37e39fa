// The keys of the game, beside those that every main window has.

#include "ze/log/pp.h"
#include "ze/qt/components/GAction.h"
#include "ze/qt/guitools/GGui.h"

#include "Window.h"

#include <QKeyEvent>

namespace vork2d::v5 {

void Window::setup_base_hotkeys() {
    GMainWindow::setup_base_hotkeys();

    bind_key(QStringLiteral("Up"), [this] { on_arrow("Up", Qt::Key_Up, Qt::NoModifier); });
    bind_key(QStringLiteral("Ctrl+Up"),
             [this] { on_arrow("Ctrl+Up", Qt::Key_Up, Qt::ControlModifier); });
    bind_key(QStringLiteral("Down"), [this] { on_arrow("Down", Qt::Key_Down, Qt::NoModifier); });
    bind_key(QStringLiteral("Ctrl+Down"),
             [this] { on_arrow("Ctrl+Down", Qt::Key_Down, Qt::ControlModifier); });
    bind_key(QStringLiteral("Space"), [this] {
        ze::pp("Space");
        on_start_stop();
    });
    bind_key(QStringLiteral("Escape"), [this] {
        ze::pp("Escape");
        on_exit_fullscreen_mode();
    });
    bind_key(QStringLiteral("F11"), [this] {
        ze::pp("F11");
        ze::qt::toggle_full_screen(this, false);
    });

    // From slow to fast: milliseconds for the field's width.
    bind_travel_time(QStringLiteral("Ctrl+1"), 10000);
    bind_travel_time(QStringLiteral("Ctrl+2"), 5000);
    bind_travel_time(QStringLiteral("Ctrl+3"), 3000);
    bind_travel_time(QStringLiteral("Ctrl+4"), 2000);
    bind_travel_time(QStringLiteral("Ctrl+5"), 1600);
    bind_travel_time(QStringLiteral("Ctrl+6"), 1000);
    bind_travel_time(QStringLiteral("Ctrl+7"), 700);
    bind_travel_time(QStringLiteral("Ctrl+8"), 500);
    bind_travel_time(QStringLiteral("Ctrl+9"), 200);
    bind_travel_time(QStringLiteral("Ctrl+0"), 100);
}

void Window::bind_key(const QString& keys, const std::function<void()>& handler) {
    gen_action(keys)->triggered_signal += handler;
}

void Window::bind_travel_time(const QString& keys, int ms) {
    bind_key(keys, [this, ms] { set_travel_time(ms); });
}

void Window::on_arrow(const char* name, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    // With Ctrl an arrow steers the second paddle, and that one belongs to the opponent while
    // connected.
    if (modifiers.testFlag(Qt::ControlModifier) && is_connected()) {
        return;
    }
    ze::pp(name);
    send_key_event(QKeyEvent(QEvent::KeyPress, key, modifiers));
}

}  // namespace vork2d::v5
