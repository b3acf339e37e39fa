// When a sound plays and when the field stays silent. The loudspeaker is not the matter here.
#include "ze/qt/GSoundEffect.h"

#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/game_sound.h"
#include "vork2d/v5/sounds.h"

#include <QFile>
#include <QTest>
#include <QUrl>

#include <string>
#include <utility>
#include <vector>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
namespace sounds = vork2d::v5::sounds;
using vork2d::v5::gSound;
using vork2d::v5::gSoundEndless;

using Texts = std::vector<std::string>;

std::string played(const char* name) {
    return std::string("PlayField::play_sound ** <<<:/wb/shared-res/sounds/") + name + ".wav>>>";
}

class PlayFieldSound : public test::FieldTest {
protected:
    ~PlayFieldSound() override {
        // A process that ends while Qt's thread still loads a sample leaks what the thread holds.
        EXPECT_TRUE(QTest::qWaitFor(
            [] { return gSound == nullptr || gSound->status() != QSoundEffect::Loading; }));
    }

    [[nodiscard]] Texts requests() const { return lines_from("PlayField::play_sound"); }
};

TEST_F(PlayFieldSound, with_the_sound_off_no_effect_is_made) {
    delete std::exchange(gSound, nullptr);
    field.flagSound = false;
    field.play_sound(sounds::START);
    EXPECT_EQ(gSound, nullptr);
    EXPECT_EQ(log.lines(), Texts());
}

TEST_F(PlayFieldSound, the_first_sound_makes_the_effect_and_the_next_one_takes_it) {
    delete std::exchange(gSound, nullptr);
    field.flagSound = true;
    field.play_sound(sounds::WALL_HIT);
    const auto* const first = gSound;
    ASSERT_NE(first, nullptr);
    field.play_sound(sounds::PADDLE_HIT);
    EXPECT_EQ(gSound, first);
    EXPECT_EQ(requests(), (Texts{played("Blop1"), played("Blop2")}));
    EXPECT_EQ(gSound->source(), QUrl(QStringLiteral("qrc:/wb/shared-res/sounds/Blop2.wav")));
}

TEST_F(PlayFieldSound, silence_is_not_looped_on_a_desktop) {
    field.flagSound = true;
    field.play_sound(sounds::WALL_HIT);
    EXPECT_EQ(gSoundEndless, nullptr);
}

TEST_F(PlayFieldSound, a_missing_file_leaves_a_warning_a_call) {
    field.flagSound = true;
    field.play_sound(QStringLiteral(":/no/such.wav"));
    field.play_sound(QStringLiteral(":/no/such.wav"));
    EXPECT_NE(gSound, nullptr);
    EXPECT_EQ(lines_from("PanelThreaded::play_sound, does not exist ':/no/such.wav'").size(), 2U);
}

struct SpeedRow {
    unsigned long long ms;
    bool audible;
};

TEST_F(PlayFieldSound, a_fast_game_is_silent) {
    field.flagSound = true;
    const SpeedRow rows[] = {{1, false},  {500, false}, {989, false}, {990, false},
                             {991, true}, {1000, true}, {5000, true}};
    for (const SpeedRow& row : rows) {
        field.set_tm_travel(row.ms);
        log.clear();
        field.play_sound(sounds::WALL_HIT);
        EXPECT_EQ(!requests().empty(), row.audible) << row.ms;
    }
}

TEST_F(PlayFieldSound, a_start_plays_on_both_clients) {
    field.flagSound = true;
    for (const auto owner : {ze::net::LOCAL, ze::net::REMOTE}) {
        log.clear();
        field.on_play_message(test::start_message(ORIENT2D::LEFT, 5000), owner);
        EXPECT_EQ(requests(), Texts{played("Swirl2")});
    }
}

TEST_F(PlayFieldSound, a_fast_start_is_silent_too) {
    field.flagSound = true;
    field.on_play_message(test::start_message(ORIENT2D::LEFT, 990), ze::net::LOCAL);
    EXPECT_EQ(requests(), Texts());
}

TEST_F(PlayFieldSound, walls_and_paddles_sound_different_on_the_master) {
    field.flagSound = true;
    fly({0, 190}, {0.6f, 0.8f}, 100);
    field.next_frame(0.5f);
    fly({0, -190}, {0.6f, -0.8f}, 100);
    field.next_frame(0.5f);
    const Texts walls = requests();
    fly({360, 0}, {1, 0}, 100);
    field.next_frame(0.5f);
    EXPECT_EQ(walls, Texts{played("Blop1")});
    EXPECT_EQ(requests(), Texts{played("Blop2")});
}

TEST_F(PlayFieldSound, two_hits_in_a_frame_ask_for_two_sounds) {
    field.flagSound = true;
    fly({365, 190}, {0.6f, 0.8f}, 100);
    field.paddleRight.pos.y = 160;
    field.next_frame(0.5f);
    EXPECT_EQ(requests(), (Texts{played("Blop1"), played("Blop2")}));
    EXPECT_EQ(gSound->source(), QUrl(QStringLiteral("qrc:/wb/shared-res/sounds/Blop2.wav")));
}

TEST_F(PlayFieldSound, a_follower_hits_nothing_and_is_silent) {
    make_follower();
    field.flagSound = true;
    fly({0, 190}, {0.6f, 0.8f}, 100);
    field.next_frame(0.5f);
    EXPECT_EQ(requests(), Texts());
}

TEST_F(PlayFieldSound, every_sound_of_the_game_is_in_the_resource_tree) {
    for (const QString& path :
         {sounds::START, sounds::WALL_HIT, sounds::PADDLE_HIT, sounds::POINT_WON,
          sounds::POINT_LOST, sounds::ENTER_ROOM, sounds::LEFT_ROOM, sounds::CHAT, sounds::QUIET}) {
        EXPECT_TRUE(QFile::exists(path)) << path.toStdString();
    }
}

}  // namespace
