// The relay as the game's own socket and messages meet it.

#include "ze/net/GWebSocket.h"

#include "ze/net/GLogin.h"
#include "ze/net/GMessage.h"
#include "ze/net/GPlay.h"
#include "ze/net/wait_until.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>

#include <gtest/gtest.h>

namespace {

using test::wait_until;
using ze::net::GAbstractMessage;
using ze::net::GLogin;
using ze::net::GMessage;
using ze::net::GPlay;
using ze::net::GWebSocket;

/// The built program on a free port, with a state folder of its own.
class Relay {
public:
    Relay() {
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QStringLiteral(RELAY_PROGRAM),
                      {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"),
                       QStringLiteral("--frames-per-second"), QStringLiteral("1000000"),
                       QStringLiteral("--bytes-per-second"), QStringLiteral("1000000000"),
                       QStringLiteral("--queued-output"), QStringLiteral("100000000"),
                       QStringLiteral("--state-dir"), folder.path()});
    }
    ~Relay() {
        process.kill();
        process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Relay)

    /// From the line that the program prints for its host.
    [[nodiscard]] QUrl url() {
        QString text;
        const QRegularExpression address(QStringLiteral("wss://[^,]+"));
        EXPECT_TRUE(wait_until([this, &text, &address] {
            text += QString::fromUtf8(process.readAll());
            return address.match(text).hasMatch();
        }));
        return QUrl(address.match(text).captured());
    }

private:
    QTemporaryDir folder;
    QProcess process;
};

/// A game's socket that keeps what arrives.
class Player : public GWebSocket {
public:
    QStringList texts;

    explicit Player(const QString& playerName) : name(playerName) {
        listenerSSL = [this](const QList<QSslError>&) {
            ignoreSslErrors();
        };
        listenerText = [this](const QString& text) {
            texts.push_back(text);
        };
    }

    void log_in(const QUrl& url, const QString& password) {
        open(url);
        ASSERT_TRUE(wait_until([this] { return is_connected(); }));
        GLogin login;
        login.from = name;
        login.to = QStringLiteral("+");
        login.pw = password;
        login.send(*this);
        ASSERT_TRUE(wait_until([this] { return !texts.isEmpty(); }));
    }

    void play(int number) {
        GPlay message = GPlay::from_args(name, QStringLiteral("#"), QStringLiteral("vork"));
        message.set_points(number, 0);
        message.send(*this);
    }

    [[nodiscard]] std::unique_ptr<GAbstractMessage> message(qsizetype index) const {
        const QJsonDocument text = QJsonDocument::fromJson(texts.at(index).toUtf8());
        return std::unique_ptr<GAbstractMessage>(GAbstractMessage::create_from_json(text.object()));
    }

    const QString name;
};

struct RelayWithGame : ::testing::Test {
    Relay relay;
    Player first{QStringLiteral("g:a")};
    Player second{QStringLiteral("g:b")};

    void pair() {
        const QUrl url = relay.url();
        first.log_in(url, QStringLiteral("secret"));
        second.log_in(url, QStringLiteral("secret"));
        ASSERT_TRUE(wait_until([this] { return first.texts.size() == 2; }));
    }
};

TEST_F(RelayWithGame, each_player_finds_the_other) {
    pair();
    const auto welcome = second.message(0);
    const auto* list = dynamic_cast<const GMessage*>(welcome.get());
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->subType, QStringLiteral("welcome"));
    EXPECT_EQ(list->get_the_user(second.name), first.name);
    const auto join = first.message(1);
    EXPECT_EQ(join->subType, QStringLiteral("join"));
    EXPECT_EQ(join->from, second.name);
}

TEST_F(RelayWithGame, ten_thousand_messages_arrive_each_way_in_order) {
    constexpr int COUNT = 10'000;
    pair();
    first.texts.clear();
    second.texts.clear();
    for (int number = 0; number < COUNT; ++number) {
        first.play(number);
        second.play(number);
        if (number % 100 == 0) {
            QCoreApplication::processEvents();
        }
    }
    ASSERT_TRUE(
        wait_until([this] { return first.texts.size() >= COUNT && second.texts.size() >= COUNT; }));
    QStringList expectedFirst;
    QStringList expectedSecond;
    for (int number = 0; number < COUNT; ++number) {
        const QString tail =
            QStringLiteral(
                R"(","game":"vork","ident":0,"payload":{"cmd":"points","countPointsMe":%1,)"
                R"("countPointsOpponent":0},"subType":"","to":"#","type":"PLAY"})")
                .arg(number);
        expectedFirst.push_back(QStringLiteral(R"({"from":"g:b)") + tail);
        expectedSecond.push_back(QStringLiteral(R"({"from":"g:a)") + tail);
    }
    EXPECT_EQ(first.texts, expectedFirst);
    EXPECT_EQ(second.texts, expectedSecond);
}

TEST_F(RelayWithGame, a_friend_that_leaves_is_told_as_bye) {
    pair();
    second.close(QWebSocketProtocol::CloseCodeNormal, QString());
    ASSERT_TRUE(wait_until([this] { return first.texts.size() == 3; }));
    EXPECT_TRUE(first.message(2)->is_bye());
}

TEST_F(RelayWithGame, a_wrong_password_is_told_and_ends_the_connection) {
    const QUrl url = relay.url();
    first.log_in(url, QStringLiteral("right"));
    second.log_in(url, QStringLiteral("wrong"));
    ASSERT_TRUE(wait_until([this] { return !second.is_connected(); }));
    EXPECT_TRUE(second.message(0)->is_type(QStringLiteral("ERROR")));
    EXPECT_EQ(second.closeCode(), QWebSocketProtocol::CloseCodePolicyViolated);
}

}  // namespace
