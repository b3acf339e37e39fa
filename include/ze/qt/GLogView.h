// A read-only text view that shows one coloured line per message. It knows levels and colours, not
// the log: that is GPanelLogView.
#pragma once

#include "ze/qt/components/GPlainTextEdit.h"

#include <cstdint>
#include <span>

namespace ze::qt {

class GLogView : public GPlainTextEdit {
public:
    struct Line {
        QString text;
        int level = 0;
    };

    GLogView();

    /// Takes the colours of a theme, for the background and for the lines to come.
    void adapt_to_settings(unsigned mode);

    /// Whether each new line scrolls to the left end; otherwise the horizontal position stays.
    void set_auto_scroll_left(bool on) noexcept { auto_scroll_left = on; }
    [[nodiscard]] bool is_auto_scroll_left() const noexcept { return auto_scroll_left; }

    /// Appends one line in the colours of its level, 0 to 4; any other level is white on black. The
    /// oldest lines go when there are more than 20,000, and what is beyond 4,000 characters of one.
    void append_line(const QString& text, int level);
    /// The same for many lines, at much less than the cost of each alone.
    void append_lines(std::span<const Line> lines);

protected:
    /// Logs the event; a double click selects nothing.
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    std::uint32_t colorMode = 0;
    bool auto_scroll_left = false;
};

}  // namespace ze::qt
