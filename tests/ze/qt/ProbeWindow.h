// A main window for tests: one panel with a log panel below it, and its settings open to the test.
#pragma once

#include "ze/qt/GMainPanel.h"
#include "ze/qt/GMainWindow.h"
#include "ze/tools/GSettings.h"

#include "support/QtPrinters.h"

#include <QApplication>
#include <QTest>

#include <functional>

namespace test {

constexpr int WAIT_MS = 10000;  // the limit of a wait, not its length

/// Runs the event loop until the condition holds.
template <typename Condition>
[[nodiscard]] bool wait_for(Condition condition) {
    return QTest::qWaitFor(condition, WAIT_MS);
}

/// Runs what was posted so far.
inline void turn_event_loop() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

class ProbeWindow : public ze::qt::GMainWindow {
public:
    using GMainWindow::dragEnterEvent;
    using GMainWindow::dropEvent;
    using GMainWindow::settingsNode;

    ProbeWindow() = default;

    void setup() override {
        setup_node<ze::qt::WindowClazz<"Probe">>();
        ini_standards();
    }

    void ini() override {
        panMain = gen_main_panel(ze::qt::GLAYOUT::VERTICAL);
        if (withLog) {
            gen_log_panel(panMain);
        }
        if (build) {
            build(panMain);
        }
    }

    /// Shows the window and waits until keys reach it.
    [[nodiscard]] bool show_active() {
        show();
        activateWindow();
        return wait_for([this] { return QApplication::activeWindow() == this; });
    }

    ze::qt::GPanel* panMain = nullptr;
    bool withLog = true;
    std::function<void(ze::qt::GPanel*)> build;  ///< adds to the main panel; may be empty
};

/// Forgets what earlier tests stored.
inline void clear_settings() {
    ze::qt::GSettings::instance().clear();
}

}  // namespace test
