#include "ze/qt/guitools/GOrientationDetector.h"

#include "ze/qt/guitools/dim.h"

#include "support/LogCapture.h"

#include <QGuiApplication>
#include <QScreen>

TEST(GOrientationDetector, a_turned_screen_fires_the_orientation_of_the_kept_size) {
    test::LogCapture log;
    log.ignore("Listener::~Listener");
    ze::qt::dim::optSize = QSize(800, 600);
    ze::qt::GOrientationDetector detector;
    std::vector<Qt::Orientation> fired;
    detector += [&fired](const Qt::Orientation& orientation) {
        fired.push_back(orientation);
    };

    Q_EMIT QGuiApplication::primaryScreen()->geometryChanged(QRect(0, 0, 600, 800));

    ze::qt::dim::optSize = QSize(600, 800);
    Q_EMIT QGuiApplication::primaryScreen()->geometryChanged(QRect(0, 0, 800, 600));

    EXPECT_EQ(fired, (std::vector<Qt::Orientation>{Qt::Horizontal, Qt::Vertical}));
    EXPECT_EQ(log.lines_with_level(),
              (std::vector<std::string>{"DEB ORIENTATION CHANGED", "DEB RECT:0,0,600,800",
                                        "DEB ORIENTATION CHANGED", "DEB RECT:0,0,800,600"}));
    ze::qt::dim::optSize.reset();
}
