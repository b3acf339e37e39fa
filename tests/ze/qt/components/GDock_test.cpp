#include "ze/qt/components/GDock.h"

#include "support/LogCapture.h"

#include <QAbstractButton>
#include <QMainWindow>

#include <string>
#include <vector>

using ze::qt::GDock;

TEST(GDock, areas_and_features_have_their_words) {
    EXPECT_EQ(GDock::dock_area_to_string(Qt::LeftDockWidgetArea), "Left");
    EXPECT_EQ(GDock::dock_area_to_string(Qt::RightDockWidgetArea), "Right");
    EXPECT_EQ(GDock::dock_area_to_string(Qt::TopDockWidgetArea), "Top");
    EXPECT_EQ(GDock::dock_area_to_string(Qt::BottomDockWidgetArea), "Bottom");
    EXPECT_EQ(GDock::dock_area_to_string(Qt::NoDockWidgetArea), "None");
    EXPECT_EQ(GDock::dock_area_to_string(Qt::AllDockWidgetAreas), "Unknown");
    EXPECT_EQ(GDock::features_to_string(QDockWidget::NoDockWidgetFeatures), "NoDockWidgetFeatures");
    EXPECT_EQ(
        GDock::features_to_string(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable |
                                  QDockWidget::DockWidgetFloatable),
        "Closable | Movable | Floatable");
    EXPECT_EQ(GDock::features_to_string(QDockWidget::DockWidgetFloatable), "Floatable");
}

TEST(GDock, afloat_it_follows_the_colours_of_its_window) {
    test::LogCapture log;
    log.ignore("");
    QMainWindow window;
    auto* const dock = new GDock(QStringLiteral("Dock"), &window);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    dock->setFloating(true);
    window.setPalette(Qt::darkGreen);
    EXPECT_EQ(dock->palette().color(QPalette::Window), window.palette().color(QPalette::Window));
}

TEST(GDock, its_buttons_have_a_name_a_tool_tip_and_the_tab_key) {
    const GDock dock(QStringLiteral("Dock"));
    const auto buttons = dock.findChildren<QAbstractButton*>();
    EXPECT_EQ(buttons.size(), 2);
    for (const auto* const button : buttons) {
        EXPECT_FALSE(button->accessibleName().isEmpty());
        EXPECT_EQ(button->toolTip(), button->accessibleName());
        EXPECT_EQ(button->focusPolicy(), Qt::TabFocus);
    }
}

TEST(GDock, each_signal_is_logged_and_reaches_its_listener) {
    test::LogCapture log;
    log.ignore("Listener::~Listener");
    GDock dock(QStringLiteral("Dock"));
    std::vector<std::string> calls;
    dock.allowed_areas_listener += [&calls](const Qt::DockWidgetAreas&) {
        calls.emplace_back("areas");
    };
    dock.location_listener += [&calls](const Qt::DockWidgetArea&) {
        calls.emplace_back("location");
    };
    dock.features_listener += [&calls](const QDockWidget::DockWidgetFeatures&) {
        calls.emplace_back("features");
    };
    dock.top_level_listener += [&calls](const bool&) {
        calls.emplace_back("top level");
    };
    dock.visibility_listener += [&calls](const bool&) {
        calls.emplace_back("visibility");
    };

    dock.setAllowedAreas(Qt::LeftDockWidgetArea);
    Q_EMIT dock.dockLocationChanged(Qt::LeftDockWidgetArea);
    dock.setFeatures(QDockWidget::DockWidgetClosable);
    Q_EMIT dock.topLevelChanged(true);
    Q_EMIT dock.visibilityChanged(false);

    EXPECT_EQ(calls, (std::vector<std::string>{"areas", "location", "features", "top level",
                                               "visibility"}));
    EXPECT_EQ(
        log.lines_with_level(),
        (std::vector<std::string>{"DEB dockLocationChanged: Left", "DEB featuresChanged: Closable",
                                  "DEB topLevelChanged: true", "DEB visibilityChanged: false"}));
}
