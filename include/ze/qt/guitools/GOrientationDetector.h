// Tells when the primary screen has been turned or resized.
#pragma once

#include "ze/tools/Listener.h"

#include <QObject>

class QRect;
class QScreen;

namespace ze::qt {

/// Attach to it directly: it is the listener. It carries the orientation of the kept screen size
/// (see dim.h), which stays that of the first question until somebody resets it.
class GOrientationDetector : public QObject, public Listener<Qt::Orientation> {
public:
    GOrientationDetector();

    using Listener<Qt::Orientation>::operator=;

private:
    void on_geometry_changed(const QRect& rect);

    QScreen* screen;
};

}  // namespace ze::qt
