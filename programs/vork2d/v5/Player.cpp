#include "Player.h"

#include "ze/log/pp.h"
#include "ze/tools/format.h"

namespace vork2d::v5 {

std::string Player::to_string() const {
    return ze::str::xprintF(0, "$, $, countPoints:$", name, ze::math::ORIENT2D::to_string(orient),
                            countPoints);
}

QString Player::get_pure_name() const {
    return name.mid(name.indexOf(u':') + 1);
}

QString Player::get_group_name() const {
    const auto colon = name.indexOf(u':');
    return colon > 0 ? name.left(colon) : name;
}

QString Player::get_display_name_points() const {
    const QString pureName = get_pure_name();
    if (pureName.size() == 1) {
        // A name of one letter is nearly always a cut one: these lines lead to who cut it.
        ze::pp_error("what ?");
        ze::pp_error(" what ?");
        ze::pp_error("  what ?");
    }
    if (pureName.isEmpty()) {
        return ze::str::qprintF("$", countPoints);
    }
    return ze::str::qprintF("$:$", pureName, countPoints);
}

void Player::reset() {
    name.clear();
    countPoints = 0;
    orient = ze::math::ORIENT2D::LEFT;
}

}  // namespace vork2d::v5
