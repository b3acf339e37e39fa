// One of the two players as the window knows him: name, side and score.
#pragma once

#include "ze/math/ORIENT2D.h"

#include <QString>

#include <string>

namespace vork2d::v5 {

struct Player {
    unsigned countPoints = 0;  ///< won since the pair came together
    QString name;              ///< full login name "group:user"
    ze::math::ORIENT2D::Type orient = ze::math::ORIENT2D::LEFT;  ///< side this player plays on

    [[nodiscard]] std::string to_string() const;

    /// The part behind the first colon of the name; the whole name when it has no colon.
    [[nodiscard]] QString get_pure_name() const;

    /// The part before the first colon of the name; the whole name when that part is empty or when
    /// there is no colon.
    [[nodiscard]] QString get_group_name() const;

    /// Pure name and points as the labels of the field show them, the points alone without a name.
    [[nodiscard]] QString get_display_name_points() const;

    void reset();
};

}  // namespace vork2d::v5
