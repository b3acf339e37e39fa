#include "vork2d/v5/DialogConnection.h"

#include "ze/qt/components/GButtonGroup.h"
#include "ze/qt/components/GRadioButton.h"

#include "WindowFixture.h"
#include "vork2d/v5/ConnDataWin.h"

#include <QClipboard>
#include <QLayout>
#include <QPushButton>

#include <unistd.h>

namespace {

class DialogConnectionTest : public test::WindowFixture {
protected:
    DialogConnectionTest() {
        window.on_dialog_connect();
        dialog = window.diaConn;
        log.ignore("WIN ACTIVATED:");
        log.clear();
    }

    void click(const char* text) {
        for (QPushButton* button : dialog->findChildren<QPushButton*>()) {
            if (button->text() == QString::fromLatin1(text)) {
                button->click();
                return;
            }
        }
        FAIL() << "no button " << text;
    }

    /// The login that reaches the server.
    [[nodiscard]] QString login_with(const QString& group, const QString& user) {
        window.urlDevelopment = relay.address();
        dialog->editGroup->setText(group);
        dialog->editUser->setText(user);
        click("OK");
        EXPECT_TRUE(relay.wait_for_frames(1));
        return relay.frames.empty() ? QString()
                                    : relay.frames[0][QStringLiteral("from")].toString();
    }

    [[nodiscard]] std::vector<std::string> closing_lines() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return window.diaConn.isNull(); }));
        return log.lines();
    }

    test::v5::DialogConnection* dialog = nullptr;
};

TEST_F(DialogConnectionTest, names_its_fields) {
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Connection"));
    EXPECT_TRUE(dialog->isModal());
    EXPECT_EQ(dialog->editUser->placeholderText(), QStringLiteral("user name"));
    EXPECT_EQ(dialog->editUser->toolTip(),
              QStringLiteral("Username must not contain spaces\nMust start with a letter"));
    EXPECT_EQ(dialog->editGroup->toolTip(),
              QStringLiteral("Group name must not contain spaces\nMust start with a letter"));
    EXPECT_EQ(dialog->editPassword->echoMode(), QLineEdit::Password);
    EXPECT_EQ(dialog->radioDevelopment->text(), QStringLiteral("localhost"));
    EXPECT_EQ(dialog->radioServer->text(), QStringLiteral("play.vork2d.example"));
    EXPECT_EQ(dialog->panStack->current_stacked_panel(), dialog->panForm);
}

TEST_F(DialogConnectionTest, joins_group_and_user_with_one_colon) {
    EXPECT_EQ(dialog->get_full_group_user(), QStringLiteral("g:Ann"));
    dialog->editUser->setText(QStringLiteral("a name with blanks"));
    EXPECT_EQ(dialog->get_full_group_user(), QStringLiteral("g:a name with blanks"));
    dialog->editUser->clear();
    dialog->editGroup->clear();
    EXPECT_EQ(dialog->get_full_group_user(), QStringLiteral(":"));
}

TEST_F(DialogConnectionTest, tells_the_chosen_server) {
    dialog->radioServer->setChecked(true);
    EXPECT_EQ(dialog->get_url_type(), 2);
    EXPECT_EQ(dialog->get_host(), QStringLiteral("play.vork2d.example"));
    dialog->radioDevelopment->setChecked(true);
    EXPECT_EQ(dialog->get_url_type(), 1);
    EXPECT_EQ(dialog->get_host(), QStringLiteral("localhost"));
}

TEST_F(DialogConnectionTest, with_no_server_chosen_the_type_is_none) {
    dialog->radioDevelopment->setAutoExclusive(false);
    dialog->radioServer->setAutoExclusive(false);
    dialog->groupServer->uncheck();
    log.expect_error("DialogConnection::get_url_type - nothing checked");
    EXPECT_EQ(dialog->get_url_type(), 0);
}

TEST_F(DialogConnectionTest, a_password_of_two_characters_is_too_short) {
    dialog->editPassword->setText(QStringLiteral("12"));
    log.expect_error("password toooooo short");
    click("OK");
    EXPECT_EQ(log.lines(),
              (std::vector<std::string>{"ok - try connect", "password toooooo short"}));
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(DialogConnectionTest, a_password_of_three_characters_connects_with_the_dialogs_login) {
    window.urlDevelopment = relay.address();
    dialog->editPassword->setText(QStringLiteral("123"));
    dialog->editUser->setText(QStringLiteral("Zoe"));
    click("OK");
    ASSERT_TRUE(relay.wait_for_frames(1));
    EXPECT_EQ(relay.frames[0][QStringLiteral("from")].toString(), QStringLiteral("g:Zoe"));
    EXPECT_EQ(relay.frames[0][QStringLiteral("pw")].toString(), QStringLiteral("123"));
    EXPECT_TRUE(dialog->isVisible()) << "it stays until the server's welcome turns its page";
    relay.send_chat(QStringLiteral("welcome"), QStringLiteral("relay"), QString(),
                    QStringLiteral("g:Zoe"));
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return dialog->panStack->current_stacked_panel() == dialog->panWaiting; }));
}

TEST_F(DialogConnectionTest, a_user_with_blanks_passes) {
    EXPECT_EQ(login_with(QStringLiteral("g"), QStringLiteral("a name with blanks")),
              QStringLiteral("g:a name with blanks"));
}

TEST_F(DialogConnectionTest, a_login_without_any_name_is_the_servers_matter) {
    EXPECT_EQ(login_with(QString(), QString()), QStringLiteral(":"));
}

TEST_F(DialogConnectionTest, the_waiting_page_tells_a_friend_how_to_join) {
    dialog->open_waiting_page();
    EXPECT_EQ(dialog->panStack->current_stacked_panel(), dialog->panWaiting);
    EXPECT_EQ(dialog->labelWaiting->text(),
              QStringLiteral(
                  "Hello Ann!\n\nYou are online.\n\nYour friend can join at:\nlocalhost\n\nLogin:\n"
                  "  username: any name ( not 'Ann')\n  group: g\n  password: secret\n\n"
                  "This dialog will be closed automatically\nwhen someone joins your "
                  "group\n\nWaiting..."));
}

TEST_F(DialogConnectionTest, copies_the_password_and_all) {
    click("Copy password");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("secret"));
    click("Copy all");
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              QStringLiteral("localhost,Ann,g,secret\nChange username!"));
    EXPECT_TRUE(has_line("password copied"));
    EXPECT_TRUE(has_line("all connections copied"));
}

const std::vector<std::string> END = {"DialogConnection::~DialogConnection"};

std::vector<std::string> then_end(std::vector<std::string> lines) {
    lines.insert(lines.end(), END.begin(), END.end());
    return lines;
}

TEST_F(DialogConnectionTest, cancel_ends_the_connection_once) {
    click("Cancel");
    EXPECT_EQ(closing_lines(),
              then_end({"cancel, close", "close() or X button", "Window::disconnect"}));
}

TEST_F(DialogConnectionTest, the_title_bars_button_ends_the_connection_once) {
    dialog->close();
    EXPECT_EQ(closing_lines(), then_end({"close() or X button", "Window::disconnect"}));
}

TEST_F(DialogConnectionTest, stop_waiting_ends_the_connection_twice) {
    dialog->open_waiting_page();
    log.clear();
    click("Stop waiting");
    EXPECT_EQ(closing_lines(), then_end({"ok, close", "Window::disconnect", "close() or X button",
                                         "Window::disconnect"}));
}

TEST_F(DialogConnectionTest, escape_ends_the_connection_twice) {
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_EQ(closing_lines(), then_end({"DialogConnection::reject", "Window::disconnect",
                                         "close() or X button", "Window::disconnect"}));
}

TEST_F(DialogConnectionTest, a_programmatic_close_keeps_the_connection) {
    dialog->close_programmatic();
    EXPECT_EQ(closing_lines(),
              then_end({"DialogConnection::close - PROGRAMMATICAL", "close() or X button"}));
}

TEST_F(DialogConnectionTest, its_end_is_told_once) {
    int told = 0;
    dialog->listenerClosed += [&told] {
        ++told;
    };
    dialog->close();
    EXPECT_EQ(told, 0) << "it lives on until the event is over";
    EXPECT_EQ(closing_lines().back(), END.back());
    EXPECT_EQ(told, 1);
}

TEST(DialogConnectionDeathTest, without_a_window_the_program_ends) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // the sounds of other cases have threads
    // The text goes to the standard output; a death test looks at the standard error.
    const auto make = [] {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        test::v5::DialogConnection(nullptr);
    };
    EXPECT_EXIT(make(), testing::ExitedWithCode(1),
                "nullptr:parent == NULL\nprograms/vork2d/v5/DialogConnection\nLINE:[0-9]+\n");
}

class Login final : public test::v5::ConnDataWin {
public:
    using ConnDataWin::ConnDataWin;
    [[nodiscard]] QString get_host() const override { return QStringLiteral("here"); }
};

TEST(ConnDataWin, splits_the_first_edit_at_the_colon) {
    ze::qt::GLineEdit name(QStringLiteral("g:Ann"));
    ze::qt::GLineEdit pass(QStringLiteral("pw"));
    const Login login(&name, &pass);
    EXPECT_EQ(login.get_group(), QStringLiteral("g"));
    EXPECT_EQ(login.get_user(), QStringLiteral("Ann"));
    EXPECT_EQ(login.get_full_group_user(), QStringLiteral("g:Ann"));
    EXPECT_EQ(login.get_password(), QStringLiteral("pw"));
    EXPECT_EQ(login.get_url_type(), 1);
}

TEST(ConnDataWin, without_a_colon_gives_the_whole_text_and_an_error) {
    test::LogCapture log;
    log.expect_error("ConnDataWin::get_user, group:user ???");
    log.expect_error("ConnDataWin::get_group, group:user ???");
    ze::qt::GLineEdit name(QStringLiteral("Ann"));
    ze::qt::GLineEdit pass;
    const Login login(&name, &pass);
    EXPECT_EQ(login.get_user(), QStringLiteral("Ann"));
    EXPECT_EQ(login.get_group(), QStringLiteral("Ann"));
}

}  // namespace
