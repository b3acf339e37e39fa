// The panel of the on-screen log: a log appender that shows its lines in a GLogView. Lines may come
// from any thread.
#pragma once

#include "ze/log/LogAppender.h"
#include "ze/qt/GLogView.h"
#include "ze/qt/GPanel.h"

#include <vector>

namespace ze::qt {

class GPanelLogView : public GPanel, public log::LogAppender {
public:
    /// Takes lines as soon as it is enabled; it starts with the defaults of LogConfig, disabled.
    GPanelLogView();
    /// The same in the font of a configuration, which apply_config() brings once the panel has a
    /// parent: no other font is loaded before.
    explicit GPanelLogView(const log::LogConfig& stored);
    ~GPanelLogView() override;
    Q_DISABLE_COPY_MOVE(GPanelLogView)

    /// Takes one line, filtered by the panel's own level. A line from another thread shows when the
    /// event loop turns.
    void log_string(unsigned counter, log::LOG_LEVEL level, const char* text) override;
    /// Takes lines and shows, or neither.
    void set_enabled(bool on) override;

    /// Level and columns of the lines to come; the view stays as it is.
    void set_config(const log::LogConfig& theConfig);
    /// Takes over a whole configuration: font size, scrolling, and the enabled state.
    void apply_config(const log::LogConfig& stored);

    /// Points; a size below 1 is stored, and the font stays.
    void set_font_size(int size);
    [[nodiscard]] int get_font_size() const noexcept;
    /// Ends being a log target; the lines on their way still show.
    void remove_appender();

    void set_auto_scroll_left(bool on);
    [[nodiscard]] bool is_auto_scroll_left() const;
    /// Takes the colours of a theme.
    void adapt_to_settings(unsigned mode);
    void clear();
    void copy_to_clipboard() const;

    [[nodiscard]] GLogView* get_view() const noexcept { return view; }

private:
    explicit GPanelLogView(const QFont& font);
    void append_pending();

    GLogView* view = nullptr;
    std::vector<GLogView::Line> pending;  // of other threads; guarded by mutexWorker
};

}  // namespace ze::qt
