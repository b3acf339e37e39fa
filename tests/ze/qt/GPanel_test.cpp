#include "ze/qt/GPanel.h"

#include "ze/qt/GMainPanel.h"
#include "ze/qt/ProbeWindow.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GCheckBox.h"
#include "ze/qt/components/GComboBox.h"
#include "ze/qt/components/GLabel.h"
#include "ze/qt/guitools/GFlowLayout.h"
#include "ze/qt/world_lang.h"

#include "support/LogCapture.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QMouseEvent>
#include <QPointer>
#include <QStackedLayout>
#include <QTabWidget>

#include <gtest/gtest.h>

namespace {

using namespace ze::qt;
using Lines = std::vector<std::string>;

class Panel : public testing::Test {
protected:
    Panel() { log.ignore("Listener::~Listener@"); }

    test::LogCapture log;
    GPanel panel{GLAYOUT::VERTICAL};
};

// --- layouts -------------------------------------------------------------------------------------

template <typename T>
bool makes(GLAYOUT kind) {
    const GPanel made(kind);
    return dynamic_cast<T*>(made.layout()) != nullptr && made.is_layout(kind) &&
           made.get_layout() == kind;
}

TEST_F(Panel, each_kind_makes_its_layout) {
    EXPECT_TRUE(makes<QVBoxLayout>(GLAYOUT::VERTICAL));
    EXPECT_TRUE(makes<QHBoxLayout>(GLAYOUT::HORIZONTAL));
    EXPECT_TRUE(makes<GFlowLayout>(GLAYOUT::FLOW));
    EXPECT_TRUE(makes<QStackedLayout>(GLAYOUT::STACKED));
    EXPECT_TRUE(makes<QGridLayout>(GLAYOUT::GRID));
    EXPECT_TRUE(makes<QFormLayout>(GLAYOUT::FORM));
}

TEST_F(Panel, an_unknown_kind_makes_no_layout) {
    const GPanel made(static_cast<GLAYOUT>(6));
    EXPECT_EQ(made.layout(), nullptr);
}

TEST_F(Panel, a_panel_without_a_kind_has_no_layout_and_counts_as_vertical) {
    const GPanel bare;
    EXPECT_EQ(bare.layout(), nullptr);
    EXPECT_TRUE(bare.is_layout(GLAYOUT::VERTICAL));
}

TEST_F(Panel, a_second_layout_is_refused_and_logged) {
    QLayout* first = panel.layout();
    panel.set_layout(GLAYOUT::HORIZONTAL);
    EXPECT_EQ(panel.layout(), first);
    EXPECT_EQ(log.lines_with_level(),
              Lines{"DEB GPanel::set_layout - has already layout ?, <QVBoxLayout>"});
}

TEST_F(Panel, a_refused_layout_is_the_one_that_clear_grok_makes) {
    panel.set_layout(GLAYOUT::HORIZONTAL);
    EXPECT_TRUE(panel.is_layout(GLAYOUT::HORIZONTAL));
    panel.clear_grok();
    EXPECT_NE(dynamic_cast<QHBoxLayout*>(panel.layout()), nullptr);
}

TEST_F(Panel, every_kind_takes_children) {
    for (unsigned kind = 0; kind <= static_cast<unsigned>(GLAYOUT::FORM); ++kind) {
        GPanel made(static_cast<GLAYOUT>(kind));
        auto* first = made.gen<GLabel>(QStringLiteral("first"));
        auto* second = made.gen<GLabel>(QStringLiteral("second"));
        std::vector<QWidget*> widgets;
        EXPECT_EQ(made.get_widgets(widgets), 2U) << kind;
        EXPECT_EQ(widgets, (std::vector<QWidget*>{first, second})) << kind;
        EXPECT_EQ(second->parentWidget(), &made) << kind;
    }
}

// --- children ------------------------------------------------------------------------------------

TEST_F(Panel, the_same_widget_twice_is_one_item_and_one_line) {
    auto* label = new QLabel;
    EXPECT_EQ(panel.add_widget(label), label);
    EXPECT_EQ(panel.add_widget(label), label);
    EXPECT_EQ(panel.layout()->count(), 1);
    EXPECT_EQ(log.lines_with_level(), Lines{"DEB XPanel::add_widget, w already in container"});
}

TEST_F(Panel, a_removed_widget_lives_on_without_a_parent) {
    auto* label = panel.gen<QLabel>(QStringLiteral("text"));
    panel.remove_widget(label, false);
    EXPECT_EQ(panel.layout()->count(), 0);
    EXPECT_EQ(label->parentWidget(), nullptr);
    delete label;
}

TEST_F(Panel, a_removed_widget_can_be_deleted_later) {
    const QPointer<QWidget> label = panel.gen<QLabel>(QStringLiteral("text"));
    panel.remove_widget(label, true);
    EXPECT_NE(label, nullptr);
    EXPECT_TRUE(test::wait_for([&label] { return label == nullptr; }));
}

TEST_F(Panel, removing_without_a_layout_is_an_error) {
    log.expect_error("GPanel::remove_widget, lay == nullptr");
    GPanel bare;
    QLabel label(&bare);
    bare.remove_widget(&label, false);
    EXPECT_EQ(label.parentWidget(), &bare);
}

TEST_F(Panel, only_direct_items_are_contained) {
    GPanel* inner = panel.gen_pan_horz();
    QLabel* label = inner->gen<QLabel>(QStringLiteral("text"));
    EXPECT_TRUE(panel.containsWidget(inner));
    EXPECT_FALSE(panel.containsWidget(label));
    EXPECT_FALSE(panel.containsWidget(nullptr));
    EXPECT_FALSE(GPanel().containsWidget(label));
}

TEST_F(Panel, items_are_found_by_their_kind) {
    GPanel* inner = panel.gen_pan_horz();
    QLabel* label = panel.gen<QLabel>(QStringLiteral("text"));
    std::vector<Layouter*> layouters;
    std::vector<GPanel*> panels;
    std::vector<QWidget*> widgets;
    EXPECT_EQ(panel.get_layouter(layouters), 1U);
    EXPECT_EQ(panel.get_panels(panels), 1U);
    EXPECT_EQ(panel.get_widgets(widgets), 2U);
    EXPECT_EQ(layouters, std::vector<Layouter*>{inner});
    EXPECT_EQ(panels, std::vector<GPanel*>{inner});
    EXPECT_EQ(widgets, (std::vector<QWidget*>{inner, label}));
}

TEST_F(Panel, clear_takes_the_widgets_and_leaves_the_layout) {
    QLayout* layout = panel.layout();
    const QPointer<QWidget> label = panel.gen<QLabel>(QStringLiteral("text"));
    panel.clear();
    EXPECT_EQ(panel.layout(), layout);
    EXPECT_EQ(layout->count(), 0);
    EXPECT_TRUE(test::wait_for([&label] { return label == nullptr; }));
}

TEST_F(Panel, clear_grok_leaves_an_empty_layout_of_the_same_kind_margins_and_spacing) {
    GPanel grid(GLAYOUT::GRID);
    grid.set_margins(QMargins(1, 2, 3, 4));
    grid.set_spacing(5);
    auto* nested = new QVBoxLayout;
    auto* deep = new QHBoxLayout;
    const QPointer<QLabel> label = new QLabel;
    deep->addWidget(label);
    nested->addLayout(deep);
    static_cast<QGridLayout*>(grid.layout())->addLayout(nested, 0, 0);

    grid.clear_grok();

    ASSERT_NE(dynamic_cast<QGridLayout*>(grid.layout()), nullptr);
    EXPECT_EQ(grid.layout()->count(), 0);
    EXPECT_EQ(grid.get_margins(), QMargins(1, 2, 3, 4));
    EXPECT_EQ(grid.get_spacing(), 5);
    EXPECT_TRUE(test::wait_for([&label] { return label == nullptr; }));
    EXPECT_EQ(log.lines(), Lines());
}

TEST_F(Panel, clear_grok_and_clear_layout_take_nothing_for_an_answer) {
    GPanel bare;
    bare.clear_grok();
    GPanel::clearLayout(nullptr);
    EXPECT_EQ(bare.layout(), nullptr);
}

// --- layout events -------------------------------------------------------------------------------

TEST_F(Panel, children_see_a_layout_event_before_their_parents_listeners) {
    std::vector<std::string> order;
    GPanel* first = panel.gen_pan_vert();
    GPanel* deep = first->gen_pan_horz();
    panel.gen<QLabel>(QStringLiteral("no layouter"));
    GPanel* second = panel.gen_pan_flow();
    const std::pair<GPanel*, const char*> named[] = {
        {&panel, "panel"}, {first, "first"}, {deep, "deep"}, {second, "second"}};
    for (const auto& [target, name] : named) {
        target->layout_listener += [&order, name = name](LayoutEvent* const& event) {
            order.push_back(std::string(name) + ' ' + std::to_string(event->fontSize));
        };
    }
    LayoutEvent event{QSize(10, 20), 12, LayoutEvent::RESIZE};
    panel.do_layout(event);
    EXPECT_EQ(order, (Lines{"deep 12", "first 12", "second 12", "panel 12"}));
}

TEST_F(Panel, without_a_layout_a_layout_event_fires_nothing) {
    GPanel bare;
    bool fired = false;
    bare.layout_listener += [&fired](LayoutEvent* const&) {
        fired = true;
    };
    LayoutEvent event;
    bare.do_layout(event);
    EXPECT_FALSE(fired);
}

// --- what is generated ---------------------------------------------------------------------------

TEST_F(Panel, a_margin_of_zero_is_set_and_one_below_zero_keeps_the_styles) {
    const QMargins ofStyle = panel.gen<GPanel>(GLAYOUT::HORIZONTAL)->get_margins();
    EXPECT_EQ(panel.gen_pan_horz(0)->get_margins(), QMargins());
    EXPECT_EQ(panel.gen_pan_horz(-1)->get_margins(), ofStyle);
    EXPECT_EQ(panel.gen_pan_vert(3)->get_margins(), QMargins(3, 3, 3, 3));
    EXPECT_NE(ofStyle, QMargins());
}

TEST_F(Panel, child_panels_have_their_kind_and_are_added) {
    EXPECT_TRUE(panel.gen_pan_vert()->is_layout(GLAYOUT::VERTICAL));
    EXPECT_TRUE(panel.gen_pan_horz()->is_layout(GLAYOUT::HORIZONTAL));
    EXPECT_TRUE(panel.gen_pan_flow()->is_layout(GLAYOUT::FLOW));
    EXPECT_TRUE(panel.gen_pan_stacked()->is_layout(GLAYOUT::STACKED));
    EXPECT_EQ(panel.layout()->count(), 4);
}

TEST_F(Panel, a_label_takes_a_minimum_width_above_zero) {
    EXPECT_EQ(panel.gen_label(QStringLiteral("a"), 80)->minimumWidth(), 80);
    EXPECT_EQ(panel.gen_label(QStringLiteral("a"), 0)->minimumWidth(), 0);
}

TEST_F(Panel, spacers_grow_in_their_direction) {
    struct Row {
        const char* name;
        QWidget* spacer;
        QSizePolicy::Policy vertical;
        int stretchHorz;
        int stretchVert;
    };
    const Row rows[] = {
        {"both", panel.gen_spacer(), QSizePolicy::MinimumExpanding, 1, 1},
        {"vertical", panel.gen_spacer_vert(), QSizePolicy::Minimum, 0, 1},
        {"horizontal", panel.gen_spacer_horz(), QSizePolicy::Fixed, 1, 0},
    };
    for (const Row& row : rows) {
        const QSizePolicy policy = row.spacer->sizePolicy();
        EXPECT_EQ(policy.horizontalPolicy(), QSizePolicy::Expanding) << row.name;
        EXPECT_EQ(policy.verticalPolicy(), row.vertical) << row.name;
        EXPECT_EQ(policy.horizontalStretch(), row.stretchHorz) << row.name;
        EXPECT_EQ(policy.verticalStretch(), row.stretchVert) << row.name;
    }
}

TEST_F(Panel, a_check_box_takes_its_state_and_its_tip) {
    const GCheckBox* plain = panel.gen_checkBox(QStringLiteral("text"), true);
    EXPECT_TRUE(plain->isChecked());
    EXPECT_EQ(plain->toolTip(), QString());
    const GCheckBox* tipped =
        panel.gen_checkBox(QStringLiteral("text"), false, QStringLiteral("tip"));
    EXPECT_FALSE(tipped->isChecked());
    EXPECT_EQ(tipped->toolTip(), QStringLiteral("tip"));
}

TEST_F(Panel, a_placeholder_grows_as_asked_and_reports_a_click) {
    const QString text = QStringLiteral("later");
    struct Row {
        bool growH;
        bool growV;
        QSizePolicy::Policy horizontal;
        QSizePolicy::Policy vertical;
    };
    const Row rows[] = {
        {true, true, QSizePolicy::Expanding, QSizePolicy::MinimumExpanding},
        {true, false, QSizePolicy::Expanding, QSizePolicy::Fixed},
        {false, true, QSizePolicy::Expanding, QSizePolicy::Minimum},
        {false, false, QSizePolicy::Minimum, QSizePolicy::Fixed},
    };
    for (const Row& row : rows) {
        const QSizePolicy policy = panel.gen_placeholder(text, row.growH, row.growV)->sizePolicy();
        EXPECT_EQ(policy.horizontalPolicy(), row.horizontal) << row.growH << row.growV;
        EXPECT_EQ(policy.verticalPolicy(), row.vertical) << row.growH << row.growV;
        EXPECT_EQ(policy.horizontalStretch(), row.growH ? 1 : 0) << row.growH << row.growV;
        EXPECT_EQ(policy.verticalStretch(), row.growV ? 1 : 0) << row.growH << row.growV;
    }
    panel.gen_placeholder(text, false, false)->click();
    EXPECT_EQ(log.lines_with_level(), Lines{"DEB GPanel::create_placeholder <<<later>>>"});
}

TEST_F(Panel, a_line_is_styled_by_its_name) {
    const GLabel* line =
        panel.gen_horz_line_str(2, QStringLiteral("red"), QStringLiteral("divider"));
    EXPECT_EQ(line->objectName(), QStringLiteral("divider"));
    EXPECT_EQ(line->maximumHeight(), 2);
    EXPECT_EQ(line->styleSheet(),
              QStringLiteral("#divider { border: 2px solid red; background:red}"));
    EXPECT_EQ(line->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
}

TEST_F(Panel, two_lines_without_a_name_take_two_names) {
    const GLabel* one = panel.gen_horz_line_str(1, QStringLiteral("red"));
    const GLabel* other = panel.gen_horz_line(1, Qt::darkGray);
    EXPECT_EQ(one->objectName().size(), 8);
    EXPECT_NE(one->objectName(), other->objectName());
    EXPECT_EQ(other->styleSheet(),
              QStringLiteral("#%1 { border: 1px solid #808080; background:#808080}")
                  .arg(other->objectName()));
}

TEST_F(Panel, the_box_of_languages_has_names_as_text_and_codes_as_data) {
    const GComboBox* box = panel.gen_combobox_world_lang();
    std::vector<WorldLang> shown;
    for (int i = 0; i < box->count(); ++i) {
        shown.emplace_back(box->itemData(i).toString(), box->itemText(i));
    }
    EXPECT_EQ(shown, create_vector_world_lang_20());
}

// --- stacks and tabs -----------------------------------------------------------------------------

TEST_F(Panel, a_stacked_panel_shows_the_page_it_is_told) {
    GPanel stack(GLAYOUT::STACKED);
    GPanel* first = stack.gen_pan_vert();
    QLabel* second = stack.gen<QLabel>(QStringLiteral("page"));
    EXPECT_EQ(stack.current_stacked_panel(), first);
    stack.show_stacked_widget(second);
    EXPECT_EQ(stack.current_stacked_widget(), second);
    EXPECT_EQ(stack.current_stacked_panel(), nullptr);
}

TEST_F(Panel, pages_of_another_kind_of_panel_are_errors) {
    const char* show = "GPanel::show_stacked_widget, NO QStackedLayout";
    const char* current = "GPanel::current_stacked_widget, NO QStackedLayout";
    log.expect_error(show);
    log.expect_error(current);
    QLabel label;
    panel.show_stacked_widget(&label);
    EXPECT_EQ(panel.current_stacked_widget(), nullptr);
    EXPECT_EQ(log.lines(), (Lines{show, current}));
}

TEST_F(Panel, the_title_of_a_tab_is_set_from_its_panel) {
    QTabWidget tabs;
    auto* page = new GPanel(GLAYOUT::VERTICAL);
    tabs.addTab(page, QStringLiteral("old"));
    GPanel* inner = page->gen_pan_vert();
    page->set_tab_title(QStringLiteral("new"));
    EXPECT_EQ(tabs.tabText(0), QStringLiteral("new"));
    inner->set_tab_title(QStringLiteral("no page"));
    panel.set_tab_title(QStringLiteral("no tabs"));
    EXPECT_EQ(tabs.tabText(0), QStringLiteral("new"));
    EXPECT_EQ(log.lines_with_level(),
              (Lines{"DEB GPanel::set_tab_title <new>", "DEB GPanel::set_tab_title <no page>",
                     "DEB GPanel::set_tab_title <no tabs>"}));
}

// --- looks ---------------------------------------------------------------------------------------

TEST_F(Panel, margins_and_spacing_are_those_of_the_layout) {
    panel.set_margins(QMargins(1, 2, 3, 4));
    panel.set_spacing(7);
    EXPECT_EQ(panel.layout()->contentsMargins(), QMargins(1, 2, 3, 4));
    EXPECT_EQ(panel.get_spacing(), 7);
    GPanel bare;
    bare.set_margins(5);
    bare.set_spacing(5);
    EXPECT_EQ(bare.get_margins(), QMargins());
    EXPECT_EQ(bare.get_spacing(), -1);
}

TEST_F(Panel, a_sunken_border_is_a_thin_box) {
    panel.set_sunken_border();
    EXPECT_EQ(panel.frameShape(), QFrame::Box);
    EXPECT_EQ(panel.frameShadow(), QFrame::Sunken);
    EXPECT_EQ(panel.lineWidth(), 1);
    EXPECT_EQ(panel.midLineWidth(), 1);
}

TEST_F(Panel, not_growable_is_no_reset) {
    panel.set_growable(true);
    const QSizePolicy before = panel.sizePolicy();
    panel.set_growable(false);
    EXPECT_EQ(panel.sizePolicy(), before);
    EXPECT_EQ(before.verticalPolicy(), QSizePolicy::MinimumExpanding);
    panel.set_growable_vertical();
    EXPECT_EQ(panel.sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    panel.set_growable_horizontal();
    EXPECT_EQ(panel.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
}

TEST_F(Panel, a_background_fills_the_panel) {
    panel.set_background_color(Qt::red);
    EXPECT_TRUE(panel.autoFillBackground());
    EXPECT_EQ(panel.palette().color(QPalette::Window), QColor(Qt::red));
}

TEST_F(Panel, its_name_is_its_text) {
    EXPECT_EQ(panel.to_string(), QStringLiteral("GPanel"));
    panel.setObjectName(QStringLiteral("left"));
    EXPECT_EQ(panel.to_string(), QStringLiteral("GPanel@left"));
    EXPECT_TRUE(panel.is_name(QStringLiteral("left")));
    EXPECT_FALSE(panel.is_name(QStringLiteral("Left")));
}

TEST_F(Panel, without_a_main_window_no_logger_is_visible) {
    EXPECT_FALSE(panel.is_logger_visible());
}

// --- events --------------------------------------------------------------------------------------

TEST_F(Panel, show_and_hide_fire_and_set_visible_fires_once_more) {
    std::vector<bool> states;
    panel.visible_listener += [&states](const bool& visible) {
        states.push_back(visible);
    };
    panel.show();
    panel.hide();
    EXPECT_EQ(states, (std::vector<bool>{true, false}));
    states.clear();
    panel.set_visible(true);
    EXPECT_EQ(states, (std::vector<bool>{true, true}));
    states.clear();
    panel.set_visible(true);
    EXPECT_EQ(states, std::vector<bool>{true});
}

TEST_F(Panel, mouse_events_fire_their_listeners) {
    std::vector<std::string> events;
    panel.mouse_press_listener += [&events](QMouseEvent* const&) {
        events.push_back("press");
    };
    panel.mouse_release_listener += [&events](QMouseEvent* const&) {
        events.push_back("release");
    };
    panel.mouse_move_listener += [&events](QMouseEvent* const&) {
        events.push_back("move");
    };
    panel.setMouseTracking(true);
    panel.resize(100, 100);
    panel.show();
    QTest::mousePress(&panel, Qt::LeftButton, {}, QPoint(10, 10));
    QTest::mouseMove(&panel, QPoint(20, 20));
    QTest::mouseRelease(&panel, Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_EQ(events, (Lines{"press", "move", "release"}));
}

TEST_F(Panel, its_listeners_come_after_the_frame_has_passed_the_event_on) {
    std::vector<bool> accepted;
    const auto note = [&accepted](QMouseEvent* const& event) {
        accepted.push_back(event->isAccepted());
    };
    panel.mouse_press_listener += note;
    panel.mouse_release_listener += note;
    panel.mouse_move_listener += note;
    for (const QEvent::Type type :
         {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, QPointF(1, 1), QPointF(1, 1), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&panel, &event);
    }
    EXPECT_EQ(accepted, (std::vector<bool>{false, false, false}));
}

TEST_F(Panel, a_main_panel_has_thin_margins) {
    EXPECT_EQ(GMainPanel().get_margins(), QMargins(2, 2, 2, 2));
    const GMainPanel grid(GLAYOUT::GRID);
    EXPECT_EQ(grid.get_margins(), QMargins(2, 2, 2, 2));
    EXPECT_TRUE(grid.is_layout(GLAYOUT::GRID));
}

}  // namespace
