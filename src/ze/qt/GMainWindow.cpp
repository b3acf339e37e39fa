#include "ze/qt/GMainWindow.h"

#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/qt/GMainPanel.h"
#include "ze/qt/components/GDock.h"
#include "ze/qt/components/GMenuBar.h"
#include "ze/qt/components/GStatusBar.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/tools/format.h"
#include "ze/tools/rnd.h"

namespace ze::qt {

namespace {

constexpr unsigned NAME_LENGTH = 8;

}  // namespace

GMainWindow::GMainWindow(QWidget* parent, Qt::WindowFlags flags)
    : BaseWindow(parent, flags), StringSetter<BaseWindow>(this) {
    setAcceptDrops(true);
    setObjectName(ze::rnd::next_QString(NAME_LENGTH, true));
}

GMainWindow::~GMainWindow() {
    ze::pp("GMainWindow::~GMainWindow");
    identity.reset();  // first of all, so that the next window can take the number over
}

QString GMainWindow::get_object_name() const {
    return identity == nullptr ? objectName() : identity->get_complete_name();
}

QString GMainWindow::get_type_name() {
    return QStringLiteral("GMainWindow");
}

QString GMainWindow::to_string() const {
    const QString name = objectName();
    return name.isEmpty() ? QStringLiteral("GMainWindow") : str::qprintF("GMainWindow@$", name);
}

void GMainWindow::post(std::function<void()> call) {
    // The window may be gone by the time the event loop turns.
    invoke_later([alive = QPointer<GMainWindow>(this), call = std::move(call)] {
        if (alive != nullptr) {
            call();
        }
    });
}

GMainPanel* GMainWindow::gen_main_panel(GLAYOUT kind) {
    if (dynamic_cast<GMainPanel*>(centralWidget()) != nullptr) {
        ze::pp_error("GMainWindow::gen_main_panel, already called!");
    }
    auto* panel = new GMainPanel(kind);
    setCentralWidget(panel);
    panel->setObjectName(QStringLiteral("main"));
    return panel;
}

GPanel* GMainWindow::get_main_panel() const {
    if (centralWidget() == nullptr) {
        ze::pp_warn("GMainWindow::get_main_panel, centralWidget() == nullpr");
        return nullptr;
    }
    auto* panel = dynamic_cast<GPanel*>(centralWidget());
    if (panel == nullptr) {
        ze::nullPointerHandling("src/ze/qt/GMainWindow", __LINE__, QStringLiteral("pan == NULL"));
    }
    return panel;
}

std::vector<QWidget*> GMainWindow::get_children(bool onlyVisible) const {
    std::vector<QWidget*> found;
    for (QWidget* widget : findChildren<QWidget*>()) {
        if (widget->isVisible() || !onlyVisible) {
            found.push_back(widget);
        }
    }
    return found;
}

void GMainWindow::report_many_hits(const QString& name, std::size_t hits) {
    ze::pp_format(log::DEBUG, 0,
                  "GMainWindow::find_widget, return first found object '$' but we have $ hits",
                  name, hits);
}

GMainWindow* GMainWindow::from_widget(const QWidget* widget) {
    return get_main_window(widget);
}

GMenuBar* GMainWindow::gen_menu_bar() {
    auto* bar = new GMenuBar(this);
    setMenuBar(bar);
    return bar;
}

GStatusBar* GMainWindow::gen_status_bar() {
    auto* bar = new GStatusBar(this);
    setStatusBar(bar);
    return bar;
}

GDock* GMainWindow::gen_dock(const QString& name, const QString& title, Qt::DockWidgetAreas areas) {
    auto* dock = new GDock(title, this);
    dock->setObjectName(name);
    dock->setAllowedAreas(areas);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    return dock;
}

}  // namespace ze::qt
