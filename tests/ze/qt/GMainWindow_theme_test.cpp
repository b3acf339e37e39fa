// A main window's theme and font.
#include "ze/qt/GApp.h"
#include "ze/qt/GLogView.h"
#include "ze/qt/GMainWindow.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/ProbeWindow.h"
#include "ze/qt/components/BasicSlider.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GListView.h"
#include "ze/qt/themes.h"

#include "support/LogCapture.h"

#include <tuple>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;
using test::ProbeWindow;
using Lines = std::vector<std::string>;

class WindowTheme : public testing::Test {
protected:
    WindowTheme() {
        log.ignore("Listener::~Listener@");
        test::clear_settings();
        window.build = [this](GPanel* panel) {
            button = panel->gen<GButton>(QStringLiteral("^icons/copy.svg"));
            slider = panel->gen<BasicSlider>(Qt::Horizontal);
            list = panel->gen<GListView>();
        };
        window.setup();
        test::turn_event_loop();
        log.clear();
    }
    ~WindowTheme() override {
        themes::set(themes::NORMAL);
        test::turn_event_loop();
    }

    [[nodiscard]] unsigned stored_theme() const {
        return window.settingsNode.get<unsigned>(QStringLiteral("theme"), 99);
    }

    using Events = std::vector<std::tuple<int, QSize, int>>;  // reason, size, size of the font
    void note_layout_events(Events& events) {
        window.panMain->layout_listener += [&events](LayoutEvent* const& event) {
            events.emplace_back(event->reason, event->size, event->fontSize);
        };
    }

    test::LogCapture log;
    std::vector<unsigned> themesSeen;  // outlives the window, whose palette may change at its end
    ProbeWindow window;
    GButton* button = nullptr;
    BasicSlider* slider = nullptr;
    GListView* list = nullptr;
};

TEST_F(WindowTheme, a_theme_reaches_palette_icons_log_view_and_sliders) {
    const QImage icon = button->icon().pixmap(32, 32).toImage();
    const QString sheetOfList = list->styleSheet();
    window.set_theme(themes::DARK, 14);
    EXPECT_EQ(window.palette().color(QPalette::Window), QColor(0x35, 0x35, 0x35));
    EXPECT_EQ(button->palette().color(QPalette::Button), QColor(0x35, 0x35, 0x35));
    EXPECT_NE(button->icon().pixmap(32, 32).toImage(), icon);
    EXPECT_EQ(window.get_panel_log_view()->get_view()->palette().color(QPalette::Base),
              QColor(Qt::black));
    EXPECT_TRUE(slider->styleSheet().contains(QStringLiteral("#6FA8C9")));
    EXPECT_EQ(list->styleSheet(), sheetOfList);
    EXPECT_EQ(stored_theme(), 1U);
    EXPECT_TRUE(window.is_theme_dark());
    EXPECT_EQ(window.get_theme_string(), QStringLiteral("dark"));
}

TEST_F(WindowTheme, each_widget_of_a_window_tells_its_theme) {
    for (const unsigned theme : {themes::NORMAL, themes::DARK, themes::GREEN}) {
        window.set_theme(theme, 0);
        EXPECT_EQ(GMainWindow::is_theme_normal(button), theme == themes::NORMAL) << theme;
        EXPECT_EQ(GMainWindow::is_theme_dark(button), theme == themes::DARK) << theme;
        EXPECT_EQ(GMainWindow::is_theme_green(button), theme == themes::GREEN) << theme;
    }
}

TEST_F(WindowTheme, the_palette_tells_its_listeners_when_the_loop_turns) {
    window.theme_listener += [this](const unsigned& theme) {
        themesSeen.push_back(theme);
    };
    window.set_theme(themes::GREEN, 0);
    EXPECT_EQ(themesSeen, std::vector<unsigned>());
    test::turn_event_loop();
    EXPECT_EQ(themesSeen, std::vector<unsigned>{2});
}

TEST_F(WindowTheme, a_change_of_theme_is_a_change_of_settings) {
    int changes = 0;
    gApp->settings_changed_listener.set("test", [&changes] { ++changes; });
    window.show();
    window.set_theme(themes::GREEN, 0);
    EXPECT_EQ(changes, 0);
    test::turn_event_loop();
    EXPECT_EQ(changes, 1);
    gApp->settings_changed_listener.set("test", {});
    EXPECT_EQ(GSettings::instance()
                  .get_window_node(window.get_object_name())
                  .get<unsigned>(QStringLiteral("theme"), 99),
              2U);
}

TEST_F(WindowTheme, a_change_is_told_though_the_window_is_gone_by_then) {
    int changes = 0;
    gApp->settings_changed_listener.set("test", [&changes] { ++changes; });
    {
        ProbeWindow other;
        other.set_theme(themes::GREEN, 0);
    }
    test::turn_event_loop();
    EXPECT_EQ(changes, 1);
    gApp->settings_changed_listener.set("test", {});
}

TEST_F(WindowTheme, an_unknown_theme_is_an_error_and_the_rest_still_happens) {
    window.show();
    window.set_theme(themes::GREEN, 0);
    test::turn_event_loop();
    const QPalette palette = window.palette();
    button->setIcon(QIcon());
    window.settingsNode.set(QStringLiteral("theme"), 99U);
    test::clear_settings();
    int changes = 0;
    gApp->settings_changed_listener.set("test", [&changes] { ++changes; });
    log.expect_error("GMainWindow::set_theme, theme:7 is unknow");
    window.set_theme(7, 0);
    EXPECT_EQ(window.get_theme(), themes::GREEN);
    EXPECT_EQ(window.palette(), palette);
    EXPECT_FALSE(button->icon().isNull());
    EXPECT_EQ(GSettings::instance()
                  .get_window_node(window.get_object_name())
                  .get<unsigned>(QStringLiteral("theme"), 99),
              2U);
    test::turn_event_loop();
    EXPECT_EQ(changes, 1);
    gApp->settings_changed_listener.set("test", {});
}

TEST_F(WindowTheme, themes_rotate) {
    std::vector<unsigned> seen;
    for (int i = 0; i < 4; ++i) {
        window.on_rotate_themes();
        seen.push_back(window.get_theme());
    }
    EXPECT_EQ(seen, (std::vector<unsigned>{1, 2, 0, 1}));
}

TEST_F(WindowTheme, a_rotation_leaves_its_lines) {
    ze::log::set_log_level(ze::log::TRACE);
    window.on_rotate_themes();
    EXPECT_EQ(log.lines_with_level(), (Lines{"DEB GMainWindow::on_rotate_themes",
                                             "TRA GMainWindow::~adapt_icons_to_theme, 1 icons",
                                             "TRA GMainWindow::adapt_log_view *"}));
}

TEST_F(WindowTheme, a_window_that_follows_the_application_rotates_from_its_theme) {
    themes::set(themes::DARK);
    window.set_theme(GMainWindow::THEME_OF_APPLICATION, 0);
    EXPECT_EQ(window.get_theme(), themes::DARK);
    EXPECT_EQ(window.get_panel_log_view()->get_view()->palette().color(QPalette::Base),
              QColor(Qt::black));
    window.on_rotate_themes();
    EXPECT_EQ(window.get_theme(), themes::GREEN);
}

TEST_F(WindowTheme, a_stored_number_beyond_the_themes_rotates_to_normal) {
    window.set_theme_default(55);
    EXPECT_EQ(window.get_theme_string(), QStringLiteral("theme-not-set"));
    window.on_rotate_themes();
    EXPECT_EQ(window.get_theme(), themes::NORMAL);
}

TEST_F(WindowTheme, a_window_that_follows_the_application_has_its_palette) {
    window.set_theme(themes::GREEN, 0);
    EXPECT_TRUE(window.has_its_own_palette());
    window.set_theme(GMainWindow::THEME_OF_APPLICATION, 0);
    EXPECT_FALSE(window.has_its_own_palette());
    EXPECT_EQ(stored_theme(), 3U);
    window.theme_listener += [this](const unsigned& theme) {
        themesSeen.push_back(theme);
    };
    const QPalette before = QApplication::palette();
    themes::apply_the_theme(themes::DARK);
    test::turn_event_loop();
    EXPECT_EQ(window.palette().color(QPalette::Window), QColor(0x35, 0x35, 0x35));
    ASSERT_FALSE(themesSeen.empty());
    EXPECT_EQ(themesSeen.back(), themes::DARK);
    QApplication::setPalette(before);
}

TEST_F(WindowTheme, the_default_theme_changes_no_widget) {
    const QPalette before = window.palette();
    window.set_theme_default(themes::GREEN);
    EXPECT_TRUE(window.is_theme_green());
    EXPECT_EQ(window.palette(), before);
    EXPECT_EQ(stored_theme(), 99U);
}

TEST_F(WindowTheme, the_stored_theme_comes_back) {
    window.set_theme(themes::GREEN, 0);
    window.set_theme_default(themes::NORMAL);
    window.restore_state();
    EXPECT_TRUE(window.is_theme_green());
    EXPECT_EQ(window.palette().color(QPalette::Window), QColor(0x1E, 0x32, 0x1E));
}

TEST_F(WindowTheme, a_window_that_followed_the_application_does_so_again) {
    window.set_theme(themes::GREEN, 0);
    window.settingsNode.set(QStringLiteral("theme"), GMainWindow::THEME_OF_APPLICATION);
    window.restore_state();
    EXPECT_FALSE(window.has_its_own_palette());
    EXPECT_EQ(window.palette(), QApplication::palette(&window));
    themes::set(themes::DARK);
    EXPECT_EQ(window.get_theme(), themes::DARK);
}

TEST_F(WindowTheme, without_a_main_window_there_is_no_theme) {
    const QWidget alone;
    EXPECT_FALSE(GMainWindow::is_theme_normal(&alone));
    EXPECT_FALSE(GMainWindow::is_theme_dark(nullptr));
    EXPECT_FALSE(GMainWindow::is_theme_green(&alone));
}

TEST_F(WindowTheme, icons_are_counted) {
    ze::log::set_log_level(ze::log::TRACE);
    window.adapt_icons_to_theme();
    EXPECT_EQ(log.lines_with_level(), Lines{"TRA GMainWindow::~adapt_icons_to_theme, 1 icons"});
}

// --- font ----------------------------------------------------------------------------------------

TEST_F(WindowTheme, a_font_size_is_clamped_with_a_warning) {
    const char* smaller = "WRN GMainWindow::set_font_size, cannot be smaller";
    const char* bigger = "WRN GMainWindow::set_font_size, cannot be BIGGER";
    struct Row {
        int size;
        int result;
        Lines lines;
    };
    const Row rows[] = {{7, 8, {smaller}}, {21, 20, {bigger}}, {8, 8, {}},
                        {20, 20, {}},      {-3, 8, {smaller}}, {12, 12, {}}};
    for (const Row& row : rows) {
        log.clear();
        window.set_font_size(row.size);
        EXPECT_EQ(window.font().pointSize(), row.result) << row.size;
        EXPECT_EQ(log.lines_with_level(), row.lines) << row.size;
    }
}

TEST_F(WindowTheme, a_new_font_size_is_a_layout_event_and_the_present_one_is_none) {
    Events events;
    note_layout_events(events);
    window.set_font_size(15);
    window.set_font_size(15);
    EXPECT_EQ(events, (Events{{2, window.size(), 15}}));
}

TEST_F(WindowTheme, a_font_in_pixels_keeps_its_unit) {
    QFont font = window.font();
    font.setPixelSize(14);
    window.setFont(font);
    Events events;
    note_layout_events(events);
    window.set_font_size(18);
    window.set_font_size(18);
    EXPECT_EQ(window.font().pixelSize(), 18);
    EXPECT_EQ(events, (Events{{2, window.size(), 18}}));
    window.gui_scale(GUISCALE::BIGGER);
    EXPECT_EQ(window.font().pixelSize(), 18);
}

TEST_F(WindowTheme, the_gui_is_scaled_by_one_point) {
    window.set_font_size(12);
    log.clear();
    window.gui_scale(GUISCALE::BIGGER);
    EXPECT_EQ(window.font().pointSize(), 13);
    window.gui_scale(GUISCALE::SMALLER);
    window.gui_scale(static_cast<GUISCALE>(9));
    EXPECT_EQ(window.font().pointSize(), 11);
    EXPECT_EQ(log.lines_with_level(),
              (Lines{"DEB GMainWindow::gui_scale:BIGGER", "DEB GMainWindow::gui_scale:SMALLER",
                     "DEB GMainWindow::gui_scale:SMALLER"}));
}

}  // namespace
