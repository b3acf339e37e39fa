#include "ze/qt/GPanelLogView.h"

#include "ze/log/log.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/qt/inline/GGui_inline.h"
#include "ze/qt/themes.h"

#include <QCoreApplication>
#include <QFont>
#include <QMetaObject>
#include <QThread>

#include <mutex>

namespace ze::qt {

namespace {

constexpr int MIN_HEIGHT = 50;  // pixels

// Of a stored font size, in points, as of the one of a window: beyond them nobody could read.
constexpr unsigned STORED_FONT_SIZE_MIN = 6;
constexpr unsigned STORED_FONT_SIZE_MAX = 28;

unsigned readable_font_size(const log::LogConfig& stored) {
    const bool readable =
        stored.fontSize >= STORED_FONT_SIZE_MIN && stored.fontSize <= STORED_FONT_SIZE_MAX;
    return readable ? stored.fontSize : log::LogConfig().fontSize;
}

/// A size below 1 gives the monospace font as it is.
QFont mono_font(int pointSize) {
    QFont font = themes::get_mono_font();
    if (pointSize > 0) {
        font.setPointSize(pointSize);
    }
    return font;
}

bool is_gui_thread() {
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

}  // namespace

GPanelLogView::GPanelLogView() : GPanelLogView(themes::get_mono_font()) {}

GPanelLogView::GPanelLogView(const log::LogConfig& stored)
    : GPanelLogView(mono_font(static_cast<int>(readable_font_size(stored)))) {}

GPanelLogView::GPanelLogView(const QFont& font) : GPanel(GLAYOUT::VERTICAL) {
    setObjectName(QStringLiteral("panLog"));
    set_growable(true);
    setMinimumHeight(MIN_HEIGHT);
    set_margins(0);
    view = gen<GLogView>();
    ze::qt::set_growable(view);
    view->setFont(font);
    view->setAccessibleName(QStringLiteral("Log"));
    log::add_log_appender(this);
}

GPanelLogView::~GPanelLogView() {
    // From here on no thread is inside log_string, and what is queued goes with the view.
    remove_appender();
}

void GPanelLogView::log_string(unsigned counter, log::LOG_LEVEL level, const char* text) {
    if (config.logLevel < level || QCoreApplication::instance() == nullptr) {
        return;
    }
    QString line = log::qs_trailler(counter, level, config.logControl).trimmed();
    if (!line.isEmpty()) {
        line += u' ';
    }
    line += QString::fromUtf8(text == nullptr ? "nullptr" : text);
    if (is_gui_thread()) {
        view->append_line(line, static_cast<int>(level));
        return;
    }
    // The log is locked while it is here.
    pending.push_back({line, static_cast<int>(level)});
    if (pending.size() == 1) {
        QMetaObject::invokeMethod(
            this, [this] { append_pending(); }, Qt::QueuedConnection);
    }
}

void GPanelLogView::append_pending() {
    std::vector<GLogView::Line> lines;
    {
        const std::lock_guard lock(mutexWorker);
        lines.swap(pending);
    }
    view->append_lines(lines);
}

void GPanelLogView::set_enabled(bool on) {
    {
        const std::lock_guard lock(mutexWorker);
        LogAppender::set_enabled(on);
    }
    setVisible(on);
}

void GPanelLogView::set_config(const log::LogConfig& theConfig) {
    const std::lock_guard lock(mutexWorker);  // another thread may be inside log_string
    config = theConfig;
}

void GPanelLogView::apply_config(const log::LogConfig& stored) {
    set_config(stored);
    set_font_size(static_cast<int>(readable_font_size(stored)));
    set_auto_scroll_left(config.autoScrollHorz);
    set_enabled(config.is_enabled());
}

void GPanelLogView::set_font_size(int size) {
    config.fontSize = static_cast<std::uint32_t>(size);
    view->setFont(mono_font(size));
}

int GPanelLogView::get_font_size() const noexcept {
    return static_cast<int>(config.fontSize);
}

void GPanelLogView::remove_appender() {
    log::remove_log_appender(this);
}

void GPanelLogView::set_auto_scroll_left(bool on) {
    config.autoScrollHorz = on;
    view->set_auto_scroll_left(on);
}

bool GPanelLogView::is_auto_scroll_left() const {
    return view != nullptr && view->is_auto_scroll_left();
}

void GPanelLogView::adapt_to_settings(unsigned mode) {
    view->adapt_to_settings(mode);
}

void GPanelLogView::clear() {
    view->setPlainText(QString());
}

void GPanelLogView::copy_to_clipboard() const {
    ze::qt::copy_to_clipboard(view->document()->toPlainText());
}

}  // namespace ze::qt
