// What the player reads: names and points, the invitation, how one person plays alone, the about
// box.

#include "ze/log/pp.h"
#include "ze/qt/GApp.h"
#include "ze/qt/GPanel.h"
#include "ze/qt/components/GLabel.h"
#include "ze/qt/dialogs/GMessageBox.h"
#include "ze/tools/format.h"
#include "ze/tools/os.h"
#include "ze/tools/version.h"

#include "PlayField.h"
#include "Window.h"

namespace vork2d::v5 {

namespace {

constexpr const char* INVITATION =
    "Hello '$'  !\nYou are online as '$'\n \nWaiting for another player to join.\n\n"
    "Tell your friend to log in using the format 'group:name'.\n\n"
    "For example:\nIf your friend chooses the name 'Odo',\nthe login would be: '$:Odo'\n\n"
    "Invite somebody to be online or press\ndisconnect button\n\n"
    "If disconnected you can control both paddles\n-Left side with arrow keys\n-Right side with "
    "Ctrl + arrow keys";

QString offline_text() {
    const QString touch = QStringLiteral(
        "Single Player Mode\n\nLeft paddle:\n- Touch and drag on the left side\n\n"
        "Right paddle:\n- Touch and drag on the right side\n");
    const QString keys = QStringLiteral(
        "Single Player Mode\n\nLeft paddle:\n- Arrow Up / Arrow Down\n- Mouse drag on left "
        "field\n\n"
        "Right paddle:\n- Ctrl + Arrow Up / Arrow Down\n- Mouse drag on right field\n\n"
        "Speed:\n- Ctrl+1, ..., Ctrl+9\nPress [Space Bar] to start");
    return (ze::os::is_touch_device() ? touch : keys) +
           QStringLiteral("\n\nSee this massage after loading game again ?");
}

}  // namespace

void Window::update_player_info() {
    const bool left = ze::math::ORIENT2D::is_left(me.orient);
    const Player& onLeft = left ? me : opponent;
    const Player& onRight = left ? opponent : me;
    playField->textLeft = onLeft.get_display_name_points();
    playField->textRight = onRight.get_display_name_points();
    playField->update();
}

void Window::on_show_invitation() {
    ze::pp("Window::on_show_invitation");
    labelInvitation->setText(
        ze::str::qprintF(INVITATION, me.get_pure_name(), me.name, me.get_group_name()));
    panStack->show_stacked_widget(panInvitation);
}

void Window::on_show_self_mode() {
    ze::pp("Window::on_show_self_mode");
    panStack->show_stacked_widget(panSelfMode);
}

void Window::show_offline_player_mode() {
    ze::pp("Window::show_offline_player_mode");
    flagSeeOfflineHintAgain = false;
    auto* const box = ze::qt::GMessageBox::ask_yes_no(this, QStringLiteral("Info offline mode"),
                                                      offline_text(), QMessageBox::Question);
    box->finished_listener += [this](const int& answer) {
        const bool again = answer == QMessageBox::Yes;
        ze::pp_info(again ? "OFFLINE INFO AGAIN" : "OFFLINE INFO STOPP");
        settingsNode.set(QStringLiteral("flagSeeOfflineHintAgain"), again);
        ze::qt::GApp::sync_app_settings(true);
        QMetaObject::invokeMethod(
            this, [this] { on_start_stop(); }, Qt::QueuedConnection);
    };
}

void Window::on_help() {
    ze::qt::GMessageBox::show_info(
        this, QStringLiteral("About Vork2D"),
        ze::str::qprintF("VORK2D - version 3\nbased on\nZEK/TOVA - v $", ze::framework_version()));
}

}  // namespace vork2d::v5
