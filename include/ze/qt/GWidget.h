// A widget whose events can be watched from outside through listeners, without deriving from it.
// Mouse buttons and moves stop here; keys, focus, enter, leave and the wheel also reach QWidget's
// own handler.
#pragma once

#include "ze/tools/Listener.h"

#include <QWidget>

namespace ze::qt {

class GMainWindow;

class GWidget : public QWidget {
public:
    Listener<QMouseEvent*> mouse_press_listener;
    Listener<QMouseEvent*> mouse_release_listener;
    Listener<QMouseEvent*> mouse_move_listener;  ///< also without a held button
    Listener<QKeyEvent*> key_press_listener;
    Listener<QKeyEvent*> key_release_listener;
    Listener<NO_PAYLOAD> focus_in_signal;
    Listener<QFocusEvent*> focus_in_listener;
    Listener<NO_PAYLOAD> focus_out_signal;
    Listener<QFocusEvent*> focus_out_listener;
    Listener<NO_PAYLOAD> enter_signal;
    Listener<QEnterEvent*> enter_listener;
    Listener<NO_PAYLOAD> leave_signal;
    Listener<QEvent*> leave_listener;

    explicit GWidget(QWidget* parent);

    /// The main window in which this widget lies, or null.
    [[nodiscard]] GMainWindow* get_main_window() const;

    /// Logs each mouse, wheel and key event; a move only while a button is held.
    void set_show_event(bool flag) noexcept { show_events = flag; }
    [[nodiscard]] bool is_show_events() const noexcept { return show_events; }

protected:
    void mousePressEvent(QMouseEvent* ev) override;
    void mouseReleaseEvent(QMouseEvent* ev) override;
    void mouseMoveEvent(QMouseEvent* ev) override;
    void wheelEvent(QWheelEvent* ev) override;
    void keyPressEvent(QKeyEvent* ev) override;
    void keyReleaseEvent(QKeyEvent* ev) override;
    void focusInEvent(QFocusEvent* ev) override;
    void focusOutEvent(QFocusEvent* ev) override;
    void enterEvent(QEnterEvent* ev) override;
    void leaveEvent(QEvent* ev) override;
    void changeEvent(QEvent* ev) override;

    /// Called after a change of the palette, when the event loop turns next; `theTheme` is the main
    /// window's theme, 0 without a main window.
    virtual void on_change_theme(unsigned int theTheme);

private:
    void notify_theme();

    bool show_events{false};
};

}  // namespace ze::qt
