#include "DialogConnection.h"

#include "ze/log/exits.h"
#include "ze/log/pp.h"
#include "ze/qt/GMainPanel.h"
#include "ze/qt/GPanel.h"
#include "ze/qt/components/GButton.h"
#include "ze/qt/components/GButtonGroup.h"
#include "ze/qt/components/GLabel.h"
#include "ze/qt/components/GLineEdit.h"
#include "ze/qt/components/GRadioButton.h"
#include "ze/qt/guitools/GGui.h"
#include "ze/tools/format.h"

#include "Window.h"
#include "vork2d/servers.h"

#include <QCloseEvent>

namespace vork2d::v5 {

using ze::qt::GButton;
using ze::qt::GLAYOUT;
using ze::qt::GLineEdit;
using ze::qt::GPanel;
using ze::qt::GRadioButton;

namespace {

constexpr int LABEL_WIDTH = 80;        // pixels, so that the four fields start below one another
constexpr int PASSWORD_TOO_SHORT = 2;  // characters; the server wants more than that
constexpr int KEEP_STYLE_MARGIN = -1;

GPanel* gen_row(GPanel* rows, const QString& label) {
    GPanel* const row = rows->gen_pan_horz(0);
    row->gen_label(label, LABEL_WIDTH);
    return row;
}

/// A choice that is found by the name it shows.
GRadioButton* gen_radio(GPanel* row, const QString& name) {
    auto* const radio = row->gen<GRadioButton>(name);
    radio->setObjectName(name);
    return radio;
}

}  // namespace

DialogConnection::DialogConnection(ze::qt::GMainWindow* parent) : GDialog(parent), winMain(parent) {
    if (parent == nullptr) {
        ze::nullPointerHandling("programs/vork2d/v5/DialogConnection", __LINE__,
                                QStringLiteral("parent == NULL"));
    }
}

DialogConnection::~DialogConnection() {
    ze::pp("DialogConnection::~DialogConnection");
    listenerClosed.fire_event({});
}

void DialogConnection::ini() {
    setWindowTitle(QStringLiteral("Connection"));
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(true);
    GPanel* const panMain = gen_main_panel(GLAYOUT::VERTICAL);
    panStack = panMain->gen_pan_stacked(KEEP_STYLE_MARGIN);
    panForm = panStack->gen_pan_vert(KEEP_STYLE_MARGIN);
    GPanel* const rows = panForm->gen_pan_vert(KEEP_STYLE_MARGIN);
    setup_row_user(rows);
    setup_row_group(rows);
    setup_row_password(rows);
    setup_row_server(rows);
    setup_row_buttons(rows);
    panWaiting = panStack->gen_pan_vert(KEEP_STYLE_MARGIN);
    setup_pan_waiting();
}

void DialogConnection::setup_row_user(GPanel* rows) {
    editUser = gen_row(rows, QStringLiteral("User"))->gen<GLineEdit>(textUser);
    editUser->setPlaceholderText(QStringLiteral("user name"));
    editUser->setToolTip(
        QStringLiteral("Username must not contain spaces\nMust start with a letter"));
}

void DialogConnection::setup_row_group(GPanel* rows) {
    editGroup = gen_row(rows, QStringLiteral("Group"))->gen<GLineEdit>(textGroup);
    editGroup->setToolTip(
        QStringLiteral("Group name must not contain spaces\nMust start with a letter"));
}

void DialogConnection::setup_row_password(GPanel* rows) {
    editPassword = gen_row(rows, QStringLiteral("Password"))->gen<GLineEdit>(textPassword);
    editPassword->setPlaceholderText(QString());
    editPassword->setEchoMode(QLineEdit::Password);
}

void DialogConnection::setup_row_server(GPanel* rows) {
    GPanel* const row = gen_row(rows, QStringLiteral("Server"));
    radioDevelopment = gen_radio(row, servers::development_name());
    radioServer = gen_radio(row, servers::default_name());
    groupServer = new ze::qt::GButtonGroup(this);
    groupServer->addButton(radioDevelopment);
    groupServer->addButton(radioServer);
    groupServer->set_checked(servers::development_name());
}

void DialogConnection::setup_row_buttons(GPanel* rows) {
    GPanel* const row = rows->gen_pan_horz(0);
    GButton* const buttonOk = row->gen<GButton>(QStringLiteral("OK"));
    buttonOk->setDefault(true);  // Return in a field connects
    buttonOk->clicked_listener += [this] {
        on_ok();
    };
    row->gen<GButton>(QStringLiteral("Cancel"))->clicked_listener += [this] {
        ze::pp("cancel, close");
        close();
    };
    row->gen_spacer_horz();
}

void DialogConnection::setup_pan_waiting() {
    labelWaiting = panWaiting->gen_label(QString(), 0);
    GPanel* const row = panWaiting->gen_pan_horz(0);
    row->gen<GButton>(QStringLiteral("Stop waiting"))->clicked_listener += [this] {
        on_stop_waiting();
    };
    row->gen<GButton>(QStringLiteral("Copy password"))->clicked_listener += [this] {
        on_copy_password();
    };
    row->gen<GButton>(QStringLiteral("Copy all"))->clicked_listener += [this] {
        on_copy_all();
    };
    row->gen_spacer_horz();
}

QString DialogConnection::get_user() const {
    return editUser->text();
}

QString DialogConnection::get_group() const {
    return editGroup->text();
}

QString DialogConnection::get_password() const {
    return editPassword->text();
}

QString DialogConnection::get_full_group_user() const {
    return get_group() + QLatin1Char(':') + get_user();
}

int DialogConnection::get_url_type() const {
    if (radioDevelopment->isChecked()) {
        return TYPE_URL::DEVELOPMENT;
    }
    if (radioServer->isChecked()) {
        return TYPE_URL::SERVER;
    }
    ze::pp_error("DialogConnection::get_url_type - nothing checked");
    return TYPE_URL::NO_TYPE;
}

QString DialogConnection::get_host() const {
    return get_url_type() == TYPE_URL::SERVER ? servers::default_name()
                                              : servers::development_name();
}

void DialogConnection::on_ok() {
    ze::pp("ok - try connect");
    if (get_password().size() <= PASSWORD_TOO_SHORT) {
        ze::pp_error("password toooooo short");
        return;
    }
    if (Window* const window = game_window()) {
        window->try_connect();
    }
}

void DialogConnection::on_stop_waiting() {
    ze::pp("ok, close");
    disconnect_window();
    close();
}

void DialogConnection::on_copy_password() {
    ze::pp("password copied");
    ze::qt::copy_to_clipboard(get_password());
}

void DialogConnection::on_copy_all() {
    ze::pp("all connections copied");
    ze::qt::copy_to_clipboard(ze::str::qprintF("$,$,$,$\nChange username!", get_host(), get_user(),
                                               get_group(), get_password()));
}

void DialogConnection::open_waiting_page() {
    ze::pp("DialogConnection::open_waiting_page");
    labelWaiting->setText(
        ze::str::qprintF("Hello $!\n\nYou are online.\n\nYour friend can join at:\n$\n\nLogin:\n  "
                         "username: any name ( not '$')\n"
                         "  group: $\n  password: $\n\nThis dialog will be closed "
                         "automatically\nwhen someone joins your group\n\n"
                         "Waiting...",
                         get_user(), get_host(), get_user(), get_group(), get_password()));
    panStack->show_stacked_widget(panWaiting);
}

void DialogConnection::close_programmatic() {
    ze::pp("DialogConnection::close - PROGRAMMATICAL");
    flagCloseProgrammatic = true;
    close();
}

void DialogConnection::reject() {
    ze::pp("DialogConnection::reject");
    disconnect_window();
    close();
}

void DialogConnection::closeEvent(QCloseEvent* event) {
    ze::pp("close() or X button");
    if (!flagCloseProgrammatic) {
        disconnect_window();
    }
    event->accept();
}

void DialogConnection::disconnect_window() {
    if (Window* const window = game_window()) {
        window->disconnect();
    }
}

Window* DialogConnection::game_window() const {
    return dynamic_cast<Window*>(winMain);
}

}  // namespace vork2d::v5
