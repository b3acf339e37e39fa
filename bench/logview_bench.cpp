// What a line in the log view costs beside a bare QPlainTextEdit that is given the same lines in
// the same formats, and what a line costs that the panel's own level drops.

#include "ze/log/LogConsole.h"
#include "ze/log/log.h"
#include "ze/qt/GLogView.h"
#include "ze/qt/GPanelLogView.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

#include <benchmark/benchmark.h>

namespace {

constexpr int LIMIT = 20000;  // lines that the view keeps
constexpr int FILL = 2000;    // lines of one filling
constexpr int DEBUG_LEVEL = 3;

const QString& line() {
    static const QString text = QStringLiteral(
        "[000042] [DEB] [00:00,01,234] [0001] a line of the usual length, pos:12.50");
    return text;
}

/// Appends as GLogView does, without what is the view's own: tables, themes, listeners.
class BareView : public QPlainTextEdit {
public:
    BareView() {
        setLineWrapMode(NoWrap);
        setReadOnly(true);
        document()->setUndoRedoEnabled(false);
        setMaximumBlockCount(LIMIT);
    }

    void append_line(const QString& text, int) {
        QTextCharFormat textFormat;
        textFormat.setForeground(QColor(Qt::black));
        QTextBlockFormat lineFormat;
        lineFormat.setBackground(QColor(Qt::lightGray));
        QTextCursor cursor = textCursor();
        cursor.movePosition(QTextCursor::End);
        const int horizontal = horizontalScrollBar()->value();
        cursor.insertBlock(lineFormat);
        cursor.insertText(text, textFormat);
        setTextCursor(cursor);
        horizontalScrollBar()->setValue(horizontal);
    }
};

template <typename View>
void fill(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto view = std::make_unique<View>();
        view->resize(600, 300);
        view->show();
        state.ResumeTiming();
        for (int i = 0; i < FILL; ++i) {
            view->append_line(line(), DEBUG_LEVEL);
        }
        state.PauseTiming();
        view.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * FILL);
}

/// A view that is full: each line pushes the oldest one out.
template <typename View>
void at_the_limit(benchmark::State& state) {
    static View& view = *[] {
        auto* full = new View;  // kept: filling it anew for each run would take longer than the run
        full->resize(600, 300);
        full->show();
        for (int i = 0; i < LIMIT; ++i) {
            full->append_line(line(), DEBUG_LEVEL);
        }
        return full;
    }();
    for (auto _ : state) {
        view.append_line(line(), DEBUG_LEVEL);
    }
}

void line_filtered_by_the_panel(benchmark::State& state) {
    static auto* panel = new ze::qt::GPanelLogView;  // goes with the application object
    panel->config.logLevel = ze::log::WARN;
    for (auto _ : state) {
        panel->log_string(1, ze::log::DEBUG, "a line");
    }
}

BENCHMARK(fill<ze::qt::GLogView>)->Name("log_view_fill/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(fill<BareView>)->Name("log_view_fill/peer")->Unit(benchmark::kMillisecond);
BENCHMARK(at_the_limit<ze::qt::GLogView>)->Name("log_view_limit/ours");
BENCHMARK(at_the_limit<BareView>)->Name("log_view_limit/peer");
BENCHMARK(line_filtered_by_the_panel);

}  // namespace
