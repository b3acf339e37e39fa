// The dialog in which the player names user, group, password and server. Once the server has
// welcomed the client it turns into the waiting page. Every close that the player starts ends the
// connection.
#pragma once

#include "ze/qt/dialogs/GDialog.h"
#include "ze/tools/Listener.h"

#include "ConnData.h"

namespace ze::qt {
class GButtonGroup;
class GLabel;
class GLineEdit;
class GMainWindow;
class GPanel;
class GRadioButton;
}  // namespace ze::qt

namespace vork2d::v5 {

class Window;

class DialogConnection : public ze::qt::GDialog, public ConnData {
public:
    /// Builds no widget: call ini(). A null parent ends the program.
    explicit DialogConnection(ze::qt::GMainWindow* parent);
    ~DialogConnection() override;

    /// Builds the form page and the waiting page.
    void ini() override;

    [[nodiscard]] QString get_full_group_user() const override;
    [[nodiscard]] QString get_user() const override;
    [[nodiscard]] QString get_group() const override;
    [[nodiscard]] QString get_password() const override;
    /// TYPE_URL::NO_TYPE and an error line when neither server is chosen.
    [[nodiscard]] int get_url_type() const override;
    [[nodiscard]] QString get_host() const override;

    /// Shows how a friend can join.
    void open_waiting_page();

    /// Closes without ending the connection.
    void close_programmatic();

    /// Escape: ends the connection and closes.
    void reject() override;

    ze::qt::GMainWindow* winMain;
    ze::qt::GPanel* panStack = nullptr;
    ze::qt::GPanel* panForm = nullptr;
    ze::qt::GPanel* panWaiting = nullptr;
    ze::qt::GLineEdit* editUser = nullptr;
    ze::qt::GLineEdit* editGroup = nullptr;
    ze::qt::GLineEdit* editPassword = nullptr;
    ze::qt::GRadioButton* radioDevelopment = nullptr;
    ze::qt::GRadioButton* radioServer = nullptr;
    ze::qt::GLabel* labelWaiting = nullptr;
    QString textUser;
    QString textGroup;
    QString textPassword;
    ze::qt::GButtonGroup* groupServer = nullptr;
    ze::Listener<ze::NO_PAYLOAD> listenerClosed;  ///< fired from the destructor
    bool flagCloseProgrammatic = false;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void setup_row_user(ze::qt::GPanel* rows);
    void setup_row_group(ze::qt::GPanel* rows);
    void setup_row_password(ze::qt::GPanel* rows);
    void setup_row_server(ze::qt::GPanel* rows);
    void setup_row_buttons(ze::qt::GPanel* rows);
    void setup_pan_waiting();

    void on_ok();
    void on_stop_waiting();
    void on_copy_password();
    void on_copy_all();

    /// Asks the game window to give up the connection.
    void disconnect_window();
    [[nodiscard]] Window* game_window() const;
};

}  // namespace vork2d::v5
