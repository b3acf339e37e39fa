// How a main window answers Qt's events and keys.
#include "ze/qt/GMainWindow.h"
#include "ze/qt/ProbeWindow.h"
#include "ze/qt/components/GAction.h"
#include "ze/qt/dialogs/GMessageBox.h"
#include "ze/tools/version.h"

#include "support/LogCapture.h"

#include <QAbstractButton>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGestureEvent>
#include <QMimeData>
#include <QUrl>

#include <map>
#include <tuple>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;
using test::ProbeWindow;
using Lines = std::vector<std::string>;

class WindowEvents : public testing::Test {
protected:
    WindowEvents() {
        log.ignore("Listener::~Listener@");
        test::clear_settings();
        window.withLog = false;
    }
    ~WindowEvents() override { test::turn_event_loop(); }

    test::LogCapture log;
    Lines fired;  // outlives the window, whose state may still change at its end
    ProbeWindow window;
};

// --- layout events -------------------------------------------------------------------------------

TEST_F(WindowEvents, layout_events_come_from_the_first_show_on) {
    using Events = std::vector<std::tuple<int, QSize, int>>;  // reason, size, size of the font
    Events events;
    window.setup();
    const int points = window.font().pointSize();
    ASSERT_GT(points, 0);
    window.panMain->layout_listener += [&events](LayoutEvent* const& event) {
        events.emplace_back(event->reason, event->size, event->fontSize);
    };
    window.resize(300, 200);
    window.show();
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.front(), std::make_tuple(0, QSize(300, 200), points));
    events.clear();
    window.resize(320, 240);
    EXPECT_EQ(events, (Events{{1, QSize(320, 240), points}}));
    events.clear();
    window.hide();
    window.show();
    EXPECT_EQ(events, Events());
}

TEST_F(WindowEvents, a_resize_before_the_first_show_fires_its_listener_and_no_layout_event) {
    int resizes = 0;
    int layouts = 0;
    window.setup();
    window.first_resize_listener += [&resizes] {
        ++resizes;
    };
    window.panMain->layout_listener += [&layouts](LayoutEvent* const&) {
        ++layouts;
    };
    for (const int width : {200, 300}) {
        QResizeEvent event(QSize(width, 100), window.size());
        QApplication::sendEvent(&window, &event);
    }
    EXPECT_EQ(resizes, 0);
    test::turn_event_loop();
    EXPECT_EQ(resizes, 1);
    EXPECT_EQ(layouts, 0);
}

TEST_F(WindowEvents, a_font_in_pixels_gives_its_pixels_on_the_first_show) {
    std::map<int, int> fontSizes;  // by the reason
    window.setup();
    QFont font = window.font();
    font.setPixelSize(14);
    window.setFont(font);
    window.panMain->layout_listener += [&fontSizes](LayoutEvent* const& event) {
        fontSizes[event->reason] = event->fontSize;
    };
    window.show();
    EXPECT_EQ(fontSizes[LayoutEvent::FIRST_SHOW], 14);
    window.resize(320, 240);
    EXPECT_EQ(fontSizes[LayoutEvent::RESIZE], -1);  // the points that a font in pixels has
}

TEST_F(WindowEvents, resizes_are_traced) {
    ze::log::set_log_level(ze::log::TRACE);
    window.setObjectName(QStringLiteral("w"));
    QResizeEvent event(QSize(200, 100), QSize());
    QApplication::sendEvent(&window, &event);
    EXPECT_EQ(log.lines_with_level(), Lines{"TRA GMainWindow::resizeEvent, @w, size:200,100"});
}

// --- window state --------------------------------------------------------------------------------

TEST_F(WindowEvents, each_window_state_fires_its_listener) {
    window.minimized_listener += [this] {
        fired.push_back("minimized");
    };
    window.maximized_listener += [this] {
        fired.push_back("maximized");
    };
    window.fullscreen_listener += [this] {
        fired.push_back("fullscreen");
    };
    window.normal_state_listener += [this] {
        fired.push_back("normal");
    };
    struct Row {
        Qt::WindowStates state;
        Lines expected;
    };
    const Row rows[] = {
        {Qt::WindowMinimized, {"minimized"}},
        {Qt::WindowMinimized | Qt::WindowMaximized, {"minimized", "maximized"}},
        {Qt::WindowMaximized, {"maximized"}},
        {Qt::WindowFullScreen, {"fullscreen"}},
        {Qt::WindowNoState, {"normal"}},
    };
    for (const Row& row : rows) {
        fired.clear();
        window.setWindowState(row.state);
        EXPECT_EQ(fired, row.expected) << row.state;
    }
}

TEST_F(WindowEvents, activation_fires_with_the_state) {
    std::vector<bool> states;
    window.setup();
    window.activation_listener += [&states](const bool& active) {
        states.push_back(active);
    };
    ASSERT_TRUE(window.show_active());
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_TRUE(test::wait_for([&states] { return states.size() == 2; }));
    EXPECT_EQ(states, (std::vector<bool>{true, false}));
}

// --- drops ---------------------------------------------------------------------------------------

TEST_F(WindowEvents, only_urls_may_be_dragged_in) {
    QMimeData urls;
    urls.setUrls({QUrl::fromLocalFile(QStringLiteral("/x/a.txt"))});
    QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &urls, Qt::LeftButton, {});
    enter.ignore();
    window.dragEnterEvent(&enter);
    EXPECT_TRUE(enter.isAccepted());
    QMimeData text;
    text.setText(QStringLiteral("text"));
    QDragEnterEvent other(QPoint(1, 1), Qt::CopyAction, &text, Qt::LeftButton, {});
    other.ignore();
    window.dragEnterEvent(&other);
    EXPECT_FALSE(other.isAccepted());
    EXPECT_EQ(log.lines_with_level(), Lines{"DEB GMainWindow::dragEnterEvent, URLs"});
}

TEST_F(WindowEvents, dropped_urls_are_logged) {
    QMimeData urls;
    urls.setUrls({QUrl::fromLocalFile(QStringLiteral("/x/a.txt")),
                  QUrl(QStringLiteral("https://vork2d.example/"))});
    QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &urls, Qt::LeftButton, {});
    drop.ignore();
    window.dropEvent(&drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(log.lines_with_level(), (Lines{"DEB GMainWindow::dropEvent, urls:2",
                                             "DEB     GMainWindow::dropEvent, <<</x/a.txt>>>",
                                             "DEB     GMainWindow::dropEvent, <<<>>>"}));
}

TEST_F(WindowEvents, dropped_text_is_accepted_and_logs_nothing) {
    QMimeData text;
    text.setText(QStringLiteral("text"));
    QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &text, Qt::LeftButton, {});
    drop.ignore();
    window.dropEvent(&drop);
    EXPECT_TRUE(drop.isAccepted());
    EXPECT_EQ(log.lines(), Lines());
}

// --- gestures ------------------------------------------------------------------------------------

TEST_F(WindowEvents, a_pinch_is_logged_with_its_scale) {
    QPinchGesture pinch;
    pinch.setScaleFactor(1.5);
    QGestureEvent event({&pinch});
    window.on_gesture_event(&event);
    EXPECT_EQ(log.lines_with_level(),
              (Lines{"DEB GMainWindow::on_gesture_event",
                     "DEB     GMainWindow::on_gesture_event, scaleFactor:1.500000"}));
}

TEST_F(WindowEvents, another_gesture_is_only_named) {
    QSwipeGesture swipe;
    QGestureEvent event({&swipe});
    window.on_gesture_event(&event);
    EXPECT_EQ(log.lines(), Lines{"GMainWindow::on_gesture_event"});
}

// --- keys ----------------------------------------------------------------------------------------

/// A window whose operations only tell that they ran.
class KeyWindow : public ProbeWindow {
public:
    KeyWindow() { withLog = false; }
    void on_help() override { ran.push_back("help"); }
    void on_close() override { ran.push_back("close"); }
    void on_new_window() override { ran.push_back("new"); }
    void on_open() override { ran.push_back("open"); }
    void on_toggle_fullscreen() override { ran.push_back("fullscreen"); }
    void on_select_all() override { ran.push_back("select all"); }
    void on_logger() override { ran.push_back("logger"); }
    void on_reset_config_and_quit() override { ran.push_back("reset"); }

    Lines ran;
};

class WindowKeys : public testing::Test {
protected:
    WindowKeys() {
        log.ignore("Listener::~Listener@");
        test::clear_settings();
        window.setup();
    }
    ~WindowKeys() override { test::turn_event_loop(); }

    test::LogCapture log;
    KeyWindow window;
};

TEST_F(WindowKeys, each_key_runs_its_operation) {
    ASSERT_TRUE(window.show_active());
    const std::pair<QKeySequence, const char*> rows[] = {
        {QKeySequence(QKeySequence::HelpContents), "help"},
        {QKeySequence(QKeySequence::Close), "close"},
        {QKeySequence(QKeySequence::New), "new"},
        {QKeySequence(QKeySequence::Open), "open"},
        {QKeySequence(QKeySequence::FullScreen), "fullscreen"},
        {QKeySequence(QKeySequence::SelectAll), "select all"},
        {QKeySequence(QStringLiteral("Ctrl+L")), "logger"},
        {QKeySequence(QStringLiteral("Ctrl+Alt+Q")), "reset"},
    };
    for (const auto& [keys, operation] : rows) {
        window.ran.clear();
        ASSERT_FALSE(keys.isEmpty()) << operation;
        QTest::keySequence(&window, keys);
        EXPECT_EQ(window.ran, Lines{operation});
    }
}

TEST_F(WindowKeys, the_actions_stand_in_their_order) {
    QList<QKeySequence> keys;
    for (const QAction* action : window.actions()) {
        keys.append(action->shortcut());
    }
    EXPECT_EQ(
        keys,
        (QList<QKeySequence>{
            QKeySequence(QKeySequence::HelpContents), QKeySequence(QKeySequence::Close),
            QKeySequence(QKeySequence::New), QKeySequence(QKeySequence::Open),
            QKeySequence(QKeySequence::FullScreen), QKeySequence(QKeySequence::SelectAll),
            QKeySequence(QStringLiteral("Ctrl+L")), QKeySequence(QStringLiteral("Ctrl+Alt+Q")),
            QKeySequence(QStringLiteral("Ctrl+Shift+T"))}));
}

TEST_F(WindowKeys, a_key_rotates_the_themes) {
    ASSERT_TRUE(window.show_active());
    QTest::keySequence(&window, QKeySequence(QStringLiteral("Ctrl+Shift+T")));
    EXPECT_TRUE(window.is_theme_dark());
}

TEST_F(WindowKeys, a_later_action_takes_the_key_of_an_earlier_one) {
    const QKeySequence fullScreen(QKeySequence::FullScreen);
    int taken = 0;
    window.gen_action(fullScreen.toString(QKeySequence::PortableText))->triggered_signal +=
        [&taken] {
            ++taken;
        };
    ASSERT_TRUE(window.show_active());
    QTest::keySequence(&window, fullScreen);
    EXPECT_EQ(taken, 1);
    EXPECT_EQ(window.ran, Lines());
}

TEST_F(WindowKeys, keys_that_cannot_be_parsed_give_an_action_without_a_key) {
    for (const char* keys : {"", "Bogus+Key"}) {
        log.expect_error(std::string("GMainWindow::create_action, '") + keys +
                         "' parsing problems");
        const GAction* action = window.gen_action(QLatin1String(keys));
        EXPECT_TRUE(action->shortcut().isEmpty()) << keys;
        EXPECT_TRUE(window.actions().contains(const_cast<GAction*>(action))) << keys;
    }
}

TEST_F(WindowKeys, an_action_without_a_key_takes_none) {
    GAction* keyed = window.gen_action(QStringLiteral("F9"));
    window.gen_action(QKeySequence());
    EXPECT_EQ(keyed->shortcut(), QKeySequence(Qt::Key_F9));
}

TEST_F(WindowEvents, the_operations_of_the_base_report_themselves) {
    window.on_new_window();
    window.on_open();
    window.on_select_all();
    window.on_logger();
    EXPECT_EQ(log.lines(), (Lines{"GMainWindow::on_new_window - overwrite me",
                                  "GMainWindow::on_open", "GMainWindow::on_select_all",
                                  "GMainWindow::on_logger, panLogger == nullptr"}));
}

TEST_F(WindowEvents, a_reset_clears_the_settings) {
    GSettings::instance().set(QStringLiteral("k"), 1, nullptr);
    window.on_reset_config_and_quit();
    EXPECT_FALSE(GSettings::instance().contains(QStringLiteral("k")));
    EXPECT_EQ(log.lines(),
              (Lines{"GMainWindow::on_reset_config_and_quit", "GApp::reset_settings_and_quit",
                     "GSettings::clear_config", "GSettings::~clear_config"}));
}

TEST_F(WindowEvents, full_screen_is_toggled) {
    window.show();
    window.on_toggle_fullscreen();
    EXPECT_TRUE(window.isFullScreen());
    window.on_toggle_fullscreen();
    EXPECT_FALSE(window.isFullScreen());
}

TEST_F(WindowEvents, closing_by_the_operation_closes) {
    window.setup();
    window.show();
    window.on_close();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(WindowEvents, help_shows_the_version_and_gives_the_keys_back) {
    window.setup();
    ASSERT_TRUE(window.show_active());
    window.on_help();
    auto* box = window.findChild<QMessageBox*>();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->windowTitle(), QStringLiteral("About ZEK"));
    EXPECT_EQ(box->text(),
              QStringLiteral("ZEK/TOVA - v %1").arg(QLatin1String(ze::framework_version())));
    box->button(QMessageBox::Ok)->click();
    EXPECT_TRUE(test::wait_for([this] { return QApplication::activeWindow() == &window; }));
}

}  // namespace
