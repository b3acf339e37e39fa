// Start-up to the first painted frame and the memory of a main window with panels, a log panel and
// icons, beside a bare Qt window of the same contents. Each run is a process of its own: this
// program starts itself as one of its kinds, which prints its figures when it has painted.
//
// A start reads all settings. Those of ten times as many windows as a program has must not show,
// and with those of a hundred times as many it must cost what QSettings itself needs to read them:
// the bare window of that pair keeps its place in the same file.

#include "ze/qt/GApp.h"
#include "ze/qt/GMainPanel.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GLineEdit.h"
#include "ze/qt/resources.h"

#include "resident_memory.h"

#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <chrono>
#include <cstdio>
#include <cstring>

#include <benchmark/benchmark.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int BUTTONS = 10;

/// Prints "microseconds kibibytes" and ends the program, once the window has been painted.
class PaintWatcher : public QObject {
public:
    explicit PaintWatcher(Clock::time_point begin) : start(begin) {}

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            QMetaObject::invokeMethod(
                this, [this] { report(); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    void report() const {
        const auto taken =
            std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
        std::printf("%lld %ld\n", static_cast<long long>(taken.count()), resident_kib());
        std::fflush(stdout);
        std::_Exit(0);
    }

    Clock::time_point start;
};

class OurWindow : public ze::qt::GMainWindow {
public:
    void ini() override {
        using namespace ze::qt;
        GPanel* main = gen_main_panel(GLAYOUT::VERTICAL);
        main->gen<GLineEdit>(QStringLiteral("text"));
        gen_log_panel(main)->set_enabled(true);
        GPanel* row = main->gen_pan_horz(0);
        for (int i = 0; i < BUTTONS; ++i) {
            row->gen<GButton>(QStringLiteral("^icons/copy.svg"), QStringLiteral("tip"));
        }
    }
};

int run_ours(int argc, char** argv, Clock::time_point start) {
    ze::qt::GApp::prepare_settings(QStringLiteral("vork2d.example"), 0, false,
                                   QStringLiteral("bench"));
    ze::qt::GApp app(argc, argv, nullptr);
    ze::qt::set_res_prefix(QStringLiteral(":/wb/shared-res"));
    OurWindow window;
    window.resize(600, 400);
    window.setup();
    PaintWatcher watcher(start);
    window.get_main_panel()->installEventFilter(&watcher);
    window.show();
    return QCoreApplication::exec();
}

/// Where the bare window looks for its place as ours does.
void restore_place(QWidget& window) {
    QCoreApplication::setOrganizationName(QStringLiteral("vork2d.example"));
    QCoreApplication::setApplicationName(QStringLiteral("bench"));
    window.restoreGeometry(QSettings().value(QStringLiteral("Window/Main")).toByteArray());
}

int run_bare(int argc, char** argv, Clock::time_point start, bool keepsPlace) {
    QApplication app(argc, argv);
    QMainWindow window;
    window.resize(600, 400);
    if (keepsPlace) {
        restore_place(window);
    }
    auto* main = new QWidget;
    auto* column = new QVBoxLayout(main);
    column->addWidget(new QLineEdit(QStringLiteral("text")));
    column->addWidget(new QPlainTextEdit);
    auto* row = new QHBoxLayout;
    column->addLayout(row);
    for (int i = 0; i < BUTTONS; ++i) {
        auto* button = new QPushButton;
        button->setIcon(QIcon(QStringLiteral(":/wb/shared-res/icons/copy.svg")));
        row->addWidget(button);
    }
    window.setCentralWidget(main);
    PaintWatcher watcher(start);
    main->installEventFilter(&watcher);
    window.show();
    return QCoreApplication::exec();
}

struct Figures {
    double seconds = 0;
    double kib = 0;
};

constexpr const char* CONFIG_FOLDER = "XDG_CONFIG_HOME";

/// Writes the settings of so many other windows, 211 bytes for each.
void fill_settings(const QString& folder, int windows) {
    QDir(folder).mkpath(QStringLiteral("vork2d.example"));
    QFile file(folder + QStringLiteral("/vork2d.example/bench.conf"));
    file.open(QIODevice::WriteOnly);
    file.write("[config]\nversion=1\n\n[Window]\n");
    const QByteArray node = QByteArray(200, 'A');
    for (int i = 0; i < windows; ++i) {
        file.write("Other_" + QByteArray::number(i) + '=' + node + '\n');
    }
}

/// Starts this program as one of its kinds, with the settings of a folder.
Figures run(const char* kind, const QString& folder) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(CONFIG_FOLDER), folder);
    process.setProcessEnvironment(environment);
    process.start(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")), {QLatin1String(kind)});
    process.waitForFinished();
    const QList<QByteArray> lines = process.readAllStandardOutput().trimmed().split('\n');
    const QList<QByteArray> words = lines.last().split(' ');
    return words.size() < 2 ? Figures() : Figures{words[0].toDouble() / 1e6, words[1].toDouble()};
}

void time_startup(benchmark::State& state, const char* kind, const QString& folder) {
    for (auto _ : state) {
        const Figures figures = run(kind, folder);
        if (figures.seconds <= 0) {
            state.SkipWithError("the child printed no figures");
            return;
        }
        state.SetIterationTime(figures.seconds);
    }
}

void startup(benchmark::State& state, const char* kind) {
    time_startup(state, kind, qEnvironmentVariable(CONFIG_FOLDER));
}

void startup_with_settings(benchmark::State& state, const char* kind, int windows) {
    const QTemporaryDir folder;
    fill_settings(folder.path(), windows);
    time_startup(state, kind, folder.path());
}

void startup_memory(benchmark::State& state, const char* kind) {
    for (auto _ : state) {
        set_memory(state, run(kind, qEnvironmentVariable(CONFIG_FOLDER)).kib);
    }
}

BENCHMARK_CAPTURE(startup, ours, "ours")->Name("startup/ours")->UseManualTime();
BENCHMARK_CAPTURE(startup, peer, "bare")->Name("startup/peer")->UseManualTime();
BENCHMARK_CAPTURE(startup_with_settings, ours_100, "ours", 100)
    ->Name("startup_100_windows/ours")
    ->UseManualTime();
BENCHMARK_CAPTURE(startup_with_settings, peer_100, "ours", 0)
    ->Name("startup_100_windows/peer")
    ->UseManualTime();
BENCHMARK_CAPTURE(startup_with_settings, ours_1000, "ours", 1000)
    ->Name("startup_1000_windows/ours")
    ->UseManualTime();
BENCHMARK_CAPTURE(startup_with_settings, peer_1000, "bare_with_place", 1000)
    ->Name("startup_1000_windows/peer")
    ->UseManualTime();
BENCHMARK_CAPTURE(startup_memory, ours, "ours")->Name("startup_memory/ours")->UseManualTime();
BENCHMARK_CAPTURE(startup_memory, peer, "bare")->Name("startup_memory/peer")->UseManualTime();

}  // namespace

int main(int argc, char** argv) {
    const Clock::time_point start = Clock::now();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc == 2 && std::strcmp(argv[1], "ours") == 0) {
        return run_ours(argc, argv, start);
    }
    if (argc == 2 && std::strcmp(argv[1], "bare") == 0) {
        return run_bare(argc, argv, start, false);
    }
    if (argc == 2 && std::strcmp(argv[1], "bare_with_place") == 0) {
        return run_bare(argc, argv, start, true);
    }
    const QTemporaryDir home;  // not for those above, which never come to remove it
    qputenv(CONFIG_FOLDER, home.path().toUtf8());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
