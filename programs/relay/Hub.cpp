#include "Hub.h"

#include "Log.h"
#include "Metrics.h"
#include "messages.h"

#include <algorithm>

namespace relay {

namespace {

// A check that comes so much later than it was due was kept from coming.
constexpr std::chrono::seconds STANDSTILL{1};

}  // namespace

Session* Group::find(std::string_view memberName) const noexcept {
    for (Session* member : members) {
        if (member && member->name == memberName) {
            return member;
        }
    }
    return nullptr;
}

Session* Group::other(const Session& member) const noexcept {
    return members[0] == &member ? members[1] : members[0];
}

std::string Group::list() const {
    std::string names;
    for (const Session* member : members) {
        if (member) {
            names += (names.empty() ? "" : ", ") + member->name;
        }
    }
    return names;
}

void Group::add(Session& member) noexcept {
    members[members[0] ? 1 : 0] = &member;
}

void Group::remove(const Session& member) noexcept {
    if (members[0] == &member) {
        members[0] = members[1];
    }
    members[1] = nullptr;
}

void Hub::on_frame(Session& session, std::string_view frame, TimePoint now) {
    if (session.flagClosed) {
        return;
    }
    ++metrics_.framesReceived;
    session.tmHeard = now;
    if (!session.frames.take(1, now)) {
        refuse(session, Reason::FRAME_RATE);
        return;
    }
    const Envelope* message = reader_.read(frame);
    if (!session.is_member()) {
        log_in(session, message, now);
    } else if (message == nullptr) {
        refuse(session, Reason::NOT_JSON);
    } else {
        route(session, *message, frame, now);
    }
}

void Hub::on_bad_frame(Session& session, Reason reason, TimePoint now) {
    if (session.flagClosed) {
        return;
    }
    if (session.is_member() || session.waitsFor) {
        refuse(session, reason);
    } else {
        log_in(session, nullptr, now);
    }
}

void Hub::on_part(Session& session, TimePoint now) {
    if (!session.flagClosed && !session.frames.take(1, now)) {
        refuse(session, Reason::FRAME_RATE);
    }
}

void Hub::on_control(Session& session, TimePoint now) {
    if (session.flagClosed) {
        return;
    }
    session.tmHeard = now;
    if (!session.frames.take(1, now)) {
        refuse(session, Reason::FRAME_RATE);
    } else if (!has_room(session, 0)) {
        refuse(session, Reason::OUTPUT_FULL);
    }
}

void Hub::on_bytes(Session& session, std::size_t count, TimePoint now) {
    if (!session.flagClosed && !session.bytes.take(static_cast<double>(count), now)) {
        refuse(session, Reason::BYTE_RATE);
    }
}

void Hub::on_turn_end(Session& session) {
    if (session.is_member()) {
        if (Session* friendSession = session.group->other(session)) {
            friendSession->peer.flush();
        }
    }
}

void Hub::route(Session& session, const Envelope& message, std::string_view frame, TimePoint now) {
    if (message.from != session.name) {
        refuse(session, Reason::FOREIGN_FROM);
    } else if (message.to == "#" || message.to == "*") {
        if (is_own_word(session, message) && may_chat(session, message, now)) {
            forward(session, frame);
        }
    } else {
        take(session, message, now);
    }
}

// A game message to the relay, such as "points", tells it nothing that it needs.
void Hub::take(Session& session, const Envelope& message, TimePoint now) {
    if (message.type == "PONG" && session.flagAwaitsPong) {
        session.flagAwaitsPong = false;
        metrics_.add_round_trip(now - session.tmPinged);
    }
}

void Hub::forward(Session& session, std::string_view frame) {
    Session* friendSession = session.group->other(session);
    if (friendSession == nullptr) {
        ++metrics_.framesDropped;
        return;
    }
    if (!has_room(*friendSession, frame.size())) {
        ++metrics_.framesDropped;
        refuse(*friendSession, Reason::OUTPUT_FULL);
        return;
    }
    ++metrics_.framesForwarded;
    friendSession->peer.send(frame);
}

// When much waits in all, those go for whom more waits than for others.
bool Hub::has_room(const Session& session, std::size_t bytes) const noexcept {
    const std::size_t waiting = session.peer.queued() + bytes;
    return waiting <= limits_.queuedOutput &&
           (metrics_.queuedBytes + bytes <= limits_.queuedTotal ||
            waiting <= limits_.queuedTotal / limits_.connections);
}

void Hub::tell(Session& session, std::string_view frame) {
    if (!has_room(session, frame.size())) {
        refuse(session, Reason::OUTPUT_FULL);
        return;
    }
    session.peer.send(frame);
    session.peer.flush();
}

// Dropped, not refused: to end the forger would end the pairing, which is what a forged "bye"
// wants.
bool Hub::is_own_word(Session& session, const Envelope& message) {
    if (!is_of_the_relay_alone(message.type, message.subType)) {
        return true;
    }
    ++metrics_.framesDropped;
    if (!session.flagForged) {
        session.flagForged = true;
        log_.event("forged", {{"word", message.type == "CHAT" ? message.subType : message.type},
                              {"name", session.name},
                              {"address", session.address}});
    }
    return false;
}

// A chat text too many is dropped, but nobody loses a running game over it.
bool Hub::may_chat(Session& session, const Envelope& message, TimePoint now) {
    if (message.type != "CHAT") {
        return true;
    }
    if (message.textLength > limits_.chatLength) {
        tell_chat_dropped(session, "chat_length", "Your text was not sent: it is too long.");
        return false;
    }
    if (!session.chat.take(1, now)) {
        tell_chat_dropped(session, "chat_rate",
                          "Your text was not sent: wait a second between two texts.");
        return false;
    }
    session.flagChatTold = false;
    return true;
}

// Told once in a row: who floods the chat gets no flood back.
void Hub::tell_chat_dropped(Session& session, std::string_view reason, std::string_view text) {
    ++metrics_.framesDropped;
    if (session.flagChatTold) {
        return;
    }
    session.flagChatTold = true;
    log_.event("chat_dropped",
               {{"reason", reason}, {"name", session.name}, {"address", session.address}});
    tell(session, chat_message("text", RELAY_NAME, session.name, text));
}

void Hub::check(Session& session, TimePoint now) {
    if (session.flagClosed) {
        return;
    }
    if (session.waitsFor) {
        check_waiting(session, now);
        return;
    }
    if (now > next_check(session) + STANDSTILL) {
        // The relay stood still: what was said meanwhile is not read yet, and nobody was asked.
        session.tmEntered = now;
        session.tmHeard = std::max(session.tmHeard, now - limits_.ping);
    }
    if (!session.is_member()) {
        if (now >= session.tmEntered + limits_.login) {
            refuse(session, Reason::LOGIN_TIMEOUT);
        }
    } else if (now >= session.tmHeard + limits_.silence) {
        refuse(session, Reason::SILENT);
    } else if (now >= session.tmPinged + limits_.ping) {
        ping(session, now);
    }
}

TimePoint Hub::next_check(const Session& session) const noexcept {
    if (session.waitsFor) {
        return std::min(session.waitsFor->attempts.next_turn(), end_of_wait(session));
    }
    if (!session.is_member()) {
        return session.tmEntered + limits_.login;
    }
    return std::min(session.tmHeard + limits_.silence, session.tmPinged + limits_.ping);
}

void Hub::ping(Session& session, TimePoint now) {
    session.tmPinged = now;
    session.flagAwaitsPong = true;
    tell(session, ping_message(session.name));
}

void Hub::refuse(Session& session, Reason reason) {
    if (session.flagClosed) {
        return;
    }
    const ReasonInfo& why = info(reason);
    metrics_.refuse(reason);
    log_.event("refused",
               {{"reason", why.word}, {"name", session.name}, {"address", session.address}});
    session.flagClosed = true;
    session.peer.send(error_message(session.name, why));
    session.peer.send(chat_message("text", RELAY_NAME, session.name, why.text));
    session.peer.close(why.close, why.text);
    leave(session, why.word);
}

void Hub::leave(Session& session, std::string_view reason) {
    session.flagClosed = true;
    if (session.waitsFor) {
        session.waitsFor->attempts.remove(session);
        session.waitsFor = nullptr;
    }
    Group* group = session.group;
    if (group == nullptr) {
        return;
    }
    session.group = nullptr;
    --metrics_.members;
    group->remove(session);
    log_.event("left", {{"reason", reason}, {"name", session.name}, {"address", session.address}});
    if (!group->is_empty()) {
        Session& remaining = *group->members[0];
        tell(remaining, chat_message("bye", session.name, remaining.name, "has left."));
    } else if (!group->flagHeld) {
        dissolve(*group);
    }
}

}  // namespace relay
