// Guesses at a group's password from many addresses, and the friend who knows it.

#include "HubFixture.h"
#include "Reason.h"

#include <iostream>

#include <gtest/gtest.h>

namespace {

using relay::Reason;
using relay_test::FakeClient;
using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;
using Clients = std::vector<std::unique_ptr<FakeClient>>;

constexpr int ATTACKERS = 60;  ///< each with an address of its own
constexpr milliseconds STEP{500};

std::string attacker_address(int number) {
    return "198.51.100." + std::to_string(number);
}

std::string closed(Reason reason) {
    return std::to_string(static_cast<int>(relay::info(reason).close)) + " " +
           std::string(relay::info(reason).text);
}

struct HubGuess : ::testing::Test, relay_test::HubFixture {
    [[nodiscard]] std::uint64_t count_guesses() const {
        return metrics.refusals[static_cast<std::size_t>(Reason::WRONG_PASSWORD)] +
               metrics.refusals[static_cast<std::size_t>(Reason::NAME_TAKEN)];
    }

    void guess(const std::string& address) {
        auto client = connect(address);
        send(*client, login("g:x", "wrong"));
    }

    /// No stranger's guess is looked at from now on until 5 s have passed.
    void use_up_guesses() {
        for (std::size_t i = 0; i < limits.failedLoginsPerGroup; ++i) {
            guess("203.0.113." + std::to_string(i));
        }
    }

    void check(FakeClient& client) {
        if (now >= hub.next_check(client.session)) {
            hub.check(client.session, now);
        }
    }

    /// One step of an attack: who was refused or has waited long enough comes again at once.
    void attack(Clients& attackers, seconds patience) {
        for (int i = 0; i < ATTACKERS; ++i) {
            auto& attacker = attackers[static_cast<std::size_t>(i)];
            const bool flagTired = attacker && now >= attacker->session.tmEntered + patience;
            if (!attacker || !attacker->closed.empty() || flagTired) {
                attacker.reset();
                attacker = connect(attacker_address(i));
                send(*attacker, login("g:a", "guess"));
            }
            check(*attacker);
        }
        check(*member_);
        send(*member_, play("g:a", "+"));
        now += STEP;
    }

    void attack_for(Clients& attackers, seconds patience, milliseconds time) {
        for (milliseconds passed{0}; passed < time; passed += STEP) {
            attack(attackers, patience);
        }
    }

    /// A group without a past, of one member.
    void begin_anew() {
        hub.leave(member_->session, "gone");
        pass(minutes(5));
        member_ = member("g:a", "right");
    }

    /// Seconds until the friend is in, who tries again whenever he is told to.
    double time_of_friend(Clients& attackers, seconds patience, minutes limit) {
        const relay::TimePoint begun = now;
        std::unique_ptr<FakeClient> client;
        while (now < begun + limit) {
            if (!client || !client->closed.empty()) {
                client = connect("192.0.2.77");
                send(*client, login("g:b", "right"));
            }
            check(*client);
            if (client->session.is_member()) {
                return std::chrono::duration<double>(now - begun).count();
            }
            attack(attackers, patience);
        }
        return -1;
    }

    std::unique_ptr<FakeClient> member_ = member("g:a", "right");
};

TEST_F(HubGuess, sixty_addresses_get_twelve_guesses_a_minute_after_the_first_twelve) {
    for (const seconds patience : {seconds(1), seconds(3), seconds(3600)}) {
        Clients attackers(ATTACKERS);
        const std::uint64_t before = count_guesses();
        std::uint64_t last = before;
        for (int minute = 0; minute < 4; ++minute) {
            attack_for(attackers, patience, minutes(1));
            EXPECT_LE(count_guesses() - last, minute == 0 ? 24U : 12U) << patience.count();
            last = count_guesses();
        }
        EXPECT_GE(last - before, 56U) << "the attack goes on all the time, " << patience.count();
        begin_anew();
    }
}

struct FriendRow {
    const char* title;
    seconds patience;  ///< of the attackers
    minutes before;    ///< how long they have been at it when the friend comes
    double most;       ///< seconds until he is in
};

TEST_F(HubGuess, the_friend_gets_in_while_sixty_addresses_guess) {
    const FriendRow rows[] = {
        {"patient ones have just come", seconds(3600), minutes(0), 11},
        {"patient ones are at it", seconds(3600), minutes(4), 11},
        {"hasty ones have just come", seconds(3), minutes(0), 61},
        {"hasty ones are at it", seconds(3), minutes(4), 11},
        {"ones that come again at each step are at it", seconds(0), minutes(1), 11},
    };
    for (const FriendRow& row : rows) {
        Clients attackers(ATTACKERS);
        attack_for(attackers, row.patience, row.before + STEP);
        const double time = time_of_friend(attackers, row.patience, minutes(10));
        EXPECT_GE(time, 0) << row.title;
        EXPECT_LE(time, row.most) << row.title;
        std::cout << row.title << ": the friend is in after " << time << " s\n";
        begin_anew();
    }
}

TEST_F(HubGuess, a_login_that_waits_hears_nothing_before_its_turn_right_or_wrong) {
    for (const char* password : {"right", "wrong"}) {
        begin_anew();
        use_up_guesses();
        auto client = connect("192.0.2.77");
        send(*client, login("g:b", password));
        pass(milliseconds(4999));
        hub.check(client->session, now);
        EXPECT_TRUE(client->received.empty() && client->closed.empty()) << password;
        pass(milliseconds(3));
        hub.check(client->session, now);
        EXPECT_FALSE(client->received.empty()) << password;
        EXPECT_EQ(client->session.is_member(), client->closed.empty());
        EXPECT_EQ(client->closed.empty(), password == std::string_view("right"));
    }
}

TEST_F(HubGuess, a_login_waits_until_half_a_minute_beyond_the_time_for_a_login) {
    use_up_guesses();
    Clients line;
    for (int i = 0; i < 20; ++i) {
        line.push_back(connect(attacker_address(i)));
        send(*line.back(), login("g:c", "wrong"));
    }
    auto& last = *line[10];  // in the middle of the line: its turn does not come in time
    for (; now < last.session.tmEntered + seconds(40); pass(milliseconds(1))) {
        check(last);
    }
    EXPECT_EQ(last.closed, "");
    hub.check(last.session, now);
    EXPECT_EQ(last.closed, closed(Reason::GROUP_GUESSED));
}

TEST_F(HubGuess, who_comes_from_where_a_member_came_from_does_not_wait) {
    use_up_guesses();
    auto housemate = connect();
    send(*housemate, login("g:b", "right"));
    EXPECT_TRUE(housemate->session.is_member());
    hub.leave(member_->session, "lost");
    auto back = connect();
    send(*back, login("g:a", "right"));
    EXPECT_TRUE(back->session.is_member());
}

TEST_F(HubGuess, guesses_from_where_a_member_came_from_take_no_turn_of_a_stranger) {
    limits.failedLogins = 50;
    for (std::size_t i = 0; i < limits.failedLogins; ++i) {
        guess(member_->session.address);
    }
    auto stranger = connect("192.0.2.77");
    send(*stranger, login("g:b", "right"));
    EXPECT_TRUE(stranger->session.is_member());
}

TEST_F(HubGuess, another_group_is_not_slowed_down) {
    use_up_guesses();
    auto other = connect("192.0.2.77");
    send(*other, login("h:a", "x"));
    EXPECT_TRUE(other->session.is_member());
}

TEST_F(HubGuess, a_group_remembers_its_failures_when_its_only_member_returns) {
    use_up_guesses();
    auto back = connect();
    send(*back, login("g:a", "right"));
    EXPECT_EQ(member_->closed, closed(Reason::REPLACED));
    auto stranger = connect("192.0.2.77");
    send(*stranger, login("g:b", "wrong"));
    EXPECT_EQ(stranger->closed, "");
    EXPECT_EQ(hub.count_groups(), 1U);
}

TEST_F(HubGuess, who_waits_for_a_group_that_ends_is_told_to_come_again) {
    use_up_guesses();
    auto stranger = connect("192.0.2.77");
    send(*stranger, login("g:b", "right"));
    hub.leave(member_->session, "gone");
    EXPECT_EQ(stranger->closed, closed(Reason::GROUP_GUESSED));
    EXPECT_EQ(hub.count_groups(), 0U);
}

TEST_F(HubGuess, who_leaves_while_he_waits_has_no_turn) {
    use_up_guesses();
    auto gone = connect("192.0.2.77");
    auto next = connect("192.0.2.78");
    send(*gone, login("g:b", "right"));
    send(*next, login("g:c", "right"));
    gone.reset();
    pass(seconds(6));
    hub.check(next->session, now);
    EXPECT_TRUE(next->session.is_member());
    EXPECT_EQ(metrics.members, 2U);
}

TEST_F(HubGuess, what_a_client_sends_while_it_waits_is_dropped) {
    use_up_guesses();
    auto waiting = connect("192.0.2.77");
    send(*waiting, login("g:b", "right"));
    send(*waiting, play("g:b", "#"));
    send(*waiting, login("g:c", "other"));
    pass(seconds(6));
    hub.check(waiting->session, now);
    EXPECT_EQ(waiting->session.name, "g:b");
    EXPECT_EQ(metrics.framesDropped, 2U);
}

// What is not read stays in the connection's buffer: nobody may fill that while he waits.
TEST_F(HubGuess, a_frame_that_nobody_may_send_ends_a_client_that_waits) {
    use_up_guesses();
    for (const Reason reason : {Reason::NOT_TEXT, Reason::FRAME_SIZE}) {
        auto waiting = connect("192.0.2.77");
        send(*waiting, login("g:b", "right"));
        hub.on_bad_frame(waiting->session, reason, now);
        EXPECT_EQ(waiting->closed, closed(reason));
        EXPECT_FALSE(waiting->session.waitsFor);
    }
}

TEST_F(HubGuess, who_has_waited_long_is_not_taken_for_silent) {
    use_up_guesses();
    auto waiting = connect("192.0.2.77");
    send(*waiting, login("g:b", "right"));
    pass(limits.silence);
    send(*member_, play("g:a", "+"));
    hub.check(waiting->session, now);
    hub.check(waiting->session, now);
    EXPECT_TRUE(waiting->session.is_member());
    EXPECT_EQ(waiting->closed, "");
}

TEST_F(HubGuess, a_full_group_says_so_at_the_turn_of_who_knows_the_word) {
    auto second = connect();
    send(*second, login("g:b", "right"));
    use_up_guesses();
    auto third = connect("192.0.2.77");
    send(*third, login("g:c", "right"));
    EXPECT_EQ(third->closed, "");
    pass(seconds(6));
    hub.check(third->session, now);
    EXPECT_EQ(third->closed, closed(Reason::GROUP_FULL));
}

}  // namespace
