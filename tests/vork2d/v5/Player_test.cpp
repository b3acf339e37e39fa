#include "vork2d/v5/Player.h"

#include "support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
using vork2d::v5::Player;

Player named(const char* name, unsigned points) {
    Player player;
    player.name = QString::fromUtf8(name);
    player.countPoints = points;
    return player;
}

struct NameRow {
    const char* name;
    const char* pure;
    const char* group;
};

TEST(Player, a_full_name_is_cut_at_its_first_colon) {
    const NameRow rows[] = {
        {"group1:Nilo", "Nilo", "group1"},
        {":Nilo", "Nilo", ":Nilo"},
        {"Nilo", "Nilo", "Nilo"},
        {"", "", ""},
        {"a:b:c", "b:c", "a"},
        {"group1:", "", "group1"},
        {":", "", ":"},
    };
    for (const NameRow& row : rows) {
        EXPECT_EQ(named(row.name, 0).get_pure_name().toStdString(), row.pure) << row.name;
        EXPECT_EQ(named(row.name, 0).get_group_name().toStdString(), row.group) << row.name;
    }
}

TEST(Player, the_label_is_the_pure_name_and_the_points) {
    EXPECT_EQ(named("group1:Nilo", 3).get_display_name_points(), QStringLiteral("Nilo:3"));
}

TEST(Player, the_label_of_a_player_without_a_name_is_the_points_alone) {
    EXPECT_EQ(named("", 3).get_display_name_points(), QStringLiteral("3"));
    EXPECT_EQ(named("group1:", 3).get_display_name_points(), QStringLiteral("3"));
}

TEST(Player, a_name_of_one_letter_leaves_three_error_lines_and_is_shown) {
    test::LogCapture log;
    log.expect_error("what ?");
    log.expect_error(" what ?");
    log.expect_error("  what ?");
    EXPECT_EQ(named("group1:N", 7).get_display_name_points(), QStringLiteral("N:7"));
    EXPECT_EQ(log.lines(), (std::vector<std::string>{"what ?", " what ?", "  what ?"}));
}

TEST(Player, text_has_name_side_and_points) {
    Player player = named("group1:Nilo", 12);
    player.orient = ORIENT2D::RIGHT;
    EXPECT_EQ(player.to_string(), "group1:Nilo, RIGHT, countPoints:12");
}

TEST(Player, reset_forgets_name_points_and_side) {
    Player player = named("group1:Nilo", 12);
    player.orient = ORIENT2D::RIGHT;
    player.reset();
    EXPECT_EQ(player.to_string(), ", LEFT, countPoints:0");
}

}  // namespace
