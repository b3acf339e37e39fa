#include "ze/qt/event/wheel.h"

#include "ze/qt/event/mod.h"
#include "ze/tools/format.h"

#include <QWheelEvent>

namespace ze::qt::event::wheel {

bool is_forward(const QWheelEvent* ev) noexcept {
    return ev != nullptr && ev->angleDelta().y() > 0;
}

std::string to_string(const QWheelEvent* ev) {
    if (ev == nullptr) {
        return "nullptr";
    }
    return str::xprintF(0, "WHEEL angle:$, pos:$, mod:$", ev->angleDelta(),
                        ev->position().toPoint(), mod::to_string(ev));
}

}  // namespace ze::qt::event::wheel
