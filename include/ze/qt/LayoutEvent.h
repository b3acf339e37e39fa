// What a window tells its panels when their room or their font has changed.
#pragma once

#include <QSize>

namespace ze::qt {

struct LayoutEvent {
    enum Reason : int { FIRST_SHOW = 0, RESIZE = 1, FONT_CHANGE = 2 };

    QSize size;  ///< the window's size in pixels
    /// The window's font size in points. A font in pixels gives these, and -1 on a resize.
    int fontSize = 0;
    int reason = FIRST_SHOW;
};

}  // namespace ze::qt
