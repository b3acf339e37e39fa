#include "vork2d/v4/Player.h"

#include "vork2d/v4/PLAY_STATE.h"

#include <gtest/gtest.h>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
namespace PLAY_STATE = vork2d::v4::PLAY_STATE;
using vork2d::v4::Player;

TEST(PlayerV4, text_has_name_side_and_points) {
    const Player player{3, QStringLiteral("group1:Nilo"), ORIENT2D::RIGHT};
    EXPECT_EQ(player.to_string(), "group1:Nilo, RIGHT, countPoints:3");
}

TEST(PlayerV4, reset_forgets_everything) {
    Player player{3, QStringLiteral("group1:Nilo"), ORIENT2D::RIGHT};
    player.reset();
    EXPECT_EQ(player.to_string(), ", LEFT, countPoints:0");
}

TEST(PlayStateV4, text_joins_the_words_of_the_bits_that_are_set) {
    EXPECT_EQ(PLAY_STATE::to_string(0), "");
    EXPECT_EQ(PLAY_STATE::to_string(8), "RUN");
    EXPECT_EQ(PLAY_STATE::to_string(14), "CONNECTED1 | CONNECTED2 | RUN");
}

}  // namespace
