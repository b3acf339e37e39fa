// Who may enter which group.

#include "HubFixture.h"
#include "Reason.h"

#include <gtest/gtest.h>

namespace {

using relay::Reason;
using Texts = std::vector<std::string>;

struct HubLogin : ::testing::Test, relay_test::HubFixture {
    static Texts refusal(Reason reason, const std::string& to = "") {
        return {relay::error_message(to, relay::info(reason)),
                relay::chat_message("text", "relay", to, relay::info(reason).text)};
    }
    static std::string closed(Reason reason) {
        return std::to_string(static_cast<int>(relay::info(reason).close)) + " " +
               std::string(relay::info(reason).text);
    }
    void expect_refused(relay_test::FakeClient& client, Reason reason) {
        EXPECT_EQ(client.take(), refusal(reason));
        EXPECT_EQ(client.closed, closed(reason));
        EXPECT_EQ(metrics.refusals[static_cast<std::size_t>(reason)], 1U);
    }
};

TEST_F(HubLogin, the_first_member_is_welcomed_with_its_own_name_alone) {
    auto client = connect();
    send(*client, login("g:a", "pw"));
    EXPECT_EQ(client->take(),
              Texts{R"({"type":"CHAT","subType":"welcome","from":"relay","to":"g:a","ident":0,)"
                    R"("text":"Welcome, your friend is not here yet.","extraData":"g:a"})"});
}

TEST_F(HubLogin, the_second_member_is_welcomed_with_both_names_and_the_first_hears_join) {
    auto first = member("g:a");
    auto second = connect();
    send(*second, login("g:b", "secret"));
    EXPECT_EQ(second->take(),
              Texts{R"({"type":"CHAT","subType":"welcome","from":"relay","to":"g:b","ident":0,)"
                    R"("text":"Welcome, your friend is here.","extraData":"g:a, g:b"})"});
    EXPECT_EQ(first->take(),
              Texts{R"({"type":"CHAT","subType":"join","from":"g:b","to":"g:a","ident":0,)"
                    R"("text":"has joined.","extraData":""})"});
}

TEST_F(HubLogin, a_member_that_leaves_is_told_to_the_other_as_bye) {
    auto first = member("g:a");
    auto second = member("g:b");
    first->received.clear();
    hub.leave(second->session, "closed");
    EXPECT_EQ(first->take(),
              Texts{R"({"type":"CHAT","subType":"bye","from":"g:b","to":"g:a","ident":0,)"
                    R"("text":"has left.","extraData":""})"});
}

TEST_F(HubLogin, a_leave_twice_is_told_once) {
    auto first = member("g:a");
    auto second = member("g:b");
    first->received.clear();
    hub.leave(second->session, "closed");
    hub.leave(second->session, "closed");
    EXPECT_EQ(first->take().size(), 1U);
}

TEST_F(HubLogin, the_group_is_what_stands_before_the_first_colon) {
    auto first = member("g:a:x");
    auto second = member("g:b:y");
    EXPECT_EQ(hub.count_groups(), 1U);
    EXPECT_EQ(first->take().size(), 1U);
}

struct NameRow {
    const char* title;
    std::string name;
    Reason reason;
};

TEST_F(HubLogin, a_name_that_breaks_a_rule_is_refused) {
    const NameRow rows[] = {
        {"empty", "", Reason::NAME_EMPTY},
        {"empty group", ":a", Reason::NAME_EMPTY},
        {"empty user", "g:", Reason::NAME_EMPTY},
        {"lone colon", ":", Reason::NAME_EMPTY},
        {"no colon", "Nilo", Reason::NAME_WITHOUT_COLON},
        {"65 characters", "g:" + std::string(63, 'a'), Reason::NAME_TOO_LONG},
        {"comma", "g:a,b", Reason::NAME_BAD_CHARACTER},
        {"blank", "g:a b", Reason::NAME_BAD_CHARACTER},
        {"line feed", "g:a\nb", Reason::NAME_BAD_CHARACTER},
        {"zero", std::string("g:a\0b", 5), Reason::NAME_BAD_CHARACTER},
        {"delete", "g:a\x7F", Reason::NAME_BAD_CHARACTER},
        {"no-break space", "g:a\xC2\xA0", Reason::NAME_BAD_CHARACTER},
        {"zero-width space", "g:a\xE2\x80\x8B", Reason::NAME_BAD_CHARACTER},
        {"right-to-left mark", "g:a\xE2\x80\x8F", Reason::NAME_BAD_CHARACTER},
        {"grapheme joiner", "g:a\xCD\x8F", Reason::NAME_BAD_CHARACTER},
        {"Arabic letter mark", "g:a\xD8\x9C", Reason::NAME_BAD_CHARACTER},
        {"Khmer inherent vowel", "g:a\xE1\x9E\xB5", Reason::NAME_BAD_CHARACTER},
        {"Mongolian variation selector", "g:a\xE1\xA0\x8B", Reason::NAME_BAD_CHARACTER},
        {"empty Braille cell", "g:a\xE2\xA0\x80", Reason::NAME_BAD_CHARACTER},
        {"Hangul filler", "g:a\xE3\x85\xA4", Reason::NAME_BAD_CHARACTER},
        {"variation selector", "g:a\xEF\xB8\x8F", Reason::NAME_BAD_CHARACTER},
        {"narrow Hangul filler", "g:a\xEF\xBE\xA0", Reason::NAME_BAD_CHARACTER},
        {"unassigned special", "g:a\xEF\xBF\xB0", Reason::NAME_BAD_CHARACTER},
        {"annotation anchor", "g:a\xEF\xBF\xB9", Reason::NAME_BAD_CHARACTER},
        {"shorthand control", "g:a\xF0\x9B\xB2\xA3", Reason::NAME_BAD_CHARACTER},
        {"musical control", "g:a\xF0\x9D\x85\xB3", Reason::NAME_BAD_CHARACTER},
        {"language tag", "g:a\xF3\xA0\x80\x81", Reason::NAME_BAD_CHARACTER},
        {"unassigned tag", "g:a\xF3\xA0\x82\x80", Reason::NAME_BAD_CHARACTER},
        {"late variation selector", "g:a\xF3\xA0\x87\xAF", Reason::NAME_BAD_CHARACTER},
        {"last unassigned ignorable", "g:a\xF3\xA0\xBF\xBF", Reason::NAME_BAD_CHARACTER},
    };
    for (const NameRow& row : rows) {
        auto client = connect(row.title);
        send(*client, login(row.name, "pw"));
        EXPECT_EQ(client->closed, closed(row.reason)) << row.title;
        EXPECT_EQ(client->take(), refusal(row.reason)) << row.title;
    }
    EXPECT_EQ(hub.count_groups(), 0U);
}

TEST_F(HubLogin, a_first_frame_that_is_not_looked_at_is_a_failed_login) {
    limits.failedLogins = 1;
    auto first = connect("192.0.2.9");
    hub.on_bad_frame(first->session, Reason::NOT_TEXT, now);
    expect_refused(*first, Reason::NO_LOGIN);
    auto second = connect("192.0.2.9");
    send(*second, login("g:a", "pw"));
    expect_refused(*second, Reason::FAILED_LOGINS);
}

TEST_F(HubLogin, a_newcomer_that_does_not_read_does_not_stay) {
    auto newcomer = connect();
    newcomer->queuedBytes = limits.queuedOutput;
    send(*newcomer, login("g:a", "pw"));
    EXPECT_EQ(newcomer->closed, closed(Reason::OUTPUT_FULL));
    EXPECT_EQ(hub.count_groups(), 0U);
}

TEST_F(HubLogin, a_name_of_64_characters_that_are_no_single_bytes_may_enter) {
    std::string name = "g:";
    for (int i = 0; i < 62; ++i) {
        name += "\xC3\xA9";
    }
    auto client = member(name);
    EXPECT_EQ(client->closed, "");
    EXPECT_EQ(client->session.name, name);
}

TEST_F(HubLogin, a_wrong_password_is_refused) {
    auto first = member("g:a", "right");
    auto second = connect();
    send(*second, login("g:b", "wrong"));
    expect_refused(*second, Reason::WRONG_PASSWORD);
    EXPECT_EQ(first->take(), Texts{});
}

TEST_F(HubLogin, an_empty_password_is_a_password_like_any_other) {
    auto first = member("g:a", "");
    auto second = connect();
    send(*second, login("g:b", "x"));
    expect_refused(*second, Reason::WRONG_PASSWORD);
}

TEST_F(HubLogin, a_third_member_is_refused) {
    auto first = member("g:a");
    auto second = member("g:b");
    auto third = connect();
    send(*third, login("g:c", "secret"));
    expect_refused(*third, Reason::GROUP_FULL);
}

TEST_F(HubLogin, a_third_member_with_a_wrong_password_does_not_learn_that_the_group_is_full) {
    auto first = member("g:a");
    auto second = member("g:b");
    auto third = connect();
    send(*third, login("g:c", "guess"));
    expect_refused(*third, Reason::WRONG_PASSWORD);
}

TEST_F(HubLogin, a_taken_name_with_another_password_is_told_as_a_wrong_password) {
    auto first = member("g:a", "right");
    lines.clear();
    auto second = connect();
    send(*second, login("g:a", "wrong"));
    EXPECT_EQ(second->take(), refusal(Reason::WRONG_PASSWORD));
    EXPECT_EQ(second->closed, closed(Reason::WRONG_PASSWORD));
    EXPECT_EQ(first->closed, "");
    EXPECT_EQ(lines, Texts{R"(refused reason="name_taken" name="" address="192.0.2.1")"});
}

TEST_F(HubLogin, who_returns_takes_over_his_own_stale_place) {
    auto stale = member("g:a");
    auto friendClient = member("g:b");
    stale->received.clear();
    auto back = connect();
    send(*back, login("g:a", "secret"));
    EXPECT_EQ(stale->take(), refusal(Reason::REPLACED, "g:a"));
    EXPECT_EQ(stale->closed, closed(Reason::REPLACED));
    EXPECT_EQ(friendClient->take(),
              (Texts{relay::chat_message("bye", "g:a", "g:b", "has left."),
                     relay::chat_message("join", "g:a", "g:b", "has joined.")}));
    EXPECT_EQ(back->take(),
              Texts{relay::chat_message("welcome", "relay", "g:a", "Welcome, your friend is here.",
                                        "g:b, g:a")});
}

TEST_F(HubLogin, who_returns_alone_keeps_the_group) {
    auto stale = member("g:a");
    auto back = connect();
    send(*back, login("g:a", "secret"));
    EXPECT_EQ(back->take(),
              Texts{relay::chat_message("welcome", "relay", "g:a",
                                        "Welcome, your friend is not here yet.", "g:a")});
    EXPECT_EQ(metrics.members, 1U);
}

TEST_F(HubLogin, an_emptied_group_forgets_its_password) {
    member("g:a", "old").reset();
    EXPECT_EQ(hub.count_groups(), 0U);
    auto client = member("g:b", "new");
    EXPECT_EQ(client->closed, "");
}

struct FirstFrameRow {
    const char* title;
    std::string frame;
};

TEST_F(HubLogin, a_first_frame_that_is_no_login_is_refused) {
    const FirstFrameRow rows[] = {
        {"another type", R"({"type":"PLAY","from":"g:a","to":"+"})"},
        {"lower case", R"({"type":"login","from":"g:a","to":"+"})"},
        {"to the friend", R"({"type":"LOGIN","from":"g:a","to":"#","pw":"x"})"},
        {"no addressee", R"({"type":"LOGIN","from":"g:a","pw":"x"})"},
        {"no object", "[]"},
        {"no JSON", "LOGIN"},
        {"empty", ""},
    };
    for (const FirstFrameRow& row : rows) {
        auto client = connect(row.title);
        send(*client, row.frame);
        EXPECT_EQ(client->closed, closed(Reason::NO_LOGIN)) << row.title;
    }
}

TEST_F(HubLogin, without_a_login_in_time_a_client_is_refused) {
    auto client = connect();
    pass(limits.login - std::chrono::milliseconds(1));
    hub.check(client->session, now);
    EXPECT_EQ(client->closed, "");
    pass(std::chrono::milliseconds(1));
    hub.check(client->session, now);
    expect_refused(*client, Reason::LOGIN_TIMEOUT);
}

TEST_F(HubLogin, an_address_that_guesses_has_to_wait) {
    auto first = member("g:a", "right");
    for (std::size_t i = 0; i < limits.failedLogins; ++i) {
        auto guess = connect("198.51.100.7");
        send(*guess, login("g:b", "wrong"));
        EXPECT_EQ(guess->closed, closed(Reason::WRONG_PASSWORD));
    }
    auto late = connect("198.51.100.7");
    send(*late, login("g:b", "right"));
    expect_refused(*late, Reason::FAILED_LOGINS);
    auto other = connect("198.51.100.8");
    send(*other, login("g:b", "right"));
    EXPECT_EQ(other->closed, "");
}

TEST_F(HubLogin, a_minute_later_the_guessing_address_may_log_in_again) {
    for (std::size_t i = 0; i < limits.failedLogins; ++i) {
        auto guess = connect("198.51.100.7");
        send(*guess, "{}");
    }
    pass(std::chrono::minutes(1));
    auto late = connect("198.51.100.7");
    send(*late, login("g:b", "right"));
    EXPECT_EQ(late->closed, "");
}

TEST_F(HubLogin, each_event_leaves_one_line_without_the_password) {
    auto first = member("g:a", "hush");
    auto second = connect();
    send(*second, login("g:b", "guess"));
    hub.leave(first->session, "closed");
    EXPECT_EQ(lines, (Texts{R"(login name="g:a" address="192.0.2.1")",
                            R"(refused reason="wrong_password" name="" address="192.0.2.1")",
                            R"(left reason="closed" name="g:a" address="192.0.2.1")"}));
}

TEST_F(HubLogin, members_and_groups_are_counted) {
    auto first = member("g:a");
    auto second = member("g:b");
    auto third = member("h:a");
    EXPECT_EQ(metrics.members, 3U);
    EXPECT_EQ(metrics.groups, 2U);
    hub.leave(third->session, "closed");
    EXPECT_EQ(metrics.members, 2U);
    EXPECT_EQ(metrics.groups, 1U);
}

}  // namespace
