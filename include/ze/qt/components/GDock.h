// A dock that reports through listeners and passes layout events on to its content.
#pragma once

#include "ze/qt/Layouter.h"
#include "ze/tools/Listener.h"

#include <QDockWidget>

#include <string>

namespace ze::qt {

class GDock : public QDockWidget, public Layouter {
public:
    Listener<Qt::DockWidgetAreas> allowed_areas_listener;
    Listener<Qt::DockWidgetArea> location_listener;
    Listener<QDockWidget::DockWidgetFeatures> features_listener;
    Listener<bool> top_level_listener;
    Listener<bool> visibility_listener;

    explicit GDock(const QString& title, QWidget* parent = nullptr);

    void do_layout(LayoutEvent& ev) override;

    /// "Left", "Right", "Top", "Bottom", "None", or "Unknown" for several areas at once.
    [[nodiscard]] static std::string dock_area_to_string(Qt::DockWidgetArea area);

    /// The words "Closable", "Movable" and "Floatable" joined by " | ", or "NoDockWidgetFeatures".
    [[nodiscard]] static std::string features_to_string(QDockWidget::DockWidgetFeatures features);

private:
    void connect_listeners();
};

}  // namespace ze::qt
