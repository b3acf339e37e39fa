// A game window offscreen, and a relay in the same process for the tests that need one.
#pragma once

#include "ze/log/pp.h"
#include "ze/net/GPlay.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GPanel.h"
#include "ze/qt/GSoundEffect.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GLabel.h"
#include "ze/qt/components/GLineEdit.h"
#include "ze/qt/components/GListView.h"
#include "ze/qt/dialogs/GMessageBox.h"
#include "ze/qt/resources.h"
#include "ze/tools/GSettings.h"

#include "RelayStub.h"
#include "support/LogCapture.h"
#include "vork2d/v5/DialogConnection.h"
#include "vork2d/v5/PLAY_STATE.h"
#include "vork2d/v5/PlayField.h"
#include "vork2d/v5/Window.h"
#include "vork2d/v5/game_sound.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace test {

namespace v5 = vork2d::v5;

/// A game window whose settings a test can read.
class ProbeWindow : public v5::Window {
public:
    using Window::settingsNode;
};

class WindowFixture : public testing::Test {
protected:
    WindowFixture() {
        ze::qt::set_res_prefix(QStringLiteral(":/wb/shared-res"));
        log.ignore("Listener::~Listener@");
        ze::qt::GSettings::instance().clear_config();  // what an earlier test has stored
        window.post_after_ini(QStringLiteral("g:Ann"), QStringLiteral("secret"),
                              QStringLiteral("localhost"), false);
        window.setup();
        window.show();
        window.playField->flagSound = false;
        window.flagSeeOfflineHintAgain = false;
        QCoreApplication::processEvents();
        log.clear();
    }

    ~WindowFixture() override {
        // A process that ends while Qt's thread still loads a sample leaks what the thread holds.
        if (v5::gSound != nullptr) {
            EXPECT_TRUE(
                QTest::qWaitFor([] { return v5::gSound->status() != QSoundEffect::Loading; }));
        }
        window.webSocket.abort();
        window.close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void connect() {
        window.urlDevelopment = relay.address();
        window.try_connect_via_cmd();
        ASSERT_TRUE(relay.wait_for_frames(1)) << "the login";
    }

    /// Logged in as the second of two.
    void connect_paired() {
        connect();
        relay.send_chat(QStringLiteral("welcome"), QStringLiteral("relay"), QStringLiteral("hello"),
                        QStringLiteral("g:Ann, g:Ben"));
        ASSERT_TRUE(QTest::qWaitFor([this] { return window.playField->is_state_2_players(); }));
        relay.frames.clear();
        log.clear();
    }

    [[nodiscard]] bool wait_for_line(const std::string& text) {
        return QTest::qWaitFor([this, &text] {
            const auto lines = log.lines();
            return std::find(lines.begin(), lines.end(), text) != lines.end();
        });
    }

    [[nodiscard]] bool has_line(const std::string& text) const {
        const auto lines = log.lines();
        return std::find(lines.begin(), lines.end(), text) != lines.end();
    }

    /// Whether a line with this level came, written as in "WRN text".
    [[nodiscard]] bool has_line_with_level(const std::string& line) const {
        const auto lines = log.lines_with_level();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }

    /// The names of the sounds that the field let through so far.
    [[nodiscard]] std::vector<std::string> played_sounds() const {
        const std::string before = "PlayField::play_sound ** <<<:/wb/shared-res/sounds/";
        const std::string behind = ".wav>>>";
        std::vector<std::string> names;
        for (const std::string& line : log.lines()) {
            if (line.starts_with(before)) {
                names.push_back(
                    line.substr(before.size(), line.size() - before.size() - behind.size()));
            }
        }
        return names;
    }

    /// The one message box that is open.
    [[nodiscard]] static ze::qt::GMessageBox* open_box() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* const box = dynamic_cast<ze::qt::GMessageBox*>(widget);
            if (box != nullptr && box->isVisible()) {
                return box;
            }
        }
        return nullptr;
    }

    static void answer(QMessageBox::StandardButton button) {
        ze::qt::GMessageBox* const box = open_box();
        ASSERT_NE(box, nullptr);
        QTest::mouseClick(box->button(button), Qt::LeftButton);
        QCoreApplication::processEvents();
    }

    LogCapture log;
    RelayStub relay;
    ProbeWindow window;
};

}  // namespace test
