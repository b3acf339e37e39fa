#include "ze/qt/GWidget.h"

#include "ze/qt/GMainWindow.h"

#include "support/LogCapture.h"

#include <QCoreApplication>
#include <QEnterEvent>
#include <QKeyEvent>
#include <QWheelEvent>

#include <memory>
#include <string>
#include <vector>

using ze::qt::GWidget;

namespace {

using Texts = std::vector<std::string>;

QMouseEvent mouse_event(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
    return {type, QPointF(5, 6), QPointF(5, 6), button, held, Qt::NoModifier};
}

QWheelEvent wheel_event() {
    return {QPointF(5, 6), QPointF(5, 6),  QPoint(),          QPoint(0, 120),
            Qt::NoButton,  Qt::NoModifier, Qt::NoScrollPhase, false};
}

class GWidgetEvents : public testing::Test {
protected:
    GWidgetEvents() { log.ignore("Listener::~Listener"); }

    // Writes down the name and whether QWidget's handler has already let go of the event.
    template <class Listener>
    void watch(Listener& listener, const std::string& name) {
        listener += [this, name](auto* ev) {
            calls.push_back(name + (ev->isAccepted() ? "" : " ignored"));
        };
    }
    void watch(ze::Listener<ze::NO_PAYLOAD>& listener, const std::string& name) {
        listener += [this, name] {
            calls.push_back(name);
        };
    }

    test::LogCapture log;
    GWidget widget{nullptr};
    Texts calls;
};

class ThemedWidget : public GWidget {
public:
    explicit ThemedWidget(QWidget* parent) : GWidget(parent) {}
    std::vector<unsigned> themes;

protected:
    void on_change_theme(unsigned int theTheme) override { themes.push_back(theTheme); }
};

class PlainWindow : public ze::qt::GMainWindow {
public:
    PlainWindow() : GMainWindow(nullptr, {}) {}
    void ini() override {}
};

void change_palette(QWidget& widget) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Window, Qt::darkRed);
    widget.setPalette(palette);
}

}  // namespace

TEST_F(GWidgetEvents, start_with_mouse_tracking_and_strong_focus) {
    EXPECT_TRUE(widget.testAttribute(Qt::WA_MouseTracking));
    EXPECT_EQ(widget.focusPolicy(), Qt::StrongFocus);
    EXPECT_FALSE(widget.is_show_events());
}

TEST_F(GWidgetEvents, of_the_mouse_stop_at_the_widget) {
    watch(widget.mouse_press_listener, "press");
    watch(widget.mouse_release_listener, "release");
    watch(widget.mouse_move_listener, "move");
    for (const auto type :
         {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseMove}) {
        QMouseEvent ev = mouse_event(type, Qt::LeftButton, Qt::LeftButton);
        QCoreApplication::sendEvent(&widget, &ev);
        EXPECT_TRUE(ev.isAccepted()) << type;
    }
    EXPECT_EQ(calls, (Texts{"press", "release", "move"}));
}

TEST_F(GWidgetEvents, of_the_mouse_stop_at_the_widget_without_listeners_too) {
    GWidget child(&widget);
    watch(widget.mouse_press_listener, "parent");
    QMouseEvent ev = mouse_event(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    QCoreApplication::sendEvent(&child, &ev);
    EXPECT_TRUE(ev.isAccepted());
    EXPECT_EQ(calls, Texts{});
}

TEST_F(GWidgetEvents, of_the_wheel_go_on_to_the_base_handler) {
    QWheelEvent ev = wheel_event();
    QCoreApplication::sendEvent(&widget, &ev);
    EXPECT_FALSE(ev.isAccepted());
}

TEST_F(GWidgetEvents, of_the_keys_reach_the_base_handler_before_the_listener) {
    watch(widget.key_press_listener, "press");
    watch(widget.key_release_listener, "release");
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent ev(type, Qt::Key_A, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &ev);
    }
    EXPECT_EQ(calls, (Texts{"press ignored", "release ignored"}));
}

TEST_F(GWidgetEvents, of_focus_fire_the_signal_then_the_listener) {
    watch(widget.focus_in_listener, "in listener");
    watch(widget.focus_in_signal, "in signal");
    watch(widget.focus_out_listener, "out listener");
    watch(widget.focus_out_signal, "out signal");
    for (const auto type : {QEvent::FocusIn, QEvent::FocusOut}) {
        QFocusEvent ev(type);
        QCoreApplication::sendEvent(&widget, &ev);
    }
    EXPECT_EQ(calls, (Texts{"in signal", "in listener", "out signal", "out listener"}));
}

TEST_F(GWidgetEvents, of_enter_and_leave_fire_the_signal_then_the_listener) {
    watch(widget.enter_listener, "enter listener");
    watch(widget.enter_signal, "enter signal");
    watch(widget.leave_listener, "leave listener");
    watch(widget.leave_signal, "leave signal");
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QCoreApplication::sendEvent(&widget, &enter);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&widget, &leave);
    EXPECT_EQ(calls, (Texts{"enter signal", "enter listener", "leave signal", "leave listener"}));
}

TEST_F(GWidgetEvents, are_traced_when_asked_for) {
    widget.set_show_event(true);
    QMouseEvent press = mouse_event(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    QMouseEvent release = mouse_event(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    QMouseEvent drag = mouse_event(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
    QMouseEvent move = mouse_event(QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
    QWheelEvent wheel = wheel_event();
    QKeyEvent key(QEvent::KeyPress, Qt::Key_Up, Qt::ControlModifier);
    QKeyEvent keyRelease(QEvent::KeyRelease, Qt::Key_Up, Qt::ControlModifier);
    QFocusEvent focus(QEvent::FocusIn);
    for (QEvent* const ev : std::initializer_list<QEvent*>{&press, &release, &drag, &move, &wheel,
                                                           &key, &keyRelease, &focus}) {
        QCoreApplication::sendEvent(&widget, ev);
    }
    EXPECT_EQ(
        log.lines_with_level(),
        (Texts{"DEB GWidget::mousePressEvent, PRESS LEFT, pos:5,6, mod:NONE",
               "DEB GWidget::mouseReleaseEvent, RELEASE LEFT, pos:5,6, mod:NONE",
               "DEB GWidget::mouseMoveEvent, MOVE LEFT, pos:5,6, mod:NONE",
               "DEB GWidget::wheelEvent, WHEEL angle:0,120, pos:5,6, mod:NONE",
               "DEB GWidget::keyPressEvent, Ctrl+Up", "DEB GWidget::keyReleaseEvent, Ctrl+Up"}));
}

TEST_F(GWidgetEvents, leave_no_trace_otherwise) {
    QMouseEvent press = mouse_event(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
    QCoreApplication::sendEvent(&widget, &press);
    EXPECT_EQ(log.lines(), Texts{});
}

TEST(GWidget, learns_of_a_new_palette_when_the_event_loop_turns) {
    test::LogCapture log;
    log.ignore("");
    ThemedWidget widget(nullptr);
    change_palette(widget);
    EXPECT_EQ(widget.themes, std::vector<unsigned>{});
    QCoreApplication::processEvents();
    EXPECT_EQ(widget.themes, std::vector<unsigned>{0});
}

TEST(GWidget, takes_the_theme_of_its_main_window) {
    test::LogCapture log;
    log.ignore("");
    PlainWindow window;
    window.set_theme_default(2);
    ThemedWidget widget(&window);
    change_palette(widget);
    QCoreApplication::processEvents();
    EXPECT_EQ(widget.get_main_window(), &window);
    EXPECT_EQ(widget.themes, std::vector<unsigned>{2});
}

TEST(GWidget, that_is_gone_when_the_event_loop_turns_learns_of_nothing) {
    test::LogCapture log(ze::log::TRACE);
    log.ignore("Listener::~Listener");
    auto widget = std::make_unique<GWidget>(nullptr);
    change_palette(*widget);
    widget.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(log.lines(), Texts{});
}

TEST(GWidget, other_changes_are_no_change_of_theme) {
    test::LogCapture log;
    log.ignore("");
    ThemedWidget widget(nullptr);
    QEvent ev(QEvent::FontChange);
    QCoreApplication::sendEvent(&widget, &ev);
    QCoreApplication::processEvents();
    EXPECT_EQ(widget.themes, std::vector<unsigned>{});
}

TEST(GWidget, reports_a_theme_that_nobody_took) {
    struct OpenWidget : GWidget {
        OpenWidget() : GWidget(nullptr) {}
        using GWidget::on_change_theme;
    };
    test::LogCapture log(ze::log::TRACE);
    log.ignore("Listener::~Listener");
    OpenWidget widget;
    widget.on_change_theme(1);
    widget.setObjectName(QStringLiteral("field"));
    widget.on_change_theme(2);
    EXPECT_EQ(log.lines_with_level(),
              (Texts{"TRA GWidget::on_change_theme(), theTheme:1 - overwrite me",
                     "TRA GWidget@field::on_change_theme(), theTheme:2 - overwrite me"}));
}
