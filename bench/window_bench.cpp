// The processor time of a rally in the game's own window of 800 by 600 pixels, beside a bare widget
// that paints the same field at the same rate; and that of a window in which nobody plays. One
// iteration of a rally is a number of painted frames; the time is that of the process, all threads.

#include "ze/log/LogConsole.h"
#include "ze/log/log.h"
#include "ze/qt/GApp.h"
#include "ze/qt/resources.h"

#include "bare_picture.h"
#include "vork2d/v5/PlayField.h"
#include "vork2d/v5/Window.h"

#include <QEvent>
#include <QEventLoop>
#include <QMainWindow>
#include <QPainter>
#include <QTemporaryDir>
#include <QTimer>

#include <ctime>

#include <benchmark/benchmark.h>

namespace {

constexpr int FRAMES = 60;
constexpr int FRAME_MS = 16;
constexpr int IDLE_MS = 1000;
constexpr double IDLE_SHARE = 0.01;  // of a core

/// Counts the pictures that a widget is asked for, and runs the event loop until there are enough.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* /*widget*/, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    void wait_for(int frames) {
        const int end = count + frames;
        while (count < end) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    int count = 0;
};

/// The game, not connected, with the picture of a rally that needs no player: from the middle of a
/// paddle the ball flies by a wall to the middle of the other paddle.
class GameWindow : public vork2d::v5::Window {
public:
    GameWindow() {
        resize(800, 600);
        post_after_ini(QStringLiteral("g:Ann"), QString(), QString(), false);
        setup();
        playField->flagSound = false;
        flagSeeOfflineHintAgain = false;
        show();
    }
};

/// A window with a widget where the game has its field.
class BareWindow : public QMainWindow {
    class Field : public QWidget {
    public:
        using QWidget::QWidget;

    protected:
        void paintEvent(QPaintEvent* /*event*/) override {
            QPainter painter(this);
            bare_picture(painter, size(), {x++ % 700 - 350.0, 0});
        }

    private:
        int x = 0;
    };

public:
    explicit BareWindow(const QRect& place) {
        resize(800, 600);
        field = new Field(this);
        field->setGeometry(place);
        QObject::connect(&timer, &QTimer::timeout, field, [this] { field->update(); });
        timer.start(FRAME_MS);
        show();
    }

    QWidget* field;

private:
    QTimer timer;
};

void measure_frames(benchmark::State& state, QWidget& field) {
    PaintCounter paints(field);
    paints.wait_for(FRAMES / 2);  // shown, and its fonts loaded
    for (auto _ : state) {
        paints.wait_for(FRAMES);
    }
}

void rally(benchmark::State& state) {
    GameWindow window;
    window.on_start_stop();
    measure_frames(state, *window.playField);
}

void rally_bare(benchmark::State& state) {
    QRect place;
    {
        GameWindow window;
        PaintCounter(*window.playField).wait_for(1);
        place = {window.playField->mapTo(&window, QPoint()), window.playField->size()};
    }
    BareWindow window(place);
    measure_frames(state, *window.field);
}

void run_for(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void idle(benchmark::State& state) {
    GameWindow window;
    run_for(IDLE_MS);  // shown, and everything that starts has started
    for (auto _ : state) {
        run_for(IDLE_MS);
    }
}

double cpu_seconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

/// As much processor time as a window may take in which nothing happens.
void idle_allowed(benchmark::State& state) {
    for (auto _ : state) {
        const double end = cpu_seconds() + IDLE_MS / 1000.0 * IDLE_SHARE;
        while (cpu_seconds() < end) {
        }
    }
}

BENCHMARK(rally)->Name("rally_window/ours")->MeasureProcessCPUTime()->Iterations(1);
BENCHMARK(rally_bare)->Name("rally_window/peer")->MeasureProcessCPUTime()->Iterations(1);
BENCHMARK(idle)->Name("idle_window/ours")->MeasureProcessCPUTime()->Iterations(1);
BENCHMARK(idle_allowed)->Name("idle_window/peer")->MeasureProcessCPUTime()->Iterations(1);

}  // namespace

int main(int argc, char** argv) {
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    ze::qt::GApp::prepare_settings(QStringLiteral("vork2d.example"), 0, false,
                                   QStringLiteral("bench"));
    const ze::qt::GApp app(argc, argv, nullptr);
    ze::log::remove_log_appender(&ze::log::consoleLogger);
    ze::qt::set_res_prefix(QStringLiteral(":/wb/shared-res"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
