// The window of the fourth generation, the first one for two clients: it owns the socket and the
// two players, turns field events into wire messages and wire messages into field events, and keeps
// the score. It has no dialog: who plays, and where, stands on the command line.
//
// Window.cpp builds and plays, Window_connect.cpp logs in and pairs.
#pragma once

#include "ze/math/ORIENT2D.h"
#include "ze/net/GWebSocket.h"
#include "ze/qt/GMainWindow.h"

#include "Player.h"

#include <QString>

class QKeyEvent;
class QSpinBox;

namespace ze::net {
class GAbstractMessage;
class GMessage;
class GPlay;
}  // namespace ze::net

namespace ze::qt {
class GButton;
}

namespace vork2d::v4 {

class PlayField;

class Window : public ze::qt::GMainWindow {
public:
    /// Members only; setup() makes the widgets. Reads "user", "pass" and "host" of the command
    /// line.
    Window();
    ~Window() override;

    void setup() override;
    void ini() override;
    void setup_base_hotkeys() override;

    // Play (Window.cpp)

    /// The start button and the Space key: starts a rally or stops it, on both clients. Does
    /// nothing while this client waits for its opponent.
    void on_start_stop();
    /// The ball has left the field on that side: ends the rally and counts the point. Runs on both
    /// clients.
    void on_out_of_field(ze::math::ORIENT2D::Type side);
    /// Brings the controls in line with the state bits of the field.
    void on_play_state_changed();
    /// Swaps the own side and tells the opponent; not during a rally.
    void on_switch_side();
    /// Plays a key event through the field and sends it.
    void send_key_event(const QKeyEvent& event);
    /// Takes the focus from the numbers, so that the arrow keys move the paddles again.
    void on_no_focus();
    /// The interval of the frame timer, milliseconds. It has no effect on the speed of the ball.
    void on_refresh_delay_set(int ms);
    /// The time of travel, milliseconds, on both clients: the divider of the field's width that
    /// gives the speed.
    void on_time_devider_speed_set(int ms);
    void update_player_info();

    // Connection (Window_connect.cpp)

    /// The button "offline": connects, or disconnects when connected.
    void on_connect();
    [[nodiscard]] bool is_local_host() const;
    void on_connected();
    void on_disconnected();
    /// Handles one received object, of any shape.
    void on_object(const QJsonObject& object);
    void on_XMessage(const ze::net::GMessage& message);

    QString user;      ///< "group:name"
    QString password;  ///< sent at login
    QString host;      ///< name of the server
    QString urlDevelopment;
    QString urlServer;
    QString titleBase = QStringLiteral("vork2D/v4");
    ze::net::GWebSocket webSocket;
    PlayField* playField = nullptr;
    ze::qt::GButton* buttonStart = nullptr;
    ze::qt::GButton* buttonConnect = nullptr;
    QSpinBox* spinSpeed = nullptr;
    Player me;
    Player opponent;

private:
    void setup_play_field(ze::qt::GPanel* panMain);
    void setup_pan_buttons(ze::qt::GPanel* panMain);
    void attach_field();
    void attach_socket();
    void bind_arrow(const QString& keys, Qt::Key key, Qt::KeyboardModifiers modifiers);

    void on_field_orient(ze::math::ORIENT2D::Type side);
    void on_field_ball_exit(ze::math::ORIENT2D::Type side);
    void on_field_paddle(const ze::net::GPlay& setPos);
    void on_field_travel(int ms);

    [[nodiscard]] ze::net::GPlay make_play() const;
    void play_local(const ze::net::GPlay& play);
    void send_if_connected(const ze::net::GAbstractMessage& message);
    void pair_with(const QString& name);
};

}  // namespace vork2d::v4
