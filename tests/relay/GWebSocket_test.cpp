// The relay as the game's own socket and messages meet it.

#include "ze/net/GWebSocket.h"

#include "ze/net/GErrorMsg.h"
#include "ze/net/GLogin.h"
#include "ze/net/GMessage.h"
#include "ze/net/GPlay.h"
#include "ze/net/GPong.h"
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
using ze::net::GErrorMsg;
using ze::net::GLogin;
using ze::net::GMessage;
using ze::net::GPlay;
using ze::net::GPong;
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
                       QStringLiteral("--login-seconds"), QStringLiteral("2"),
                       QStringLiteral("--ping-seconds"), QStringLiteral("1"),
                       QStringLiteral("--silence-seconds"), QStringLiteral("4"),
                       QStringLiteral("--state-dir"), folder.path()});
    }
    ~Relay() {
        process.kill();
        process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Relay)

    /// From the line that the program prints for its host.
    [[nodiscard]] QUrl url() {
        const QRegularExpression address(QStringLiteral("wss://[^,]+"));
        EXPECT_TRUE(wait_until([this, &address] {
            text += QString::fromUtf8(process.readAll());
            return address.match(text).hasMatch();
        }));
        return QUrl(address.match(text).captured());
    }

private:
    QTemporaryDir folder;
    QProcess process;
    QString text;  ///< of its output
};

/// A game's socket that keeps what arrives.
class Player : public GWebSocket {
public:
    QStringList texts;  ///< without the pings
    int pings = 0;
    bool flagAnswersPings = false;

    explicit Player(const QString& playerName) : name(playerName) {
        listenerSSL = [this](const QList<QSslError>&) {
            ignoreSslErrors();
        };
        listenerText = [this](const QString& text) {
            on_text(text);
        };
    }

    void log_in(const QUrl& url, const QString& password) {
        open(url);
        ASSERT_TRUE(wait_until([this] { return is_connected(); }));
        send_login(password);
        ASSERT_TRUE(wait_until([this] { return !texts.isEmpty(); }));
    }

    void send_login(const QString& password) {
        GLogin login;
        login.from = name;
        login.to = QStringLiteral("+");
        login.pw = password;
        login.send(*this);
    }

    void chat(const QString& text) {
        GMessage message;
        message.subType = QStringLiteral("text");
        message.from = name;
        message.to = QStringLiteral("#");
        message.text = text;
        message.send(*this);
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

private:
    void on_text(const QString& text) {
        if (!text.contains(QStringLiteral(R"("type":"PING")"))) {
            texts.push_back(text);
            return;
        }
        ++pings;
        if (flagAnswersPings) {
            GPong pong;
            pong.from = name;
            pong.to = QStringLiteral("+");
            pong.send(*this);
        }
    }
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
    first.flagAnswersPings = true;
    second.flagAnswersPings = true;
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

TEST_F(RelayWithGame, who_returns_takes_over_his_place) {
    pair();
    Player back(second.name);
    back.log_in(relay.url(), QStringLiteral("secret"));
    ASSERT_TRUE(wait_until([this] { return first.texts.size() == 4 && !second.is_connected(); }));
    EXPECT_EQ(second.closeCode(), QWebSocketProtocol::CloseCodeNormal);
    EXPECT_TRUE(first.message(2)->is_bye());
    EXPECT_EQ(first.message(3)->subType, QStringLiteral("join"));
    EXPECT_EQ(first.message(3)->from, second.name);
    back.play(7);
    ASSERT_TRUE(wait_until([this] { return first.texts.size() == 5; }));
}

TEST_F(RelayWithGame, a_message_to_the_relay_goes_no_further) {
    pair();
    GPlay points = GPlay::from_args(first.name, QStringLiteral("+"), QStringLiteral("vork"));
    points.set_points(1, 2);
    points.send(first);
    first.play(7);
    ASSERT_TRUE(wait_until([this] { return second.texts.size() == 2; }));
    EXPECT_EQ(second.message(1)->to, QStringLiteral("#"));
}

TEST_F(RelayWithGame, chat_texts_too_many_or_too_long_are_dropped_and_told) {
    pair();
    const QString longest(500, QChar(0x00E9));
    for (const QString& text :
         {longest + QLatin1Char('x'), longest, QStringLiteral("2"), QStringLiteral("3"),
          QStringLiteral("4"), QStringLiteral("5"), QStringLiteral("6")}) {
        first.chat(text);
    }
    ASSERT_TRUE(wait_until([this] { return first.texts.size() == 4 && second.texts.size() == 6; }));
    const auto tooLong = first.message(2);
    const auto tooFast = first.message(3);
    EXPECT_EQ(dynamic_cast<const GMessage&>(*tooLong).text,
              QStringLiteral("Your text was not sent: it is too long."));
    EXPECT_EQ(dynamic_cast<const GMessage&>(*tooFast).text,
              QStringLiteral("Your text was not sent: wait a second between two texts."));
    EXPECT_EQ(dynamic_cast<const GMessage&>(*second.message(5)).text, QStringLiteral("5"));
}

TEST_F(RelayWithGame, who_answers_the_pings_stays_and_who_is_silent_has_to_go) {
    pair();
    first.flagAnswersPings = true;
    ASSERT_TRUE(wait_until([this] { return !second.is_connected(); }));
    EXPECT_EQ(second.closeCode(), QWebSocketProtocol::CloseCodePolicyViolated);
    ASSERT_TRUE(wait_until([this] { return first.message(first.texts.size() - 1)->is_bye(); }));
    EXPECT_TRUE(first.is_connected());
    EXPECT_GE(first.pings, 3);
}

struct RefusalRow {
    const char* title;
    QString name;
    QString password;
    QString frame;  ///< after the login, or in its place if there is no name
    int code;
    QWebSocketProtocol::CloseCode close = QWebSocketProtocol::CloseCodePolicyViolated;
};

// "g:a" and "g:b" are in with the password "secret".
QList<RefusalRow> refusal_rows() {
    const QString pw = QStringLiteral("secret");
    const QString play = QStringLiteral(R"({"type":"PLAY","from":"%1","to":"#"})");
    return {
        {"empty name", QStringLiteral(":"), pw, {}, 1},
        {"no colon", QStringLiteral("Nilo"), pw, {}, 2},
        {"65 characters", QStringLiteral("h:") + QString(63, QLatin1Char('x')), pw, {}, 3},
        {"a comma", QStringLiteral("h:a,b"), pw, {}, 4},
        {"no login", {}, {}, play.arg(QStringLiteral("h:a")), 5},
        {"silence in place of a login", {}, {}, {}, 6},
        {"wrong password", QStringLiteral("g:c"), QStringLiteral("wrong"), {}, 7},
        {"name taken", QStringLiteral("g:b"), QStringLiteral("wrong"), {}, 7},
        {"third member", QStringLiteral("g:c"), pw, {}, 9},
        {"another sender", QStringLiteral("h:a"), pw, play.arg(QStringLiteral("g:b")), 12},
        {"no object", QStringLiteral("h:a"), pw, QStringLiteral("[]"), 13},
        {"too large", QStringLiteral("h:a"), pw, QString(17000, QLatin1Char('x')), 15,
         QWebSocketProtocol::CloseCodeTooMuchData},
    };
}

/// The "ERROR" among what a player was told; null if there is none.
std::unique_ptr<GErrorMsg> refusal_of(const Player& player) {
    for (qsizetype i = 0; i < player.texts.size(); ++i) {
        auto message = player.message(i);
        if (message->is_type(QStringLiteral("ERROR"))) {
            return std::unique_ptr<GErrorMsg>(dynamic_cast<GErrorMsg*>(message.release()));
        }
    }
    return nullptr;
}

TEST_F(RelayWithGame, a_refused_player_is_told_why_and_closed) {
    pair();
    first.flagAnswersPings = true;
    second.flagAnswersPings = true;
    for (const RefusalRow& row : refusal_rows()) {
        Player player(row.name);
        player.open(relay.url());
        ASSERT_TRUE(wait_until([&player] { return player.is_connected(); })) << row.title;
        if (!row.name.isEmpty()) {
            player.send_login(row.password);
        }
        if (!row.frame.isEmpty()) {
            player.sendTextMessage(row.frame);
        }
        ASSERT_TRUE(wait_until([&player] { return !player.is_connected(); })) << row.title;
        EXPECT_EQ(player.closeCode(), row.close) << row.title;
        const auto error = refusal_of(player);
        ASSERT_NE(error, nullptr) << row.title;
        EXPECT_EQ(error->code, row.code) << row.title;
        EXPECT_EQ(error->text, player.closeReason()) << row.title;
    }
    EXPECT_TRUE(first.is_connected() && second.is_connected());
}

}  // namespace
