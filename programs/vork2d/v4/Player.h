// One of the two players as the window knows him: name, side and score.
#pragma once

#include "ze/math/ORIENT2D.h"

#include <QString>

#include <string>

namespace vork2d::v4 {

struct Player {
    unsigned countPoints = 0;  ///< won since the pair came together
    QString name;              ///< full login name "group:user"
    ze::math::ORIENT2D::Type orient = ze::math::ORIENT2D::LEFT;  ///< side this player plays on

    [[nodiscard]] std::string to_string() const;

    void reset();
};

}  // namespace vork2d::v4
