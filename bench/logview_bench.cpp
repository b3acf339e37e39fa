// What a line in the log view costs beside a bare QPlainTextEdit that is given the same lines in
// the same formats, what a line costs that the panel's own level drops, and whether the memory of a
// full view grows.

#include "ze/log/LogConsole.h"
#include "ze/log/log.h"
#include "ze/qt/GLogView.h"
#include "ze/qt/GPanelLogView.h"

#include "resident_memory.h"

#include <QCoreApplication>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

#include <algorithm>

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

constexpr int LIMIT = 20000;         // lines that the view keeps
constexpr int FILL = 2000;           // lines of one filling
constexpr int SETTLING = 2 * LIMIT;  // lines that push out lines until Qt has cleared away some
constexpr int MORE = 100000;         // lines that come after them
constexpr int TURN = 1000;           // lines between two turns of the event loop
constexpr int DEBUG_LEVEL = 3;
constexpr double FILTERED_SECONDS = 20e-9;  // that a line may take which is not shown

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

void line_filtered_allowed(benchmark::State& state) {
    for (auto _ : state) {
        state.SetIterationTime(FILTERED_SECONDS);
    }
}

/// The highest resident memory in KiB on the way: Qt clears away what went only now and then.
long append(ze::qt::GLogView& view, int lines) {
    long highest = 0;
    for (int i = 0; i < lines; ++i) {
        view.append_line(line(), DEBUG_LEVEL);
        if (i % TURN == 0) {
            QCoreApplication::processEvents();
            highest = std::max(highest, resident_kib());
        }
    }
    return highest;
}

/// Of a view that has just reached its limit, and of the same one long after.
struct Memory {
    long settling = 0;
    long later = 0;
};

const Memory& memory() {
    static const Memory measured = [] {
        malloc_trim(0);  // what others have freed is no room for this view
        ze::qt::GLogView view;
        view.resize(600, 300);
        view.show();
        append(view, LIMIT);
        const long settling = append(view, SETTLING);
        return Memory{settling, append(view, MORE)};
    }();
    return measured;
}

void view_memory(benchmark::State& state, long Memory::*when) {
    for (auto _ : state) {
        set_memory(state, static_cast<double>(memory().*when));
    }
}

BENCHMARK(fill<ze::qt::GLogView>)->Name("log_view_fill/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(fill<BareView>)->Name("log_view_fill/peer")->Unit(benchmark::kMillisecond);
BENCHMARK(at_the_limit<ze::qt::GLogView>)->Name("log_view_limit/ours");
BENCHMARK(at_the_limit<BareView>)->Name("log_view_limit/peer");
BENCHMARK(line_filtered_by_the_panel)->Name("log_view_filtered/ours");
BENCHMARK(line_filtered_allowed)->Name("log_view_filtered/peer")->UseManualTime();
BENCHMARK_CAPTURE(view_memory, ours, &Memory::later)->Name("log_view_memory/ours")->UseManualTime();
BENCHMARK_CAPTURE(view_memory, peer, &Memory::settling)
    ->Name("log_view_memory/peer")
    ->UseManualTime();

}  // namespace
