#include "Player.h"

#include "ze/tools/format.h"

namespace vork2d::v4 {

std::string Player::to_string() const {
    return ze::str::xprintF(0, "$, $, countPoints:$", name, ze::math::ORIENT2D::to_string(orient),
                            countPoints);
}

void Player::reset() {
    *this = Player{};
}

}  // namespace vork2d::v4
