// What is forwarded to whom, the limits, the heartbeat.

#include "HubFixture.h"
#include "Reason.h"

#include <gtest/gtest.h>

namespace {

using relay::Reason;
using relay_test::FakeClient;
using std::chrono::milliseconds;
using std::chrono::seconds;
using Texts = std::vector<std::string>;

struct Hub : ::testing::Test, relay_test::HubFixture {
    Hub() { a->received.clear(); }

    static std::string closed(Reason reason) {
        return std::to_string(static_cast<int>(relay::info(reason).close)) + " " +
               std::string(relay::info(reason).text);
    }

    std::unique_ptr<FakeClient> a = member("g:a");
    std::unique_ptr<FakeClient> b = member("g:b");
};

struct AddresseeRow {
    const char* to;
    bool flagArrives;
};

TEST_F(Hub, the_addressee_decides_whether_a_frame_goes_to_the_friend) {
    const AddresseeRow rows[] = {{"#", true}, {"*", true},   {"+", false},
                                 {"", false}, {"##", false}, {"g:b", false}};
    for (const AddresseeRow& row : rows) {
        const std::string frame = play("g:a", row.to);
        send(*a, frame);
        EXPECT_EQ(b->take(), row.flagArrives ? Texts{frame} : Texts{}) << row.to;
        EXPECT_EQ(a->take(), Texts{}) << row.to;
    }
}

TEST_F(Hub, a_frame_arrives_byte_for_byte) {
    const std::string frame =
        " {\"to\" :\t\"\\u0023\", \"from\":\"g:a\",\n\"type\":\"\\u0050LAY\", \"x\":1.50e+01} ";
    send(*a, frame);
    EXPECT_EQ(b->take(), Texts{frame});
}

TEST_F(Hub, what_only_the_relay_may_say_reaches_no_friend_and_ends_nobody) {
    for (const char* to : {"#", "*"}) {
        for (const char* type : {"PING", "ERROR", "ADMIN"}) {
            send(*a, word(type, "", "g:a", to));
        }
        for (const char* subType : {"welcome", "join", "bye"}) {
            send(*a, word("CHAT", subType, "g:a", to));
        }
    }
    send(*a, R"({"\u0074ype":"CH\u0041T","subType":"b\u0079e","from":"g:a","to":"#"})");
    EXPECT_EQ(b->take(), Texts{});
    EXPECT_EQ(metrics.framesDropped, 13U);
    EXPECT_EQ(a->closed + b->closed, "");
}

TEST_F(Hub, a_friend_hears_all_that_a_client_may_say) {
    const Texts frames = {word("CHAT", "text", "g:a"), word("CHAT", "", "g:a"),
                          word("PLAY", "bye", "g:a"),  word("PONG", "", "g:a"),
                          word("LOGIN", "", "g:a"),    word("HELLO", "welcome", "g:a"),
                          chat("g:a", "bye"),          chat("g:a", R"({"type":"PING"})")};
    for (const std::string& frame : frames) {
        send(*a, frame);
    }
    EXPECT_EQ(b->take(), frames);
}

TEST_F(Hub, a_forger_leaves_one_line_however_often_he_forges) {
    lines.clear();
    for (int i = 0; i < 9; ++i) {
        send(*a, word("CHAT", "bye", "g:a"));
    }
    send(*b, word("PING", "x", "g:b"));
    EXPECT_EQ(lines, (Texts{R"(forged word="bye" name="g:a" address="192.0.2.1")",
                            R"(forged word="PING" name="g:b" address="192.0.2.1")"}));
}

TEST_F(Hub, frames_keep_their_order) {
    Texts sent;
    for (int i = 0; i < 1000; ++i) {
        sent.push_back(play("g:a", "#", i));
        send(*a, sent.back());
    }
    EXPECT_EQ(b->take(), sent);
}

TEST_F(Hub, forwarded_frames_leave_together_when_the_senders_turn_ends) {
    b->received.clear();
    b->flushed = 0;
    send(*a, play("g:a", "#", 1));
    send(*a, play("g:a", "#", 2));
    EXPECT_EQ(b->flushed, 0U);
    hub.on_turn_end(a->session);
    EXPECT_EQ(b->flushed, 2U);
}

TEST_F(Hub, what_the_relay_says_itself_leaves_at_once) {
    b->received.clear();
    hub.leave(a->session, "closed");
    EXPECT_EQ(b->flushed, 1U);
}

TEST_F(Hub, another_group_hears_nothing) {
    auto stranger = member("h:a");
    send(*a, play("g:a", "#"));
    EXPECT_EQ(stranger->take(), Texts{});
}

TEST_F(Hub, a_frame_without_a_friend_is_dropped) {
    auto alone = member("h:a");
    send(*alone, play("h:a", "#"));
    EXPECT_EQ(alone->take(), Texts{});
    EXPECT_EQ(metrics.framesDropped, 1U);
}

struct FromRow {
    const char* title;
    std::string frame;
};

TEST_F(Hub, a_frame_in_another_name_is_refused) {
    const FromRow rows[] = {
        {"the friend's", R"({"type":"PLAY","from":"g:b","to":"#"})"},
        {"to the relay", R"({"type":"PONG","from":"g:b","to":"+"})"},
        {"a part", R"({"type":"PLAY","from":"g","to":"#"})"},
        {"missing", R"({"type":"PLAY","to":"#"})"},
        {"no string", R"({"type":"PLAY","from":["g:x"],"to":"#"})"},
    };
    for (const FromRow& row : rows) {
        auto x = member("x:x");
        send(*x, row.frame);
        EXPECT_EQ(x->closed, closed(Reason::FOREIGN_FROM)) << row.title;
    }
    EXPECT_EQ(b->take(), Texts{});
}

TEST_F(Hub, a_frame_that_is_no_json_object_is_refused_and_the_friend_hears_bye) {
    send(*a, "{\"from\":\"g:a\"");
    EXPECT_EQ(a->closed, closed(Reason::NOT_JSON));
    EXPECT_EQ(b->take(), Texts{relay::chat_message("bye", "g:a", "g:b", "has left.")});
}

TEST_F(Hub, a_frame_with_two_senders_is_refused) {
    send(*a, R"({"type":"PLAY","from":"g:a","to":"#","from":"g:b"})");
    EXPECT_EQ(a->closed, closed(Reason::NOT_JSON));
}

TEST_F(Hub, a_closed_client_is_not_heard_any_more) {
    hub.refuse(a->session, Reason::SILENT);
    b->received.clear();
    send(*a, play("g:a", "#"));
    EXPECT_EQ(b->take(), Texts{});
}

TEST_F(Hub, five_chat_texts_pass_at_once_and_then_one_a_second) {
    for (int i = 0; i < 7; ++i) {
        send(*a, chat("g:a", std::to_string(i)));
    }
    EXPECT_EQ(b->take().size(), 5U);
    pass(seconds(1));
    send(*a, chat("g:a", "7"));
    send(*a, chat("g:a", "8"));
    EXPECT_EQ(b->take(), Texts{chat("g:a", "7")});
    EXPECT_EQ(a->closed, "");
}

TEST_F(Hub, who_chats_too_fast_is_told_once_in_a_row) {
    for (int i = 0; i < 9; ++i) {
        send(*a, chat("g:a", "x"));
    }
    EXPECT_EQ(a->take(),
              Texts{relay::chat_message("text", "relay", "g:a",
                                        "Your text was not sent: wait a second between two "
                                        "texts.")});
}

TEST_F(Hub, a_chat_text_of_500_characters_passes_and_one_of_501_does_not) {
    std::string text;
    for (int i = 0; i < 500; ++i) {
        text += "\xC3\xA9";
    }
    send(*a, chat("g:a", text));
    send(*a, chat("g:a", text + "x"));
    EXPECT_EQ(b->take(), Texts{chat("g:a", text)});
    EXPECT_EQ(a->take(), Texts{relay::chat_message("text", "relay", "g:a",
                                                   "Your text was not sent: it is too long.")});
}

TEST_F(Hub, play_messages_do_not_count_as_chat) {
    for (int i = 0; i < 100; ++i) {
        send(*a, play("g:a", "#", i));
    }
    EXPECT_EQ(b->take().size(), 100U);
}

TEST_F(Hub, a_player_with_a_1000_hz_mouse_meets_no_limit) {
    const std::string frame = play("g:a", "#") + std::string(60, ' ');
    for (int i = 0; i < 60 * 1000; ++i) {
        pass(milliseconds(1));
        hub.on_bytes(a->session, frame.size() + 40, now);
        send(*a, frame);
    }
    EXPECT_EQ(b->take().size(), 60U * 1000);
    EXPECT_EQ(a->closed, "");
}

TEST_F(Hub, a_stall_of_a_second_at_1000_hz_may_arrive_at_once) {
    for (int i = 0; i < 1000; ++i) {
        send(*a, play("g:a", "#", i));
    }
    EXPECT_EQ(a->closed, "");
}

TEST_F(Hub, too_many_frames_end_the_client_and_not_its_friend) {
    const std::size_t burst = limits.framesPerSecond * limits.burstSeconds;
    for (std::size_t i = 1; i < burst; ++i) {  // the login was the first
        send(*a, play("g:a", "+"));
    }
    EXPECT_EQ(a->closed, "");
    send(*a, play("g:a", "+"));
    EXPECT_EQ(a->closed, closed(Reason::FRAME_RATE));
    EXPECT_EQ(b->closed, "");
}

TEST_F(Hub, control_frames_count_as_frames) {
    for (std::size_t i = 0; i <= limits.framesPerSecond * limits.burstSeconds; ++i) {
        hub.on_control(a->session, now);
    }
    EXPECT_EQ(a->closed, closed(Reason::FRAME_RATE));
}

TEST_F(Hub, pings_of_a_client_that_reads_no_pong_end_it) {
    a->queuedBytes = limits.queuedOutput + 1;
    hub.on_control(a->session, now);
    EXPECT_EQ(a->closed, closed(Reason::OUTPUT_FULL));
}

TEST_F(Hub, too_many_bytes_end_the_client) {
    hub.on_bytes(a->session, limits.bytesPerSecond * limits.burstSeconds, now);
    EXPECT_EQ(a->closed, "");
    hub.on_bytes(a->session, 1, now);
    EXPECT_EQ(a->closed, closed(Reason::BYTE_RATE));
}

TEST_F(Hub, a_friend_that_reads_too_slowly_has_to_go_and_the_sender_hears_bye) {
    const std::string frame = play("g:a", "#");
    b->queuedBytes = limits.queuedOutput - frame.size();
    send(*a, frame);
    EXPECT_EQ(b->closed, "");
    b->queuedBytes += 1;
    send(*a, frame);
    EXPECT_EQ(b->closed, closed(Reason::OUTPUT_FULL));
    EXPECT_EQ(a->take(), Texts{relay::chat_message("bye", "g:b", "g:a", "has left.")});
}

TEST_F(Hub, what_the_relay_says_itself_counts_too) {
    b->queuedBytes = limits.queuedOutput;
    hub.leave(a->session, "closed");
    EXPECT_EQ(b->closed, closed(Reason::OUTPUT_FULL));
    EXPECT_EQ(hub.count_groups(), 0U);
}

TEST_F(Hub, a_member_that_does_not_read_goes_when_its_friend_returns) {
    hub.leave(a->session, "closed");
    b->queuedBytes = limits.queuedOutput;
    auto back = connect();
    send(*back, login("g:a", "secret"));
    EXPECT_EQ(b->closed, closed(Reason::OUTPUT_FULL));
    EXPECT_EQ(back->closed, "");
    EXPECT_EQ(back->take().back(), relay::chat_message("bye", "g:b", "g:a", "has left."));
}

TEST_F(Hub, when_much_waits_in_all_those_go_for_whom_more_waits_than_their_share) {
    const std::string frame = play("g:a", "#");
    metrics.queuedBytes = limits.queuedTotal - frame.size();
    b->queuedBytes = limits.queuedTotal / limits.connections - frame.size() + 1;
    send(*a, frame);
    EXPECT_EQ(b->closed, "");
    metrics.queuedBytes += 1;
    b->queuedBytes -= 1;
    send(*a, frame);
    EXPECT_EQ(b->closed, "");
    b->queuedBytes += 1;
    send(*a, frame);
    EXPECT_EQ(b->closed, closed(Reason::OUTPUT_FULL));
}

TEST_F(Hub, pieces_of_a_frame_count_as_frames) {
    const std::size_t burst = limits.framesPerSecond * limits.burstSeconds;
    for (std::size_t i = 1; i < burst; ++i) {  // the login was the first
        hub.on_part(a->session, now);
    }
    EXPECT_EQ(a->closed, "");
    hub.on_part(a->session, now);
    EXPECT_EQ(a->closed, closed(Reason::FRAME_RATE));
}

TEST_F(Hub, pieces_of_a_frame_are_no_sign_of_life) {
    for (int i = 0; i < 2; ++i) {
        pass(seconds(15));
        hub.on_part(a->session, now);
        hub.check(a->session, now);
    }
    EXPECT_EQ(a->closed, closed(Reason::SILENT));
}

TEST_F(Hub, a_ping_goes_out_every_15_seconds) {
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(hub.next_check(a->session), now + seconds(15));
        pass(milliseconds(14999));
        hub.check(a->session, now);
        EXPECT_EQ(a->take(), Texts{});
        pass(milliseconds(1));
        hub.check(a->session, now);
        EXPECT_EQ(a->take(), Texts{relay::ping_message("g:a")});
        send(*a, R"({"type":"PONG","from":"g:a","to":"+"})");
    }
}

TEST_F(Hub, a_client_that_is_silent_for_30_seconds_is_closed_and_its_friend_hears_bye) {
    pass(seconds(15));
    hub.check(a->session, now);
    pass(milliseconds(14999));
    hub.check(a->session, now);
    EXPECT_EQ(a->closed, "");
    pass(milliseconds(1));
    hub.check(a->session, now);
    EXPECT_EQ(a->closed, closed(Reason::SILENT));
    EXPECT_EQ(b->take(), Texts{relay::chat_message("bye", "g:a", "g:b", "has left.")});
}

TEST_F(Hub, who_could_not_be_heard_while_the_relay_stood_still_is_asked_again) {
    pass(seconds(14));
    hub.on_control(a->session, now);
    pass(seconds(40));
    hub.check(a->session, now);
    EXPECT_EQ(a->closed, "");
    EXPECT_EQ(a->take(), Texts{relay::ping_message("g:a")});
    EXPECT_EQ(hub.next_check(a->session), now + seconds(15));
    pass(seconds(15));
    hub.check(a->session, now);
    EXPECT_EQ(a->closed, closed(Reason::SILENT));
}

TEST_F(Hub, who_could_not_log_in_while_the_relay_stood_still_gets_his_time_again) {
    const auto late = connect();
    pass(seconds(40));
    hub.check(late->session, now);
    EXPECT_EQ(late->closed, "");
    pass(seconds(10));
    hub.check(late->session, now);
    EXPECT_EQ(late->closed, closed(Reason::LOGIN_TIMEOUT));
}

TEST_F(Hub, any_frame_is_a_sign_of_life) {
    pass(seconds(29));
    send(*a, play("g:a", "+"));
    hub.on_control(b->session, now);
    pass(seconds(29));
    hub.check(a->session, now);
    hub.check(b->session, now);
    EXPECT_EQ(a->closed + b->closed, "");
}

TEST_F(Hub, the_round_trip_is_the_time_from_ping_to_pong) {
    pass(seconds(15));
    hub.check(a->session, now);
    pass(milliseconds(20));
    send(*a, R"({"type":"PONG","from":"g:a","to":"+"})");
    send(*a, R"({"type":"PONG","from":"g:a","to":"+"})");
    EXPECT_EQ(metrics.roundTrips, (decltype(metrics.roundTrips){0, 0, 1}));
    EXPECT_DOUBLE_EQ(metrics.roundTripSum, 0.02);
}

TEST_F(Hub, no_chat_text_reaches_the_log_but_why_it_was_dropped) {
    lines.clear();
    for (int i = 0; i < 9; ++i) {
        send(*a, chat("g:a", "whisper"));
    }
    send(*b, chat("g:b", std::string(limits.chatLength + 1, 'x')));
    const Texts expected = {R"(chat_dropped reason="chat_rate" name="g:a" address="192.0.2.1")",
                            R"(chat_dropped reason="chat_length" name="g:b" address="192.0.2.1")"};
    EXPECT_EQ(lines, expected);
}

}  // namespace
