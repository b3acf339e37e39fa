// The program's one window, where everything meets: it builds the panels, owns the socket and the
// two players, turns field events into wire messages and wire messages into field events, and keeps
// the score. The rules of the game live in PlayField.
//
// Its source is split by subject: Window.cpp builds and plays, Window_connect.cpp logs in, pairs
// and chats, Window_hotkeys.cpp binds the keys, Window_info.cpp tells the player things,
// Window_menu_options.cpp is the menu.
#pragma once

#include "ze/net/GWebSocket.h"
#include "ze/qt/GMainWindow.h"

#include "Player.h"

#include <QColor>
#include <QPointer>
#include <QString>

class QKeyEvent;

namespace ze::net {
class GAbstractMessage;
class GMessage;
class GPlay;
}  // namespace ze::net

namespace ze::qt {
class GButton;
class GLabel;
class GLineEdit;
class GListView;
class GMenu;
class GPanel;
class GSplitter;
}  // namespace ze::qt

namespace vork2d::v5 {

class DialogConnection;
class PlayField;

class Window : public ze::qt::GMainWindow {
public:
    /// Members only; setup() makes the widgets.
    Window();
    ~Window() override;

    // --- start
    void setup() override;
    void setup_base_hotkeys() override;
    void ini() override;
    void on_menu_options() override;
    void on_change_theme(unsigned theme) override;
    /// Stores the login; with the flag set it also connects, as soon as the event loop turns.
    void post_after_ini(const QString& userName, const QString& pass, const QString& hostName,
                        bool flagLogin);
    /// Lets the field adapt its width to a small screen.
    void check_playfield_size();
    /// Does so from now on when the screen turns, for as long as the window lives.
    void follow_orientation(ze::Listener<Qt::Orientation>& screen);

    // --- play
    /// The start button and the Space key: starts a rally, stops it, or, alone on the server, shows
    /// the invitation.
    void on_start_stop();
    /// The ball has left the field on that side: ends the rally and counts the point. Runs on both
    /// clients.
    void on_confirmed_out_of_field(ze::math::ORIENT2D::Type side);
    /// Brings the controls in line with the state bits of the field; everything else only sets the
    /// bits.
    void on_play_state_changed();
    /// Swaps the own side and tells the opponent; not during a rally.
    void on_switch_side();
    /// Sets the ball's speed on both clients; ms is the time for the field's width in milliseconds.
    void set_travel_time(int ms);
    /// Plays a key event through the field and sends it. Null is refused with an error line.
    void send_key_event(const QKeyEvent& event);
    void send_key_event(const QKeyEvent* event);
    /// Logs a touch gesture; it has no effect on the game.
    void on_touch_delta(const QPointF& delta);
    void on_exit_fullscreen_mode();

    // --- messages
    /// Handles one received object, of any shape.
    void on_object(const QJsonObject& object);
    /// Sends a chat line and shows it here; the server does not echo it.
    void send_message(const QString& text);

    // --- connection
    /// The "connect" button: opens the dialog or, when connected, asks whether to disconnect.
    void on_dialog_connect();
    /// Opens the dialog on its waiting page.
    void on_dialog_already_connected();
    /// Connects to the server that the dialog names.
    void try_connect();
    /// Connects to the server that the member host names.
    void try_connect_via_cmd();
    void disconnect();
    [[nodiscard]] bool is_local_host() const;
    [[nodiscard]] bool is_connected() const;
    void on_connected();
    void on_disconnected();
    void on_XMessage(const ze::net::GMessage& message);
    void on_login(const ze::net::GMessage& message);
    void on_login_friend(const ze::net::GMessage& message);
    void on_bye();
    /// The part of a login before its first colon; without a colon the whole text and an error
    /// line.
    [[nodiscard]] static QString get_group(const QString& login);
    /// The part of a login between its first and second colon; without a colon the whole text and
    /// an error line.
    [[nodiscard]] static QString get_pure_user(const QString& login);

    // --- what the player reads
    void on_help() override;
    /// Puts the players' names and points on the field.
    void update_player_info();
    void on_show_invitation();
    /// Tells how one person plays with both paddles; the answer starts the rally.
    void show_offline_player_mode();
    void on_show_self_mode();

    QString user;      ///< "group:name"
    QString password;  ///< sent at login
    QString host;      ///< name of the server, also the radio button that the dialog checks
    ze::qt::GPanel* panStack = nullptr;
    ze::qt::GPanel* panPlay = nullptr;
    ze::qt::GPanel* panInvitation = nullptr;
    ze::qt::GLabel* labelInvitation = nullptr;
    ze::qt::GPanel* panSelfMode = nullptr;  ///< never made
    ze::qt::GListView* listChat = nullptr;
    ze::qt::GLineEdit* editChat = nullptr;
    ze::qt::GButton* buttonSend = nullptr;
    ze::qt::GButton* buttonConnect = nullptr;
    ze::net::GWebSocket webSocket;
    PlayField* playField = nullptr;
    ze::qt::GLineEdit* editStatus = nullptr;  ///< "0" offline, "1" alone on the server, "2" paired
    int typeUrl = 0;                          ///< setting "typeURL"; 0 makes try_connect refuse
    ze::Listener<ze::NO_PAYLOAD> listenerUnused;
    QString urlDevelopment;
    QString urlServer;  ///< empty where the command line names no usable server
    QString titleBase = QStringLiteral("vork2D/v5");
    ze::qt::GPanel* panButtons = nullptr;
    ze::qt::GButton* buttonStart = nullptr;
    ze::qt::GPanel* panChat = nullptr;
    QColor colorTheme = Qt::green;
    Player me;
    Player opponent;
    bool flagSeeOfflineHintAgain = true;
    /// The open dialog. It deletes itself after the event in which it closes, and only then is this
    /// null.
    QPointer<DialogConnection> diaConn;

private:
    // building
    void setup_pan_stack(ze::qt::GSplitter* splitter);
    void setup_panel_invitation();
    void setup_pan_control();
    void setup_pan_buttons(ze::qt::GPanel* panMain);
    void attach_socket();
    void attach_field();
    void attach_activation();
    void set_layout_extra(ze::qt::GPanel* row);

    // field events
    void on_field_orient(ze::math::ORIENT2D::Type side);
    void on_field_ball_exit(ze::math::ORIENT2D::Type side);
    void on_field_paddle(const ze::net::GPlay& setPos);
    void on_field_ball_hit();
    void on_field_travel(int ms);
    void clear_text_info();

    // messages
    [[nodiscard]] ze::net::GPlay make_play(const QString& to = QStringLiteral("#")) const;
    void play_local(const ze::net::GPlay& play);
    void send_if_connected(const ze::net::GAbstractMessage& message);
    void show_chat_line(const QString& who, const QString& text);
    void scroll_chat();

    // connection
    void set_status(const QString& digit, const QColor& background);
    void set_state_bit(unsigned bit, bool on);
    /// False for an empty address, which is refused with an error line.
    bool open(const QString& address);
    void pair_with(const QString& name);
    /// Places both players as the field stands: a disconnect resets them, but not the field.
    void take_sides();
    void open_connection_dialog();
    void open_waiting_dialog_later();
    [[nodiscard]] bool is_alone_on_server() const;

    // hotkeys
    void bind_key(const QString& keys, const std::function<void()>& handler);
    void bind_travel_time(const QString& keys, int ms);
    void on_arrow(const char* name, Qt::Key key, Qt::KeyboardModifiers modifiers);

    // options menu
    void gen_menu_side(ze::qt::GMenu* menu);
    void gen_menu_switches(ze::qt::GMenu* menu);
    void gen_menu_travel_time(ze::qt::GMenu* menu);
    void gen_menu_theme(ze::qt::GMenu* menu);
    void gen_menu_font_size(ze::qt::GMenu* menu);
    void gen_menu_system(ze::qt::GMenu* menu);
    void gen_menu_refresh_rate(ze::qt::GMenu* menu);
    void on_menu_log(bool flag);

    bool flagChatScroll = false;  ///< a scroll to the end of the chat is on its way
};

}  // namespace vork2d::v5
