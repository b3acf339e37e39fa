#include "GalleryWindow.h"

#include "ze/log/pp.h"
#include "ze/qt/ColorSetter.h"
#include "ze/qt/GCanvas.h"
#include "ze/qt/GMainPanel.h"
#include "ze/qt/GPC.h"
#include "ze/qt/GPanelLogView.h"
#include "ze/qt/components/BasicSlider.h"
#include "ze/qt/components/GAction.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GButtonGroup.h"
#include "ze/qt/components/GCheckBox.h"
#include "ze/qt/components/GComboBox.h"
#include "ze/qt/components/GDock.h"
#include "ze/qt/components/GLabel.h"
#include "ze/qt/components/GLineEdit.h"
#include "ze/qt/components/GListView.h"
#include "ze/qt/components/GMenu.h"
#include "ze/qt/components/GMenuBar.h"
#include "ze/qt/components/GPlainTextEdit.h"
#include "ze/qt/components/GRadioButton.h"
#include "ze/qt/components/GSplitter.h"
#include "ze/qt/components/GStatusBar.h"
#include "ze/qt/dialogs/GMessageBox.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/qt/themes.h"

#include <QCoreApplication>
#include <QDir>
#include <QFormLayout>
#include <QGridLayout>
#include <QPixmap>
#include <QTabWidget>
#include <QTimer>

namespace gallery {

using namespace ze::qt;

namespace {

constexpr int SETTLE_MS = 400;  // until a new theme is painted everywhere
constexpr int CANVAS_HEIGHT = 90;

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

/// A ball on a field, as the game draws it.
class SampleCanvas : public GCanvas {
public:
    SampleCanvas() : GCanvas(nullptr) {
        set_coord_system(coord_system::CARTESIAN);
        set_view_size(200, 100);
        setMinimumHeight(CANVAS_HEIGHT);
        set_growable(this);
    }

protected:
    void draw(GPC& gpc, const ze::math::Rect& view) override {
        gpc.set_anti_alias(true);
        gpc.fill_rect(view, Qt::black);
        gpc.draw_line({0, -50}, {0, 50}, Qt::white, 0.5F, Qt::DotLine, COSMETIC_ON);
        gpc.fill_circle({30, 15}, 8, Qt::yellow);
        gpc.fill_rect(-98, -15, 6, 30, Qt::white);
        gpc.draw_text(glm::vec2(-80, 30), text("canvas"), 10, Qt::white, BASELINE);
    }
};

}  // namespace

void GalleryWindow::setup() {
    setup_node<WindowClazz<"Gallery">>();
    ini_standards();
    setText(text("gallery"));
}

void GalleryWindow::ini() {
    gen_bars();
    GPanel* main = gen_main_panel(GLAYOUT::VERTICAL);
    auto* splitter = main->gen<GSplitter>(Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    tabs = new QTabWidget;
    splitter->add_widget(tabs);
    auto* widgets = new GPanel(GLAYOUT::HORIZONTAL);
    auto* layouts = new GPanel(GLAYOUT::VERTICAL);
    tabs->addTab(widgets, QString());
    tabs->addTab(layouts, QString());
    widgets->set_tab_title(text("Widgets"));
    layouts->set_tab_title(text("Layouts"));
    gen_widgets(widgets);
    gen_layouts(layouts);
    gen_log_panel(splitter)->set_enabled(true);
    gen_controls(main);
}

void GalleryWindow::gen_bars() {
    auto* menu = new GMenu(text("&File"), this);
    menu->gen_label(text("A heading"));
    menu->gen_action(text("Help"), false, false, true, 0)->triggered_signal += [this] {
        on_help();
    };
    menu->gen_action(text("Disabled"), false, false, false, 0);
    menu->gen_separator();
    menu->gen_action(text("Close"), false, false, true, 0)->triggered_signal += [this] {
        on_close();
    };
    gen_menu_bar()->addMenu(menu);
    gen_status_bar()->gen<GLabel>(text("status bar"));

    GDock* dock = gen_dock(text("list"), text("Dock with a list"), Qt::AllDockWidgetAreas);
    auto* list = new GListView;
    list->gen_items({text("Ebbe"), text("Rika"), text("Sanne"), text("Mela")});
    list->setAccessibleName(text("Names"));
    list->selectionModel()->select(list->model()->index(1, 0), QItemSelectionModel::Select);
    dock->setWidget(list);
}

void GalleryWindow::gen_widgets(GPanel* parent) {
    GPanel* left = parent->gen_pan_vert(0);
    gen_buttons(left);
    gen_choices(left);
    left->gen_spacer_vert();
    GPanel* right = parent->gen_pan_vert(0);
    gen_texts(right);
    gen_sliders(right);
}

void GalleryWindow::gen_buttons(GPanel* parent) {
    GPanel* row = parent->gen_pan_horz(0);
    row->gen<GButton>(text("Button"), text("A tool tip"));
    row->gen<GButton>(text("Disabled"))->setEnabled(false);
    row->gen<GButton>(text("^icons/wheel.svg"), text("A button with an icon"));
    row->gen<GButton>(text("Message"))->clicked_listener += [this] {
        GMessageBox::ask_yes_no(this, text("Question"), text("Does this look right?"));
    };
    row->gen_spacer_horz();
}

void GalleryWindow::gen_choices(GPanel* parent) {
    GPanel* checks = parent->gen_pan_horz(0);
    checks->gen_checkBox(text("Check box"), true, text("Checked"));
    checks->gen_checkBox(text("Disabled"), true)->setEnabled(false);
    checks->gen_spacer_horz();

    GPanel* radios = parent->gen_pan_horz(0);
    auto* group = new GButtonGroup(this);
    for (const char* name : {"One", "Two", "Three"}) {
        auto* radio = radios->gen<GRadioButton>(text(name));
        radio->setObjectName(text(name));
        group->addButton(radio);
    }
    group->set_checked(text("Two"));
    radios->gen_spacer_horz();

    parent->gen_combobox_world_lang()->setAccessibleName(text("Language"));
}

void GalleryWindow::gen_texts(GPanel* parent) {
    parent->gen_label(text("A label"));
    parent->gen<GLineEdit>(text("A line edit"))->setAccessibleName(text("Line"));
    auto* empty = parent->gen<GLineEdit>(QString());
    empty->setPlaceholderText(text("a placeholder"));
    empty->setAccessibleName(text("Empty line"));
    parent->gen_horz_line(1, Qt::darkGray);
    auto* edit = parent->gen<GPlainTextEdit>(text("A plain text edit\nof several lines"));
    edit->setTabChangesFocus(true);
    edit->setAccessibleName(text("Text"));
}

void GalleryWindow::gen_sliders(GPanel* parent) {
    GPanel* row = parent->gen_pan_horz(0);
    auto* horizontal = row->gen<BasicSlider>(Qt::Horizontal);
    horizontal->setAccessibleName(text("Horizontal"));
    horizontal->setMinimumHeight(44);
    auto* vertical = row->gen<BasicSlider>(Qt::Vertical);
    vertical->setAccessibleName(text("Vertical"));
    vertical->setMinimumSize(44, 80);
}

void GalleryWindow::gen_layouts(GPanel* parent) {
    GPanel* flow = parent->gen_pan_flow(0);
    for (int i = 1; i <= 12; ++i) {
        flow->gen<GButton>(text("flow %1").arg(i));
    }
    GPanel* row = parent->gen_pan_horz(0);
    auto* grid = row->gen<GPanel>(GLAYOUT::GRID);
    grid->set_sunken_border();
    for (int i = 0; i < 4; ++i) {
        auto* button = new GButton(text("grid %1").arg(i + 1));
        static_cast<QGridLayout*>(grid->layout())->addWidget(button, i / 2, i % 2);
    }
    auto* form = row->gen<GPanel>(GLAYOUT::FORM);
    form->set_sunken_border();
    for (const char* name : {"User", "Group"}) {
        auto* edit = new GLineEdit(QString());
        edit->setAccessibleName(text(name));
        static_cast<QFormLayout*>(form->layout())->addRow(text(name), edit);
    }
    gen_stack(row);
    parent->add_widget(new SampleCanvas);
}

void GalleryWindow::gen_stack(GPanel* parent) {
    GPanel* column = parent->gen_pan_vert(0);
    GPanel* stack = column->gen_pan_stacked(0);
    std::vector<QWidget*> pages;
    for (int i = 1; i <= 3; ++i) {
        pages.push_back(stack->gen<GLabel>(text("page %1 of a stack").arg(i)));
    }
    auto* next = column->gen<GButton>(text("next page"));
    next->clicked_listener += [stack, pages] {
        const auto current = std::find(pages.begin(), pages.end(), stack->current_stacked_widget());
        stack->show_stacked_widget(current + 1 == pages.end() ? pages.front() : *(current + 1));
    };
}

void GalleryWindow::gen_controls(GPanel* parent) {
    GPanel* row = parent->gen_pan_horz(0);
    log_panel_control_icons(row, text("^icons/wheel.svg"), text("Options"));
    row->gen<GButton>(text("^icons/expand.svg"), text("Toggle Fullscreen"))->clicked_listener +=
        [this] {
            on_toggle_fullscreen();
        };
    row->gen<GButton>(text("next theme"))->clicked_listener += [this] {
        on_rotate_themes();
    };
    row->gen<GButton>(text("log lines"))->clicked_listener += [this] {
        write_a_line_of_each_level();
    };
    row->gen_spacer_horz();
    row->set_growable_horizontal();
}

void GalleryWindow::write_a_line_of_each_level() {
    ze::pp_error("an error");
    ze::pp_warn("a warning");
    ze::pp_info("an information");
    ze::pp("a debug line");
    ze::pp_trace("a trace line");
}

void GalleryWindow::save_pictures(const QString& folder) {
    ze::log::set_log_level(ze::log::TRACE);
    get_panel_log_view()->config.logLevel = ze::log::TRACE;
    save_next_picture(folder, 0);
}

void GalleryWindow::save_next_picture(const QString& folder, int picture) {
    const int pages = tabs->count();
    const auto theme = static_cast<unsigned int>(picture / pages);
    if (theme > themes::GREEN) {
        close();
        return;
    }
    set_theme(theme, 0);
    tabs->setCurrentIndex(picture % pages);
    get_panel_log_view()->clear();
    write_a_line_of_each_level();
    QTimer::singleShot(SETTLE_MS, this, [this, folder, picture] {
        const QString page = tabs->tabText(tabs->currentIndex()).toLower();
        const QString file = QDir(folder).filePath(text("gallery_%1_%2_%3x%4.png")
                                                       .arg(page, get_theme_string())
                                                       .arg(width())
                                                       .arg(height()));
        if (!grab().save(file)) {
            ze::pp_error("cannot save $", file);
            QCoreApplication::exit(1);
            return;
        }
        save_next_picture(folder, picture + 1);
    });
}

}  // namespace gallery
