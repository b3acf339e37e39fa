// What a window tells its panels when their room or their font has changed.
#pragma once

#include <QSize>

namespace ze::qt {

struct LayoutEvent {
    enum Reason : int { FIRST_SHOW = 0, RESIZE = 1, FONT_CHANGE = 2 };

    QSize size;        ///< the window's size in pixels
    int fontSize = 0;  ///< the window's font size, in points where the font has them
    int reason = FIRST_SHOW;
};

}  // namespace ze::qt
