// The rules pinned by one number: whoever changes a rule, even by a percent, sees it here. A change
// that is wanted changes the number, and every client has to change with it.
#include "vork2d/v5/FieldFixture.h"
#include "vork2d/v5/PlayStats.h"

#include <QKeySequence>

#include <bit>
#include <cstdint>

namespace {

namespace ORIENT2D = ze::math::ORIENT2D;
using vork2d::v5::playStats;

/// FNV-1a over the bits of floats.
class FloatHash {
public:
    void add(float value) {
        const auto bits = std::bit_cast<std::uint32_t>(value);
        for (unsigned shift = 0; shift < 32; shift += 8) {
            hash = (hash ^ ((bits >> shift) & 0xFFU)) * 0x100000001B3U;
        }
    }
    void add(glm::vec2 value) {
        add(value.x);
        add(value.y);
    }

    std::uint64_t hash = 0xCBF29CE484222325U;
};

class NextFrameGolden : public test::FieldTest {
protected:
    FloatHash hash;
    unsigned hits = 0;
    unsigned serves = 0;

    void serve() {
        hits += playStats.all_hits();
        field.on_play(serves % 2 == 0 ? ORIENT2D::LEFT : ORIENT2D::RIGHT, 400 + 150 * (serves % 7));
        ++serves;
    }

    /// The paddles meet the ball a little beside their middle, another little each time, and are
    /// put back into the field by a key step; the players miss one ball in eight.
    void play(int step) {
        const float beside = static_cast<float>(step * 37 % 89 - 44);
        const float miss = step % 8 == 0 ? 150.0f : 0.0f;
        vork2d::v5::Paddle& paddle =
            field.ball.is_dir_left() ? field.paddleLeft : field.paddleRight;
        paddle.pos.y = field.ball.pos.y + beside + miss;
        field.on_key_sequence(QKeySequence(step % 2 == 0 ? Qt::Key_Up : Qt::Key_Down), true,
                              ze::net::LOCAL);
    }
};

TEST_F(NextFrameGolden, a_thousand_steps_end_where_they_always_did) {
    hash.add(field.ball.dir);
    hash.add(field.ball.velocity);
    log.ignore("Play");
    serve();
    for (int step = 0; step < 1000; ++step) {
        if (!field.is_state_PLAY()) {
            serve();
        }
        play(step);
        field.next_frame(static_cast<float>(1 + step % 33) / 1000.0f);
        hash.add(field.ball.pos);
        hash.add(field.ball.dir);
        hash.add(field.ball.travelDistance);
        hash.add(field.paddleLeft.pos);
        hash.add(field.paddleRight.pos);
    }
    // The steps are worth pinning: there is enough to see in them.
    EXPECT_GT(hits, 30U);
    EXPECT_GT(serves, 4U);
    EXPECT_EQ(hash.hash, 1519366043235485065U);
}

}  // namespace
