// Null arguments that end the program. Each exit takes the seconds in which its text can be read:
// this program starts itself once for every row, all rows at the same time.
#include "ze/log/LogConsole.h"
#include "ze/log/log.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GPadding.h"
#include "ze/qt/ProbeWindow.h"
#include "ze/qt/components/GComboBox.h"
#include "ze/qt/components/GSplitter.h"
#include "ze/qt/dialogs/GDialogOption.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/qt/styles.h"

#include "support/IsolatedHome.h"
#include "support/offscreen.h"

#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSlider>

#include <algorithm>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;

constexpr const char* GROWTH = "include/ze/qt/inline/GGui_inline";
constexpr const char* LOOKS = "src/ze/qt/guitools/GGui_looks";
constexpr const char* ROW_OPTION = "--row=";

struct Row {
    const char* name;
    void (*act)();
    const char* text;
    const char* source;
};

void open_dialog_without_a_log_panel() {
    test::ProbeWindow window;
    window.withLog = false;
    window.setup();
    GDialogOption(&window).ini();
}

void ask_for_a_main_panel_that_is_no_panel() {
    test::ProbeWindow window;
    window.setCentralWidget(new QLabel);
    (void)window.get_main_panel();
}

void add_to_a_panel_without_a_layout() {
    QLabel label;
    GPanel().add_widget(&label);
}

const Row ROWS[] = {
    {"add window", [] { gApp->add_window(nullptr); }, "win == NULL", "src/ze/qt/GApp"},
    {"remove window", [] { gApp->remove_window(nullptr); }, "win == NULL", "src/ze/qt/GApp"},
    {"main panel", ask_for_a_main_panel_that_is_no_panel, "pan == NULL", "src/ze/qt/GMainWindow"},
    {"log buttons", [] { test::ProbeWindow().log_panel_control(nullptr, {}); }, "panParent == NULL",
     "src/ze/qt/GMainWindow"},
    {"log icons", [] { test::ProbeWindow().log_panel_control_icons(nullptr, {}, {}); },
     "panParent == NULL", "src/ze/qt/GMainWindow"},
    {"add widget", [] { GPanel(GLAYOUT::VERTICAL).add_widget(nullptr); }, "widget == NULL",
     "src/ze/qt/GPanel"},
    {"add widget without layout", add_to_a_panel_without_a_layout, "lay == NULL",
     "src/ze/qt/GPanel"},
    {"remove widget", [] { GPanel(GLAYOUT::VERTICAL).remove_widget(nullptr, false); },
     "widget == NULL", "src/ze/qt/GPanel"},
    {"show page", [] { GPanel(GLAYOUT::STACKED).show_stacked_widget(nullptr); }, "widget == NULL",
     "src/ze/qt/GPanel"},
    {"growable", [] { set_growable(static_cast<QLabel*>(nullptr)); }, "qwt == NULL", GROWTH},
    {"growable across", [] { set_growable_horizontal(static_cast<QLabel*>(nullptr)); },
     "qwt == NULL", GROWTH},
    {"growable upward", [] { set_growable_vertical(static_cast<QLabel*>(nullptr)); }, "qwt == NULL",
     GROWTH},
    {"padding", [] { GPadding().set_padding(nullptr); }, "widget == NULL", "src/ze/qt/GPadding"},
    {"icon", [] { set_icon(static_cast<QPushButton*>(nullptr), QStringLiteral("text")); },
     "target == NULL", "include/ze/qt/guitools/GGui"},
    {"window of a dialog", [] { activate_main_window_later(nullptr); }, "dialog == NULL",
     "src/ze/qt/guitools/GGui"},
    {"margin", [] { set_margin_horz(nullptr, 1); }, "bt == NULL", LOOKS},
    {"background", [] { set_background(nullptr, Qt::red); }, "widget == NULL", LOOKS},
    {"text colour", [] { set_text_color(nullptr, Qt::red); }, "widget == NULL", LOOKS},
    {"functor model", [] { GComboBox().set_functor_model(nullptr); }, "pModel == NULL",
     "src/ze/qt/components/GComboBox"},
    {"splitter", [] { GSplitter().add_widget(nullptr); }, "widget == NULL",
     "src/ze/qt/components/GSplitter"},
    {"slider", [] { styles::set_slider_handle(nullptr, Qt::Horizontal, 0); }, "slider == NULL",
     "src/ze/qt/styles"},
    {"option dialog", [] { GDialogOption(nullptr); }, "parent == NULL",
     "src/ze/qt/dialogs/GDialogOption"},
    {"option dialog without log", open_dialog_without_a_log_panel, "panLog == NULL",
     "src/ze/qt/dialogs/GDialogOption"},
};

/// The last four lines that a program wrote, without the number of the source line.
QStringList last_words(QProcess& process) {
    QStringList lines = QString::fromUtf8(process.readAllStandardOutput()).trimmed().split(u'\n');
    lines = lines.mid(std::max<qsizetype>(0, lines.size() - 4));
    return lines.replaceInStrings(QRegularExpression(QStringLiteral("^LINE:[0-9]+$")),
                                  QStringLiteral("LINE:..."));
}

TEST(NullArguments, each_ends_the_program_with_its_text_and_its_source) {
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const Row& row : ROWS) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->start(QCoreApplication::applicationFilePath(),
                                {QLatin1String(ROW_OPTION) + QLatin1String(row.name)});
    }
    for (std::size_t i = 0; i < processes.size(); ++i) {
        QProcess& process = *processes[i];
        ASSERT_TRUE(process.waitForFinished()) << ROWS[i].name;
        EXPECT_EQ(process.exitCode(), 1) << ROWS[i].name;
        const QStringList expected = {QStringLiteral("nullptr:") + QLatin1String(ROWS[i].text),
                                      QLatin1String(ROWS[i].source), QStringLiteral("LINE:..."),
                                      QStringLiteral("program will exit in 5 sec")};
        EXPECT_EQ(last_words(process), expected) << ROWS[i].name;
    }
}

/// A row ends the program; who comes back has not ended it.
int run_row(const QString& name) {
    for (const Row& row : ROWS) {
        if (name == QLatin1String(row.name)) {
            row.act();
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    static const test::IsolatedHome home;
    test::use_offscreen_platform();
    testing::InitGoogleTest(&argc, argv);
    const GApp app(argc, argv, nullptr);
    ze::log::remove_log_appender(&ze::log::consoleLogger);
    const QString last = QCoreApplication::arguments().last();
    const QLatin1String option(ROW_OPTION);
    return last.startsWith(option) ? run_row(last.mid(option.size())) : RUN_ALL_TESTS();
}
