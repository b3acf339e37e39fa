// The field of the fourth generation: two clients play one rally. What changes the game passes
// through on_play_message, on both clients alike, and each client then computes the whole rally for
// itself; the two balls are never compared. The client that has lost the ball is the one that says
// so. The score is the window's.
//
// Coordinates are field units: origin in the middle, x to the right, y upward. Main thread only.
#pragma once

#include "ze/math/ORIENT2D.h"
#include "ze/net/CONTROL_OWNER.h"
#include "ze/net/GPlay.h"
#include "ze/qt/GCanvas.h"
#include "ze/qt/components/GTimer.h"
#include "ze/tools/Listener.h"

#include "Ball.h"
#include "Paddle.h"
#include "vork2d/early/PlayStats.h"

#include <QString>

#include <optional>

class QKeySequence;
class QMouseEvent;

namespace ze::net {
class IConnectionState;
class PlayMessage;
}  // namespace ze::net

namespace ze::qt {
class GSoundEffect;
}

namespace vork2d::v4 {

struct HitInfo;

class PlayField : public ze::qt::GCanvas {
public:
    /// A field of w by h field units. The connection is not owned and outlives the field.
    PlayField(float w, float h, ze::net::IConnectionState& theConnection);
    ~PlayField() override;

    // Rally (PlayField.cpp)

    /// Sets the time of travel, milliseconds, and with it the speed of the ball at once; 0 counts
    /// as 1.
    void set_tm_travel(unsigned long long ms);

    /// The time of travel in milliseconds, limited to 1..10000 although the field may run with
    /// another one.
    [[nodiscard]] unsigned tm_travel() const noexcept;

    /// Starts a rally, also while one runs: the ball leaves the face of the starter's paddle and is
    /// aimed through the top wall at the middle of the other one. Any side but LEFT serves from the
    /// right. msTravel is as in set_tm_travel.
    void on_play(ze::math::ORIENT2D::Type sideStart, unsigned long long msTravel);

    /// Ends the rally by a player's wish; the ball stays where it is.
    void on_stop();

    /// Each sets or clears its bit and reports the change.
    void set_state_RUN(bool flag);
    void set_state_CONNECTED1(bool flag);
    void set_state_CONNECTED2(bool flag);

    [[nodiscard]] bool is_state_RUN() const noexcept;
    [[nodiscard]] bool is_state_CONNECTED1() const noexcept;
    [[nodiscard]] bool is_state_CONNECTED2() const noexcept;
    [[nodiscard]] bool is_state_offline() const noexcept;
    [[nodiscard]] bool is_state_2_players() const noexcept;

    [[nodiscard]] bool is_left_side() const noexcept;

    /// Plays a wav of the resource tree; silent when the sound is off.
    void play_sound(const QString& path);

    /// One tick of the frame timer, msNow being the clock's milliseconds.
    void on_timer(unsigned long long msNow);

    /// Draws the field; rect is the whole view in field units.
    void draw(ze::qt::GPC& gpc, const ze::math::Rect& rect) override;

    // Frame (PlayField_frame.cpp)

    /// Moves the ball by dt seconds from hit to hit, on every client. A dt of 0 or less is reported
    /// and skipped.
    void next_frame(float dt);

    // Input (PlayField_input.cpp)

    void on_mouse_press(const QMouseEvent* ev);
    void on_mouse_drag(const QMouseEvent* ev);

    /// Fires the message that puts the own paddle at the height of pos, kept inside the field.
    void on_move_paddle(const glm::vec2& pos);

    /// The same for the paddle that the ball flies to: one player holds both.
    void on_move_paddle_offline(const glm::vec2& pos);

    /// Moves a paddle by one step for Up and Down; with no connection also the other one for
    /// Ctrl+Up and Ctrl+Down. The owner is the one who pressed the key.
    void on_key_sequence(const QKeySequence& seq, bool pressed, ze::net::CONTROL_OWNER owner);

    /// Takes the y of a "setPos" as it stands.
    void on_set_pos(const ze::net::PlayMessage& msg);

    // Messages (PlayField_messages.cpp)

    /// The one door through which every change of the shared game passes: the own commands with
    /// LOCAL, those of the other client with REMOTE. A payload that is no object is reported and
    /// refused, an unknown command is dropped.
    void on_play_message(const ze::net::GPlay& play, ze::net::CONTROL_OWNER owner);

    ze::Listener<ze::math::ORIENT2D::Type> listenerOrient;      ///< own side changed
    ze::Listener<ze::math::ORIENT2D::Type> listenerBallExit;    ///< the ball left here: tell it
    ze::Listener<ze::math::ORIENT2D::Type> listenerOutOfField;  ///< an "out_of_field" was handled
    ze::Listener<ze::net::CONTROL_OWNER> listenerStart;         ///< who started a rally
    ze::Listener<ze::net::CONTROL_OWNER> listenerStop;          ///< who stopped it
    ze::Listener<ze::net::GPlay> listenerPaddle;                ///< a "setPos" is ready to go out
    ze::Listener<int> listenerTravel;            ///< a "travel" was handled, milliseconds
    ze::Listener<ze::NO_PAYLOAD> listenerState;  ///< the state bits changed
    unsigned state = 0;                          ///< PLAY_STATE bits
    ze::math::ORIENT2D::Type side = ze::math::ORIENT2D::LEFT;  ///< of this client
    QColor colorBackground = Qt::black;
    QString textLeft = QStringLiteral("0");   ///< label at the top left
    QString textRight = QStringLiteral("0");  ///< label at the top right
    bool flagSound = true;
    Ball ball;
    Paddle paddleLeft;
    Paddle paddleRight;
    float tmTravel = early::TM_TRAVEL;  ///< seconds
    ze::qt::GTimer timer;               ///< ticks as long as the field lives

private:
    struct FrameMotion;
    enum class STEP : bool { END_FRAME, GO_ON };

    [[nodiscard]] float left() const noexcept;
    [[nodiscard]] float right() const noexcept;
    [[nodiscard]] float top() const noexcept;
    [[nodiscard]] float bottom() const noexcept;

    void set_state_bit(unsigned bit, bool flag);
    void serve(ze::math::ORIENT2D::Type sideStart);
    void show_stats();
    void draw_labels(ze::qt::GPC& gpc, const ze::math::Rect& rect) const;

    [[nodiscard]] STEP sub_step(FrameMotion& motion);
    [[nodiscard]] HitInfo find_hit(const FrameMotion& motion, glm::vec2 ptEnd) const;
    [[nodiscard]] HitInfo find_wall_hit(const FrameMotion& motion, glm::vec2 ptEnd) const;
    [[nodiscard]] HitInfo find_paddle_hit(const FrameMotion& motion, glm::vec2 ptEnd) const;
    [[nodiscard]] glm::vec2 bounce(const HitInfo& hit, glm::vec2 vRest, unsigned cGuard);
    [[nodiscard]] glm::vec2 bounce_wall(const HitInfo& hit, glm::vec2 vRest);
    [[nodiscard]] glm::vec2 bounce_paddle(const Paddle& paddle, const HitInfo& hit, glm::vec2 vRest,
                                          unsigned cGuard);
    void check_exit(glm::vec2 posBefore);
    void cut_at_edge(glm::vec2 posBefore, ze::math::ORIENT2D::Type sideExit);
    [[nodiscard]] std::optional<glm::vec2> exit_point(glm::vec2 posBefore, float xHit) const;

    void on_mouse(const QMouseEvent* ev);
    void fire_set_pos(const Paddle& paddle, float y);
    [[nodiscard]] Paddle& paddle_of(ze::net::CONTROL_OWNER owner) noexcept;
    [[nodiscard]] float inside_field(const Paddle& paddle, float y) const noexcept;
    void step_paddle(Paddle& paddle, float step);

    void dispatch(const ze::net::PlayMessage& msg, ze::net::CONTROL_OWNER owner);
    void on_orientation(const ze::net::PlayMessage& msg);
    void on_start(const ze::net::PlayMessage& msg, ze::net::CONTROL_OWNER owner);
    void on_travel(const ze::net::PlayMessage& msg);

    unsigned long long tmLastFrame = 0;  ///< milliseconds; 0 means none
    ze::net::IConnectionState& connection;
};

/// The rally that runs or ran last; main thread only.
extern early::PlayStats playStats;

/// Plays every sound. Null until the first one; never deleted, since Qt may still load a sample for
/// it when the field goes. Main thread only.
extern ze::qt::GSoundEffect* gSound;

}  // namespace vork2d::v4
