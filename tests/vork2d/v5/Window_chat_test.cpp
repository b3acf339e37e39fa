// The chat: what goes out, what shows, and what is kept.
#include "ze/net/GMessage.h"

#include "WindowFixture.h"
#include "vork2d/v5/Window.h"

#include <QStandardItemModel>

namespace {

class WindowChat : public test::WindowFixture {};

TEST_F(WindowChat, a_chat_line_goes_out_and_shows_here) {
    connect_paired();
    window.editChat->setText(QStringLiteral("hello there"));
    QTest::mouseClick(window.buttonSend, Qt::LeftButton);
    QTest::keyClick(window.editChat, Qt::Key_Return);
    ASSERT_TRUE(relay.wait_for_frames(2));
    EXPECT_EQ(relay.frames[1], (QJsonObject{{QStringLiteral("type"), QStringLiteral("CHAT")},
                                            {QStringLiteral("subType"), QStringLiteral("text")},
                                            {QStringLiteral("from"), QStringLiteral("g:Ann")},
                                            {QStringLiteral("to"), QStringLiteral("#")},
                                            {QStringLiteral("ident"), 0},
                                            {QStringLiteral("text"), QStringLiteral("hello there")},
                                            {QStringLiteral("extraData"), QString()}}));
    EXPECT_EQ(window.listChat->string_at(window.listChat->model()->rowCount() - 1),
              QStringLiteral("me:hello there"));
    EXPECT_EQ(window.editChat->text(), QStringLiteral("hello there")) << "the input keeps its text";
}

TEST_F(WindowChat, an_empty_chat_line_sends_nothing) {
    connect_paired();
    const int rows = window.listChat->model()->rowCount();
    QTest::mouseClick(window.buttonSend, Qt::LeftButton);
    QTest::keyClick(window.editChat, Qt::Key_Return);
    EXPECT_EQ(window.listChat->model()->rowCount(), rows);
}

TEST_F(WindowChat, a_chat_line_without_a_connection_is_an_error) {
    log.expect_error("Window::send_message, webSocket not valid !");
    window.send_message(QStringLiteral("x"));
    EXPECT_EQ(window.listChat->model()->rowCount(), 0);
}

TEST_F(WindowChat, the_chat_keeps_the_newest_lines_and_cuts_what_nobody_could_have_typed) {
    ze::net::GMessage message;
    message.from = QStringLiteral("g:Ben");
    for (int i = 1; i <= 510; ++i) {
        message.text = QString::number(i);
        window.on_XMessage(message);
    }
    EXPECT_EQ(window.listChat->model()->rowCount(), 500);
    EXPECT_EQ(window.listChat->string_at(0), QStringLiteral("g:Ben:11"));
    EXPECT_EQ(window.listChat->string_at(499), QStringLiteral("g:Ben:510"));
    const QString typed(window.editChat->maxLength(), QLatin1Char('x'));
    const QString endless(1'000'000, QLatin1Char('x'));
    message.text = typed;
    window.on_XMessage(message);
    EXPECT_EQ(window.listChat->string_at(499), QStringLiteral("g:Ben:") + typed);
    message.from = message.text = endless;
    window.on_XMessage(message);
    EXPECT_EQ(window.listChat->string_at(499),
              endless.left(300) + QChar(0x2026) + QLatin1Char(':') + typed);
}

TEST_F(WindowChat, a_full_line_of_chat_shows_whole) {
    connect_paired();
    const QString typed(window.editChat->maxLength(), QLatin1Char('x'));
    window.send_message(typed);
    EXPECT_EQ(window.listChat->string_at(window.listChat->model()->rowCount() - 1),
              QStringLiteral("me:") + typed);
}

TEST_F(WindowChat, the_chat_shows_its_newest_line) {
    window.panChat->setVisible(true);
    ze::net::GMessage message;
    for (int i = 0; i < 100; ++i) {
        message.text = QString::number(i);
        window.on_XMessage(message);
    }
    QCoreApplication::processEvents();
    const QModelIndex last = window.listChat->model()->index(99, 0);
    EXPECT_TRUE(window.listChat->viewport()->rect().intersects(window.listChat->visualRect(last)));
}

}  // namespace
