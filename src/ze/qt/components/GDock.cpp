#include "ze/qt/components/GDock.h"

#include "ze/log/pp.h"

#include <QAbstractButton>

#include <array>
#include <utility>

namespace ze::qt {

GDock::GDock(const QString& title, QWidget* parent) : QDockWidget(title, parent) {
    setAttribute(Qt::WA_WindowPropagation);  // afloat it is a window, and keeps the theme
    // Qt gives the two buttons of the title their names and leaves them to the mouse alone.
    for (auto* const button : findChildren<QAbstractButton*>()) {
        button->setToolTip(button->accessibleName());
        button->setFocusPolicy(Qt::TabFocus);
    }
    connect_listeners();
}

void GDock::connect_listeners() {
    connect(this, &QDockWidget::allowedAreasChanged, this, [this](Qt::DockWidgetAreas areas) {
        allowed_areas_listener.fire_event(areas, FIRE_DIRECT);
    });
    connect(this, &QDockWidget::dockLocationChanged, this, [this](Qt::DockWidgetArea area) {
        pp("dockLocationChanged: $", dock_area_to_string(area));
        location_listener.fire_event(area, FIRE_DIRECT);
    });
    connect(this, &QDockWidget::featuresChanged, this,
            [this](QDockWidget::DockWidgetFeatures features) {
                pp("featuresChanged: $", features_to_string(features));
                features_listener.fire_event(features, FIRE_DIRECT);
            });
    connect(this, &QDockWidget::topLevelChanged, this, [this](bool flag) {
        pp("topLevelChanged: $", flag);
        top_level_listener.fire_event(flag, FIRE_DIRECT);
    });
    connect(this, &QDockWidget::visibilityChanged, this, [this](bool flag) {
        pp("visibilityChanged: $", flag);
        visibility_listener.fire_event(flag, FIRE_DIRECT);
    });
}

void GDock::do_layout(LayoutEvent& ev) {
    if (auto* const layouter = dynamic_cast<Layouter*>(widget())) {
        layouter->do_layout(ev);
    }
}

std::string GDock::dock_area_to_string(Qt::DockWidgetArea area) {
    switch (area) {
        case Qt::LeftDockWidgetArea:
            return "Left";
        case Qt::RightDockWidgetArea:
            return "Right";
        case Qt::TopDockWidgetArea:
            return "Top";
        case Qt::BottomDockWidgetArea:
            return "Bottom";
        case Qt::NoDockWidgetArea:
            return "None";
        default:
            return "Unknown";
    }
}

std::string GDock::features_to_string(QDockWidget::DockWidgetFeatures features) {
    using Word = std::pair<QDockWidget::DockWidgetFeature, const char*>;
    static constexpr std::array WORDS{Word{QDockWidget::DockWidgetClosable, "Closable"},
                                      Word{QDockWidget::DockWidgetMovable, "Movable"},
                                      Word{QDockWidget::DockWidgetFloatable, "Floatable"}};
    std::string text;
    for (const auto& [feature, word] : WORDS) {
        if (features.testFlag(feature)) {
            text += text.empty() ? "" : " | ";
            text += word;
        }
    }
    return text.empty() ? "NoDockWidgetFeatures" : text;
}

}  // namespace ze::qt
