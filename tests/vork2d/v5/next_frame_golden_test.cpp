// The field of the game plays by the very rules of the bare rally: the same rallies come to the
// same numbers.
#include "vork2d/rally/scripted_rally.h"
#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PlayStats.h"

#include <QKeySequence>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
using vork2d::rally::SIDE;

class FieldGame {
public:
    explicit FieldGame(vork2d::v5::PlayField& theField) : field(theField) {}

    vork2d::v5::Ball& ball() { return field.ball; }
    vork2d::v5::Paddle& paddle(SIDE side) {
        return side == SIDE::LEFT ? field.paddleLeft : field.paddleRight;
    }
    void start(SIDE side, unsigned long long msTravel) {
        field.on_play(side == SIDE::LEFT ? ORIENT2D::LEFT : ORIENT2D::RIGHT, msTravel);
    }
    [[nodiscard]] bool is_playing() const { return field.is_state_PLAY(); }
    void step_left_paddle(bool up) {
        field.on_key_sequence(QKeySequence(up ? Qt::Key_Up : Qt::Key_Down), true, ze::net::LOCAL);
    }
    void frame(float dt) { field.next_frame(dt); }
    [[nodiscard]] unsigned all_hits() const { return vork2d::v5::playStats.all_hits(); }

private:
    vork2d::v5::PlayField& field;
};

class NextFrameGolden : public test::FieldTest {
protected:
    FieldGame game{field};
};

TEST_F(NextFrameGolden, a_thousand_steps_end_where_they_always_did) {
    log.ignore("Play");
    const test::RallyTrace trace = test::play_golden(game);
    EXPECT_EQ(trace.hash.hash, test::GOLDEN_HASH);
}

TEST_F(NextFrameGolden, a_hundred_thousand_random_frames_end_where_they_always_did) {
    log.set_enabled(false);  // at such speeds balls leave in every way there is
    const test::RallyTrace trace = test::play_random(game);
    EXPECT_EQ(trace.hash.hash, test::RANDOM_HASH);
}

}  // namespace
