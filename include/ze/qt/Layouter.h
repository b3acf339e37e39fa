// The interface that passes layout events down from a window to its panels.
#pragma once

namespace ze::qt {

struct LayoutEvent;

class Layouter {
public:
    virtual ~Layouter() = default;

    /// Adapts to the event and passes it on to the own children that are layouters.
    virtual void do_layout(LayoutEvent& ev) = 0;
};

}  // namespace ze::qt
