#include "ze/qt/guitools/GOrientationDetector.h"

#include "ze/log/pp.h"
#include "ze/qt/guitools/dim.h"

#include <QGuiApplication>
#include <QRect>
#include <QScreen>

namespace ze::qt {

GOrientationDetector::GOrientationDetector() : screen(QGuiApplication::primaryScreen()) {
    if (screen != nullptr) {
        connect(screen, &QScreen::geometryChanged, this,
                [this](const QRect& rect) { on_geometry_changed(rect); });
    }
}

void GOrientationDetector::on_geometry_changed(const QRect& rect) {
    pp("ORIENTATION CHANGED");
    pp("RECT:$", rect);
    fire_event(dim::get_orientation(), FIRE_DIRECT);
}

}  // namespace ze::qt
