#include "ze/qt/guitools/GGui.h"

#include "ze/qt/GMainWindow.h"
#include "ze/qt/components/GAction.h"
#include "ze/qt/resources.h"

#include "support/LogCapture.h"

#include <QApplication>
#include <QClipboard>
#include <QPushButton>

#include <string>
#include <vector>

using namespace ze::qt;

namespace {

using Texts = std::vector<std::string>;

class PlainWindow : public GMainWindow {
public:
    PlainWindow() : GMainWindow(nullptr, {}) {}
    void ini() override {}
};

class GGui : public testing::Test {
protected:
    GGui() { log.ignore("Listener::~Listener"); }
    ~GGui() override { set_res_prefix(QString()); }

    test::LogCapture log;
};

}  // namespace

TEST_F(GGui, get_main_window_finds_the_top_level_window_only_when_it_is_a_main_window) {
    log.ignore("GMainWindow::~GMainWindow");
    PlainWindow window;
    QWidget child(&window);
    QWidget grandchild(&child);
    QWidget other;
    EXPECT_EQ(get_main_window(&grandchild), &window);
    EXPECT_EQ(get_main_window(&window), &window);
    EXPECT_EQ(get_main_window(&other), nullptr);
    EXPECT_EQ(get_main_window(nullptr), nullptr);
}

TEST_F(GGui, invoke_later_runs_when_the_event_loop_turns) {
    int calls = 0;
    invoke_later([&calls] { ++calls; });
    EXPECT_EQ(calls, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
}

TEST_F(GGui, a_frame_moves_into_an_area_and_no_further) {
    struct Row {
        const char* name;
        QRect frame;
        QPoint place;
    };
    const QRect area(60, 0, 1860, 1040);  // task bars on the left and at the bottom
    const Row rows[] = {
        {"inside", {100, 200, 300, 60}, {100, 200}},
        {"in the lower right corner", {1620, 980, 300, 60}, {1620, 980}},
        {"in the task bar at the bottom", {100, 1045, 300, 60}, {100, 980}},
        {"in the task bar on the left", {10, 200, 300, 60}, {60, 200}},
        {"above", {100, -30, 300, 60}, {100, 0}},
        {"beyond the right edge", {1700, 200, 300, 60}, {1620, 200}},
        {"larger than the area", {-500, 1045, 3000, 2000}, {60, 0}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(get_place_inside(area, row.frame), row.place) << row.name;
    }
}

TEST_F(GGui, toggle_full_screen_twice_returns_a_window_to_its_former_state) {
    QWidget window;
    window.showNormal();
    toggle_full_screen(&window, false);
    EXPECT_TRUE(window.isFullScreen());
    toggle_full_screen(&window, false);
    EXPECT_FALSE(window.isFullScreen());
    EXPECT_EQ(log.lines_with_level(), (Texts{"DEB GGui::toggle_full_screen, normal => full",
                                             "DEB GGui::toggle_full_screen, full => normal"}));
}

TEST_F(GGui, toggle_full_screen_lets_a_child_be_a_window_meanwhile) {
    QWidget window;
    auto* const child = new QWidget(&window);
    toggle_full_screen(child, true);
    EXPECT_TRUE(child->isWindow());
    EXPECT_TRUE(child->isFullScreen());
    toggle_full_screen(child, true);
    EXPECT_FALSE(child->isWindow());
    EXPECT_FALSE(child->isFullScreen());
}

TEST_F(GGui, toggle_full_screen_refuses_null_and_a_child) {
    QWidget window;
    auto* const child = new QWidget(&window);
    log.expect_error("::toggle_full_screen, w == nullptr");
    log.expect_error("::toggle_full_screen, w is NOT a Window");
    toggle_full_screen(nullptr, true);
    toggle_full_screen(child, false);
    EXPECT_FALSE(child->isFullScreen());
    EXPECT_EQ(log.lines().size(), 2U);
}

TEST_F(GGui, copy_to_clipboard_takes_both_kinds_of_text) {
    copy_to_clipboard(QStringLiteral("gr\u00F6\u00DFer"));
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("gr\u00F6\u00DFer"));
    copy_to_clipboard("\xC3\xA4");
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("\u00E4"));
    copy_to_clipboard(static_cast<const char*>(nullptr));
    EXPECT_EQ(QApplication::clipboard()->text(), QString());
}

TEST_F(GGui, has_property_knows_those_of_the_class_and_those_added_later) {
    QWidget widget;
    widget.setProperty("added", 1);
    EXPECT_TRUE(has_property(&widget, "added"));
    EXPECT_TRUE(has_property(&widget, "objectName"));
    EXPECT_FALSE(has_property(&widget, "missing"));
    EXPECT_FALSE(has_property(nullptr, "objectName"));
}

TEST_F(GGui, an_icon_path_begins_with_a_caret_a_colon_or_a_slash) {
    set_res_prefix(QStringLiteral(":/res"));
    struct Row {
        QString text;
        bool flagIcon;
        QString path;
    };
    const std::vector<Row> rows{
        {QStringLiteral("^icons/copy.png"), true, QStringLiteral(":/res/icons/copy.png")},
        {QStringLiteral(":/res/copy.png"), true, QStringLiteral(":/res/copy.png")},
        {QStringLiteral("/icons/copy.png"), true, QStringLiteral("/icons/copy.png")},
        {QStringLiteral("copy"), false, QString()},
        {QStringLiteral(":copy"), false, QString()},
        {QString(), false, QString()},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(is_icon_path(row.text), row.flagIcon) << row.text.toStdString();
        EXPECT_EQ(get_icon_path(row.text), row.path) << row.text.toStdString();
    }
}

TEST_F(GGui, a_caret_without_a_prefix_gives_no_path) {
    EXPECT_EQ(get_icon_path(QStringLiteral("^icons/copy.png")), QString());
}

TEST_F(GGui, set_icon_serves_widgets_and_actions_and_returns_them) {
    QPushButton button;
    GAction action(nullptr, QString());
    EXPECT_EQ(set_icon(&button, QStringLiteral(":/res/copy.png")), &button);
    EXPECT_EQ(set_icon(&action, QStringLiteral(":/res/copy.png")), &action);
    EXPECT_EQ(button.property("sIcon").toString(), QStringLiteral(":/res/copy.png"));
    EXPECT_EQ(action.property("sIcon").toString(), QStringLiteral(":/res/copy.png"));
    set_icon(&button, QStringLiteral("no path"));
    EXPECT_EQ(button.property("sIcon").toString(), QStringLiteral(":/res/copy.png"));
}
