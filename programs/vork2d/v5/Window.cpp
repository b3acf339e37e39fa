#include "Window.h"

#include "ze/log/log.h"
#include "ze/log/pp.h"
#include "ze/net/GPlay.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GMainPanel.h"
#include "ze/qt/GPanel.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GLabel.h"
#include "ze/qt/components/GLineEdit.h"
#include "ze/qt/components/GListView.h"
#include "ze/qt/components/GSplitter.h"
#include "ze/qt/event/mouse.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/qt/inline/GGui_inline.h"
#include "ze/tools/format.h"
#include "ze/tools/os.h"

#include "ChatLineDelegate.h"
#include "DialogConnection.h"
#include "PLAY_STATE.h"
#include "PlayField.h"
#include "game_sound.h"
#include "sounds.h"
#include "vork2d/servers.h"

#include <QJsonObject>
#include <QKeyEvent>
#include <QStandardItemModel>
#include <QTimer>

namespace vork2d::v5 {

using ze::math::ORIENT2D::Type;
using ze::net::GPlay;
using ze::qt::GButton;
using ze::qt::GLAYOUT;
using ze::qt::GLineEdit;
using ze::qt::GPanel;
namespace ORIENT2D = ze::math::ORIENT2D;

namespace {

constexpr int FIELD_MIN_PIXELS = 100;
constexpr int CHAT_MIN_PIXELS = 50;
// Pixels that each has when it is first shown, as far as the window goes: left to itself the chat
// and the log would leave the field its least height.
constexpr int FIELD_SHARE = 400;
constexpr int CHAT_SHARE = 130;
constexpr int LOG_SHARE = 200;
constexpr int CHAT_LABEL_PIXELS = 40;
constexpr int STATUS_PIXELS = 20;
constexpr unsigned START_MARGIN_PIXELS = 16;
constexpr int FRAME_MS_MOBILE = 33;
constexpr int TEXT_INFO_MS = 1000;
constexpr unsigned DEFAULT_FONT_SIZE = 16;  // points
constexpr unsigned MIN_FONT_SIZE = 1;       // Qt complains about less at each paint
constexpr unsigned MAX_FONT_SIZE = 100;     // a third of the field's height

/// A size that was stored for the texts of the field, or the default in place of one that shows
/// none.
unsigned readable_size(unsigned stored) {
    if (MIN_FONT_SIZE <= stored && stored <= MAX_FONT_SIZE) {
        return stored;
    }
    ze::pp_warn("Window::ini, fontSize $ is out of range", stored);
    return DEFAULT_FONT_SIZE;
}

}  // namespace

Window::Window()
    : GMainWindow(nullptr, Qt::WindowFlags()),
      urlDevelopment(servers::development_url().toString()),
      urlServer(servers::default_url().toString()) {}

Window::~Window() {
    // The application object goes next, and nothing of Qt's audio may be playing then.
    stop_sounds();
}

void Window::setup() {
    setup_node<ze::qt::WindowClazz<"WinChat2">>();
    ini_standards();
    setText(titleBase);
}

void Window::ini() {
    GPanel* const panMain = gen_main_panel(GLAYOUT::VERTICAL);
    auto* const splitter = panMain->gen<ze::qt::GSplitter>(Qt::Vertical);
    splitter->setChildrenCollapsible(false);
    setup_pan_stack(splitter);
    playField->fontSize = static_cast<int>(
        readable_size(settingsNode.get<unsigned>(QStringLiteral("fontSize"), DEFAULT_FONT_SIZE)));
    panChat = splitter->gen<GPanel>(GLAYOUT::VERTICAL);
    setup_pan_control();
    gen_log_panel(splitter);
    splitter->setStretchFactor(0, 1);  // a larger window gives its room to the field
    splitter->setSizes({FIELD_SHARE, CHAT_SHARE, LOG_SHARE});
    setup_pan_buttons(panMain);
    playField->flagSound = settingsNode.is_flag(QStringLiteral("sound"), true);
    panChat->set_visible(settingsNode.is_flag(QStringLiteral("chatPanel"), false));
    typeUrl = settingsNode.get<int>(QStringLiteral("typeURL"), TYPE_URL::SERVER);
    attach_socket();
    // The application outlives its windows, and its listeners can not be detached.
    ze::qt::gApp->delta_listener += [window = QPointer<Window>(this)](const QPointF& delta) {
        if (!window.isNull()) {
            window->on_touch_delta(delta);
        }
    };
    playField->timer.setInterval(ze::os::is_mobile() ? FRAME_MS_MOBILE : rules::MS_FRAME);
    attach_activation();
    attach_field();
    set_layout_extra(panButtons);
    flagSeeOfflineHintAgain = settingsNode.is_flag(QStringLiteral("flagSeeOfflineHintAgain"), true);
}

void Window::setup_pan_stack(ze::qt::GSplitter* splitter) {
    panStack = splitter->gen<GPanel>(GLAYOUT::STACKED);
    panPlay = panStack->gen_pan_vert(0);
    panPlay->set_growable(true);
    panInvitation = panStack->gen_pan_vert(-1);
    panInvitation->set_growable(true);
    setup_panel_invitation();
    panStack->show_stacked_widget(panPlay);

    playField = new PlayField(rules::FIELD_WIDTH, rules::FIELD_HEIGHT, webSocket);
    panPlay->add_widget(playField);
    playField->setMinimumHeight(FIELD_MIN_PIXELS);
    check_playfield_size();
    playField->mouse_press_listener += [this](QMouseEvent* event) {
        playField->on_mouse_press(event);
    };
    playField->mouse_move_listener += [this](QMouseEvent* event) {
        if (ze::qt::event::mouse::is_left(event)) {
            playField->on_mouse_drag(event);
        }
    };
}

void Window::setup_panel_invitation() {
    labelInvitation = panInvitation->gen_label(QStringLiteral("You are online 'Odo'\n"), 0);
}

void Window::setup_pan_control() {
    if (user.isEmpty()) {
        user = QStringLiteral("PGROUP:Ebbe");
    }
    panChat->set_margins(0);
    panChat->set_visible(false);
    panChat->set_spacing(0);
    listChat = panChat->gen<ze::qt::GListView>(new QStandardItemModel(this));
    listChat->setMinimumHeight(CHAT_MIN_PIXELS);
    listChat->setItemDelegate(new ChatLineDelegate(listChat));

    GPanel* const row = panChat->gen_pan_horz(0);
    row->gen_label(QStringLiteral("chat"), CHAT_LABEL_PIXELS);
    editChat = ze::qt::set_growable_horizontal(row->gen<GLineEdit>(QString()));
    editChat->setPlaceholderText(QStringLiteral("text..."));
    editChat->setEnabled(false);
    buttonSend = row->gen<GButton>(QStringLiteral(">>"));
    buttonSend->setEnabled(false);
    const auto send = [this] {
        if (!editChat->text().isEmpty()) {
            send_message(editChat->text());
        }
    };
    editChat->return_pressed_signal += send;
    buttonSend->clicked_listener += send;
    panChat->gen_horz_line(1, Qt::darkGray);
}

void Window::setup_pan_buttons(GPanel* panMain) {
    panButtons = panMain->gen_pan_horz(-1);
    panButtons->set_margins(0);
    panButtons->setObjectName(QStringLiteral("buttons"));

    buttonStart = panButtons->gen<GButton>(QStringLiteral("start"),
                                           QStringLiteral("Start / Stop game\nPC: Space Key !"));
    ze::qt::set_margin_horz(buttonStart, START_MARGIN_PIXELS);
    buttonStart->clicked_listener += [this] {
        on_start_stop();
    };
    log_panel_control_icons(panButtons, QStringLiteral("^icons/wheel.svg"),
                            QStringLiteral("Options"));
    panButtons
        ->gen<GButton>(QStringLiteral("^icons/expand.svg"), QStringLiteral("Toggle Fullscreen"))
        ->clicked_listener += [this] {
        ze::qt::toggle_full_screen(this, false);
    };
    buttonConnect = panButtons->gen<GButton>(QStringLiteral("connect"));
    buttonConnect->clicked_listener += [this] {
        on_dialog_connect();
    };
    editStatus = panButtons->gen<GLineEdit>(QStringLiteral("0"));
    editStatus->setReadOnly(true);
    editStatus->setMaximumWidth(STATUS_PIXELS);
    editStatus->set_bg(Qt::transparent);
    panButtons->gen_spacer_horz();
}

void Window::set_layout_extra(GPanel* row) {
    // The row keeps its height; the splitter above it takes what is left.
    row->set_growable_horizontal();
}

void Window::attach_activation() {
    activation_listener += [this](const bool& active) {
        ze::pp("WIN ACTIVATED:$", active);
        playField->colorBackground = active ? Qt::black : Qt::darkGray;
        playField->update();
    };
}

void Window::attach_field() {
    playField->listenerOrient += [this](const Type& side) {
        on_field_orient(side);
    };
    playField->listenerBallExit += [this](const Type& side) {
        on_field_ball_exit(side);
    };
    playField->listenerOutOfField += [this](const Type& side) {
        on_confirmed_out_of_field(side);
    };
    playField->listenerStart += [this](const ze::net::CONTROL_OWNER&) {
        take_sides();
        buttonStart->setText(QStringLiteral("stop"));
    };
    playField->listenerStop += [this](const ze::net::CONTROL_OWNER&) {
        buttonStart->setText(QStringLiteral("start"));
    };
    playField->listenerState += [this] {
        on_play_state_changed();
    };
    playField->listenerPaddle += [this](const GPlay& setPos) {
        on_field_paddle(setPos);
    };
    playField->listenerMaster += [](const bool&) {
    };
    playField->listenerBallHit += [this] {
        on_field_ball_hit();
    };
    playField->listenerTravel += [this](const int& ms) {
        on_field_travel(ms);
    };
}

void Window::on_change_theme(unsigned theme) {
    constexpr int HALF_AS_BRIGHT = 200;  // percent, as QColor::darker counts
    GMainWindow::on_change_theme(theme);
    switch (theme) {
        case 0:
            ze::pp("Window, theme NORMAL");
            colorTheme = Qt::green;
            break;
        case 1:
            ze::pp("Window, theme DARK");
            colorTheme = QColor(Qt::green).darker(HALF_AS_BRIGHT);
            break;
        case 2:
            ze::pp("Window, theme GREEN");
            colorTheme = Qt::darkBlue;
            break;
        default:
            break;
    }
}

void Window::check_playfield_size() {
    playField->check_set_size();
}

void Window::follow_orientation(ze::Listener<Qt::Orientation>& screen) {
    // The listener outlives the window and lets go of no callback.
    screen += [window = QPointer<Window>(this)](const Qt::Orientation&) {
        if (!window.isNull()) {
            window->check_playfield_size();
        }
    };
}

void Window::on_exit_fullscreen_mode() {
    if (isFullScreen()) {
        ze::qt::toggle_full_screen(this, false);
    }
}

// --- field events

void Window::on_field_orient(Type side) {
    if (playField->is_state_PLAY()) {
        ze::pp_error("SHOULD NEVER SWAP DURING RUN!");
    }
    me.orient = side;
    opponent.orient = ORIENT2D::get_opposite(side);
    ze::pp_format(ze::log::INFO, 0, "orient changed, me: {$}, opponent{$}", me, opponent);
    update_player_info();
}

void Window::on_field_ball_exit(Type side) {
    ze::pp_warn("Window::ini, * ball out of field:$", ORIENT2D::to_string(side));
    GPlay play = make_play();
    play.set_ball_out_of_field(side);
    play_local(play);
    send_if_connected(play);
}

void Window::on_field_paddle(const GPlay& setPos) {
    GPlay play = setPos;
    ze::pp_trace("paddle pos:$", play.to_string());
    play.from = user;
    play_local(play);
    send_if_connected(play);
}

void Window::on_field_ball_hit() {
    const Ball& ball = playField->ball;
    ze::pp_info("BALL:$", ball.to_string());
    if (!playField->is_master()) {
        return;
    }
    if (!webSocket.is_connected()) {
        ze::pp_error("cannot be slave and no connection!");
        return;
    }
    GPlay play = make_play();
    play.set_ball(ball.pos, ball.dir, ball.velocity);
    play.send(webSocket);
}

void Window::on_field_travel(int ms) {
    playField->textInfo = ze::str::qprintF("speed:$", ms);
    playField->update();
    QTimer::singleShot(TEXT_INFO_MS, this, [this] {
        QMetaObject::invokeMethod(
            this, [this] { clear_text_info(); }, Qt::QueuedConnection);
    });
}

void Window::clear_text_info() {
    playField->textInfo.clear();
    playField->update();
}

// --- play

GPlay Window::make_play(const QString& to) const {
    return GPlay::from_args(user, to, QStringLiteral("vork"));
}

void Window::play_local(const GPlay& play) {
    playField->on_play_message(play, ze::net::LOCAL);
}

void Window::send_if_connected(const ze::net::GAbstractMessage& message) {
    if (webSocket.is_connected()) {
        message.send(webSocket);
    }
}

void Window::on_start_stop() {
    ze::pp("Window::on_start_stop");
    if (playField->is_state_offline() && flagSeeOfflineHintAgain) {
        show_offline_player_mode();
        return;
    }
    if (is_alone_on_server()) {
        if (panStack->current_stacked_panel() == panInvitation) {
            panStack->show_stacked_widget(panPlay);
        } else {
            on_show_invitation();
        }
        return;
    }
    GPlay play = make_play();
    if (playField->is_state_PLAY()) {
        play.set_stop();
        send_if_connected(play);  // a stop goes out before and after the local handling
    } else {
        ze::pp("Window::on_start_stop");
        play.set_start(playField->side, playField->tm_travel());
    }
    play_local(play);
    send_if_connected(play);
}

void Window::on_confirmed_out_of_field(Type side) {
    ze::pp_warn("CONFIRMED- ball out of field:$", ORIENT2D::to_string(side));
    playField->set_state_RUN(false);
    buttonStart->setText(QStringLiteral("start"));
    if (side == playField->side) {
        playField->play_sound(sounds::POINT_LOST);
        ze::pp_info("point for opponent");
        opponent.countPoints += 1;
    } else {
        playField->play_sound(sounds::POINT_WON);
        ze::pp_info("point for me");
        me.countPoints += 1;
        GPlay play = make_play(QStringLiteral("+"));
        play.set_points(static_cast<int>(me.countPoints), static_cast<int>(opponent.countPoints));
        send_if_connected(play);
    }
    update_player_info();
}

void Window::on_play_state_changed() {
    ze::pp_info("STATE CHANGED, states {$}", PLAY_STATE::to_string(playField->state));
    buttonStart->setEnabled(playField->is_state_offline() || playField->is_state_2_players());
    buttonSend->setEnabled(playField->is_state_CONNECTED2());
    editChat->setEnabled(playField->is_state_CONNECTED2());
    if (playField->is_state_2_players()) {
        editStatus->setText(QStringLiteral("2"));
        if (!diaConn.isNull()) {
            diaConn->close_programmatic();
        }
    } else if (playField->is_state_CONNECTED1()) {
        me.countPoints = 0;
        opponent.countPoints = 0;
        opponent.name.clear();
        editStatus->setText(QStringLiteral("1"));
        open_waiting_dialog_later();
    } else if (playField->is_state_CONNECTED2()) {
        ze::pp("CONNECTED2 only ???");
    } else {
        editStatus->setText(QStringLiteral("0"));
    }
    update_player_info();
}

void Window::on_switch_side() {
    ze::pp("Window::on_switch_side");
    if (playField->is_state_PLAY()) {
        return;
    }
    playField->side = ORIENT2D::get_opposite(playField->side);
    playField->listenerOrient.fire_event(playField->side);
    update_player_info();
    GPlay play = make_play();
    play.set_orient(playField->side);
    send_if_connected(play);
    playField->update();
}

void Window::set_travel_time(int ms) {
    ze::pp("Window::set_travel_time, val:$", ms);
    GPlay play = make_play();
    play.set_travel(static_cast<unsigned long long>(ms));
    play_local(play);
    if (webSocket.is_connected()) {
        ze::pp_info("TRY TO SEND:$ msTravel", ms);
        play.send(webSocket);
    }
}

void Window::send_key_event(const QKeyEvent& event) {
    send_key_event(&event);
}

void Window::send_key_event(const QKeyEvent* event) {
    if (event == nullptr) {
        ze::pp_error("Window::send_key_event, ev == nullptr");
        return;
    }
    ze::pp("Window::send_key_pressed, key press:$", event->text());
    GPlay play = make_play();
    play.set_key_event(event);
    play_local(play);
    send_if_connected(play);
}

void Window::on_touch_delta(const QPointF& delta) {
    ze::pp_trace("Window::on_touch_delta, ptDelta:$", delta);
    const bool left = delta.x() <= 0;
    GPlay play = make_play();
    play.payload = QJsonObject{
        {QStringLiteral("cmd"), QStringLiteral("key")},
        {QStringLiteral("val"), left ? Qt::Key_Left : Qt::Key_Right},
        {QStringLiteral("str"), left ? QStringLiteral("Left") : QStringLiteral("Right")}};
    ze::pp_trace("l:<<<$>>>", play.to_string());
}

}  // namespace vork2d::v5
