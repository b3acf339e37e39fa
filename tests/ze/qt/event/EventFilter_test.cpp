#include "ze/qt/event/EventFilter.h"

#include "support/LogCapture.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPointingDevice>
#include <QTest>
#include <QToolTip>
#include <QWidget>

#include <algorithm>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

using ze::qt::EventFilter;

namespace {

// What is written to the standard output while it lives.
class OutputCapture {
public:
    OutputCapture() : before(std::cout.rdbuf(out.rdbuf())) {}
    OutputCapture(const OutputCapture&) = delete;
    OutputCapture& operator=(const OutputCapture&) = delete;
    ~OutputCapture() { std::cout.rdbuf(before); }

    [[nodiscard]] std::string text() const { return out.str(); }

private:
    std::ostringstream out;
    std::streambuf* before;
};

// Hands one event of each type to the filter, for an object without a name and for one called
// "ball".
std::string dump(EventFilter& filter, QObject& plain, QObject& named) {
    const OutputCapture out;
    for (const auto type : {QEvent::Show, QEvent::Hide, QEvent::User}) {
        QEvent ev(type);
        filter.eventFilter(&plain, &ev);
        filter.eventFilter(&named, &ev);
    }
    return out.text();
}

class EventFilterDump : public testing::Test {
protected:
    EventFilterDump() {
        log.ignore("");
        named.setObjectName(QStringLiteral("ball"));
    }

    test::LogCapture log;
    EventFilter filter{nullptr};
    QObject plain;
    QObject named;
};

// A window with colours of its own, and in it an edit with yet another background.
class EventFilterTheme : public testing::Test {
protected:
    EventFilterTheme() {
        log.ignore("");
        window.setPalette(OWN);
        edit.setPalette(Qt::transparent);
        window.show();
        qApp->installEventFilter(&filter);
    }

    static QColor ground(const QWidget* widget) { return widget->palette().color(QPalette::Base); }

    const QPalette OWN{Qt::darkGreen};
    test::LogCapture log;
    EventFilter filter{nullptr};
    QWidget window;
    QLineEdit edit{&window};
};

}  // namespace

TEST_F(EventFilterDump, is_off_at_the_start) {
    EXPECT_FALSE(filter.is_dump_events());
    EXPECT_EQ(dump(filter, plain, named), "");
}

TEST_F(EventFilterDump, without_filters_prints_every_event) {
    filter.set_dump_events(true);
    EXPECT_EQ(dump(filter, plain, named),
              "EVENT <QObject>, <Show>\nEVENT <QObject@ball>, <Show>\n"
              "EVENT <QObject>, <Hide>\nEVENT <QObject@ball>, <Hide>\n"
              "EVENT <QObject>, <User>\nEVENT <QObject@ball>, <User>\n");
}

TEST_F(EventFilterDump, passes_over_a_type_that_is_not_in_the_set) {
    filter.set_dump_events(true);
    filter.add_filter(QEvent::Hide);
    filter.add_filter(QEvent::Show);
    filter.remove_filter(QEvent::Show);
    EXPECT_EQ(dump(filter, plain, named),
              "EVENT <QObject>, <Hide>\nEVENT <QObject@ball>, <Hide>\n");
}

TEST_F(EventFilterDump, passes_over_an_object_that_is_not_in_the_set) {
    filter.set_dump_events(true);
    filter.add_filter(QEvent::Hide);
    filter.add_object_filter(&plain);
    filter.add_object_filter(&named);
    filter.remove_object_filter(&named);
    EXPECT_EQ(dump(filter, plain, named), "EVENT <QObject>, <Hide>\n");
}

TEST_F(EventFilterDump, passes_over_a_name_that_is_not_in_the_set) {
    filter.set_dump_events(true);
    filter.add_filter(QEvent::Hide);
    filter.add_object_name_filter(QStringLiteral("ball"));
    EXPECT_EQ(dump(filter, plain, named), "EVENT <QObject@ball>, <Hide>\n");
    filter.remove_object_name_filter(QStringLiteral("ball"));
    EXPECT_EQ(dump(filter, plain, named),
              "EVENT <QObject>, <Hide>\nEVENT <QObject@ball>, <Hide>\n");
}

TEST_F(EventFilterDump, with_the_common_filter_prints_what_the_user_does) {
    filter.set_dump_events(true);
    filter.gen_common_filter();
    EXPECT_EQ(dump(filter, plain, named),
              "EVENT <QObject>, <Show>\nEVENT <QObject@ball>, <Show>\n"
              "EVENT <QObject>, <Hide>\nEVENT <QObject@ball>, <Hide>\n");
}

TEST_F(EventFilterDump, prints_a_type_without_a_name_by_its_number) {
    filter.set_dump_events(true);
    const OutputCapture out;
    QEvent ev(static_cast<QEvent::Type>(QEvent::User + 7));
    filter.eventFilter(&plain, &ev);
    EXPECT_EQ(out.text(), "EVENT <QObject>, <EVENT-TYPE:1007>\n");
}

TEST(EventFilter, consumes_no_event) {
    test::LogCapture log;
    log.ignore("");
    EventFilter filter(nullptr);
    QObject obj;
    QKeyEvent ev(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    EXPECT_FALSE(filter.eventFilter(&obj, &ev));
}

TEST(EventFilter, hands_each_touch_of_the_application_to_the_automaton_once) {
    test::LogCapture log;
    log.ignore("");
    EventFilter filter(nullptr);
    std::vector<QPointF> deltas;
    filter.get_touch_automat().delta_listener += [&deltas](const QPointF& delta) {
        deltas.push_back(delta);
    };
    QWidget window;
    window.resize(200, 200);
    QWidget child(&window);
    child.resize(200, 200);
    child.setAttribute(Qt::WA_AcceptTouchEvents);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::instance()->installEventFilter(&filter);

    const std::unique_ptr<QPointingDevice> owned(QTest::createTouchDevice());
    QPointingDevice* const device = owned.get();
    QTest::touchEvent(&window, device).press(0, QPoint(20, 20));
    QTest::touchEvent(&window, device).move(0, QPoint(23, 24));
    QTest::touchEvent(&window, device).release(0, QPoint(23, 24));

    EXPECT_EQ(deltas, std::vector<QPointF>{QPointF(3, 4)});
}

TEST_F(EventFilterTheme, a_menu_and_its_sub_menu_have_the_colours_of_their_window) {
    QMenu menu(&edit);
    QMenu* const sub = menu.addMenu(QStringLiteral("sub"));
    sub->addAction(QStringLiteral("entry"));
    menu.popup(QPoint());
    sub->popup(QPoint());
    EXPECT_EQ(ground(&menu), ground(&window));
    EXPECT_EQ(ground(sub), ground(&window));
}

TEST_F(EventFilterTheme, a_menu_follows_its_window_into_another_theme) {
    QMenu menu(&window);
    menu.addAction(QStringLiteral("entry"));
    menu.popup(QPoint());
    menu.close();
    window.setPalette(Qt::darkRed);
    menu.popup(QPoint());
    EXPECT_EQ(ground(&menu), ground(&window));
}

TEST_F(EventFilterTheme, a_disabled_entry_of_a_menu_has_no_bright_rim) {
    QPalette theme = OWN;
    theme.setColor(QPalette::Active, QPalette::Light, Qt::darkGray);
    theme.setColor(QPalette::Disabled, QPalette::Light, Qt::white);
    window.setPalette(theme);
    QMenu menu(&window);
    menu.addAction(QStringLiteral("entry"));
    menu.popup(QPoint());
    EXPECT_EQ(menu.palette().color(QPalette::Disabled, QPalette::Light), QColor(Qt::darkGray));
}

TEST_F(EventFilterTheme, a_tool_tip_has_the_colours_of_its_window) {
    QToolTip::showText(QPoint(), QStringLiteral("tip"), &edit);
    const QWidgetList all = QApplication::topLevelWidgets();
    const auto tip = std::find_if(all.begin(), all.end(), [](const QWidget* widget) {
        return widget->inherits("QTipLabel") && widget->isVisible();
    });
    ASSERT_NE(tip, all.end());
    EXPECT_EQ(ground(*tip), ground(&window));
}

TEST_F(EventFilterTheme, a_dialog_keeps_the_colours_that_it_was_given) {
    QDialog dialog(&window);
    const QColor before = ground(&dialog);
    dialog.show();
    EXPECT_EQ(ground(&dialog), before);
}
