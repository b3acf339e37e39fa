// The rules of the relay: who may enter which group, what is forwarded to whom, who has to go.
// It is driven by calls alone, without sockets and with the time as an argument.
#pragma once

#include "Attempts.h"
#include "Envelope.h"
#include "Limits.h"
#include "Password.h"
#include "Reason.h"
#include "Session.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace relay {

class Addresses;
class Log;
struct Metrics;

/// A room for two. It lives from its first login until its last member has left.
struct Group {
    std::string name;
    Password password;
    Attempts attempts;
    std::array<Session*, 2> members{};
    bool flagHeld = false;  ///< somebody may be about to enter: it outlives its last member

    [[nodiscard]] Session* find(std::string_view memberName) const noexcept;
    [[nodiscard]] Session* other(const Session& member) const noexcept;
    [[nodiscard]] bool is_full() const noexcept { return members[0] && members[1]; }
    [[nodiscard]] bool is_empty() const noexcept { return !members[0] && !members[1]; }
    /// The names in the order of arrival, separated by a comma and a blank.
    [[nodiscard]] std::string list() const;
    void add(Session& member) noexcept;
    void remove(const Session& member) noexcept;
};

/// A session stays the caller's: it hands in the same object until it has called leave().
class Hub {
public:
    Hub(const Limits& limits, Addresses& addresses, Metrics& metrics, const Log& log)
        : limits_(limits), addresses_(addresses), metrics_(metrics), log_(log) {}

    /// One whole text frame.
    void on_frame(Session& session, std::string_view frame, TimePoint now);
    /// A frame that is not looked at; before the login it is none.
    void on_bad_frame(Session& session, Reason reason, TimePoint now);
    /// A piece of a frame that is not whole yet: it costs as much as a frame.
    void on_part(Session& session, TimePoint now);
    /// A ping or pong of the WebSocket itself.
    void on_control(Session& session, TimePoint now);
    /// Bytes off the wire, before anything is known of them.
    void on_bytes(Session& session, std::size_t count, TimePoint now);

    /// The client's input is at its end for now: what was forwarded of it leaves together.
    void on_turn_end(Session& session);

    /// Does what is due: the heartbeat, the end of a silent client or of one without a login.
    void check(Session& session, TimePoint now);
    /// When check() has something to do unless a frame comes before.
    [[nodiscard]] TimePoint next_check(const Session& session) const noexcept;

    /// Tells the client why it has to go, as "ERROR", as a line of its chat and in the close frame.
    void refuse(Session& session, Reason reason);
    /// Takes the client out of its group and tells its friend. The reason is for the log.
    void leave(Session& session, std::string_view reason);

    [[nodiscard]] std::size_t count_groups() const noexcept { return groups_.size(); }

private:
    void log_in(Session& session, const Envelope* login, TimePoint now);
    [[nodiscard]] std::optional<Reason> login_fault(const Session& session, const Envelope* login,
                                                    TimePoint now) const;
    void try_password(Session& session, const Envelope& login, TimePoint now);
    [[nodiscard]] Group& group_for(const Envelope& login, TimePoint now);
    void wait(Group& group, Attempt attempt);
    void check_waiting(Session& session, TimePoint now);
    void answer_line(Group& group, TimePoint now);
    void answer(Group& group, const Attempt& attempt, TimePoint now);
    void enter(Session& session, Group& group, const std::string& name, TimePoint now);
    void release(Group& group);
    void dissolve(Group& group);

    void route(Session& session, const Envelope& message, std::string_view frame, TimePoint now);
    void take(Session& session, const Envelope& message, TimePoint now);
    void forward(Session& session, std::string_view frame);
    [[nodiscard]] bool has_room(const Session& session, std::size_t bytes) const noexcept;
    /// May let go of the session if it does not read.
    void tell(Session& session, std::string_view frame);
    [[nodiscard]] bool is_own_word(Session& session, const Envelope& message);
    [[nodiscard]] bool may_chat(Session& session, const Envelope& message, TimePoint now);
    void tell_chat_dropped(Session& session, std::string_view reason, std::string_view text);
    void ping(Session& session, TimePoint now);
    [[nodiscard]] TimePoint end_of_wait(const Session& session) const noexcept {
        return session.tmEntered + limits_.login + limits_.turn;
    }

    const Limits& limits_;
    Addresses& addresses_;
    Metrics& metrics_;
    const Log& log_;
    EnvelopeReader reader_;
    std::unordered_map<std::string, Group> groups_;
};

}  // namespace relay
