// The window or the field of an earlier generation offscreen, with its frame timer stopped, so that
// only the test moves the ball. An error line that the test did not announce fails it.
#pragma once

#include "ze/qt/components/GButton.h"
#include "ze/tools/format.h"

#include "support/LogCapture.h"

#include <QApplication>
#include <QSpinBox>

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace test {

using Lines = std::vector<std::string>;

/// Rows of a report that depend on the clock or on what was painted.
inline bool is_of_the_clock(const std::string& line) {
    return line.starts_with("    elapsed time:") || line.starts_with("    frames:") ||
           line.starts_with("    FPS:");
}

inline Lines without_the_clock(Lines lines) {
    std::erase_if(lines, is_of_the_clock);
    return lines;
}

/// The lines from the last one that begins so.
inline Lines lines_from(const Lines& lines, const std::string& prefix) {
    const auto found =
        std::find_if(lines.rbegin(), lines.rend(),
                     [&prefix](const std::string& line) { return line.starts_with(prefix); });
    return found == lines.rend() ? Lines() : Lines(found.base() - 1, lines.end());
}

/// How many lines begin so.
inline long count_lines(const Lines& lines, const std::string& prefix) {
    return std::count_if(lines.begin(), lines.end(),
                         [&prefix](const std::string& line) { return line.starts_with(prefix); });
}

template <typename Window>
class GenerationWindow : public testing::Test {
protected:
    GenerationWindow() {
        log.ignore("Listener::~Listener@");
        window.resize(800, 600);
        window.setup();
        window.show();
        window.playField->timer.stop();
        QCoreApplication::processEvents();
        log.clear();
    }

    void press(const char* button) {
        auto* const found = window.template find_widget<ze::qt::GButton>(QLatin1String(button));
        ASSERT_NE(found, nullptr) << button;
        found->click();
    }

    [[nodiscard]] QSpinBox* spin(const char* label) const {
        return window.template find_widget<QSpinBox>(QLatin1String(label));
    }

    /// The texts of the buttons below the log panel, from left to right.
    [[nodiscard]] Lines buttons() const {
        Lines texts;
        for (const QObject* const child :
             window.template find_widget<QSpinBox>(QString())->parentWidget()->children()) {
            if (const auto* const button = dynamic_cast<const ze::qt::GButton*>(child)) {
                texts.push_back(button->text().toStdString());
            }
        }
        return texts;
    }

    /// Frames of 16 ms until the wish is fulfilled; false when a minute of play was not enough.
    template <typename Wish>
    [[nodiscard]] bool fly_until(Wish wish) {
        for (int frame = 0; frame < 60'000 / 16; ++frame) {
            if (wish()) {
                return true;
            }
            window.playField->next_frame(0.016f);
        }
        return false;
    }

    LogCapture log;
    Window window;
};

}  // namespace test
