// The entry into a group.

#include "Addresses.h"
#include "Hub.h"
#include "Log.h"
#include "Metrics.h"
#include "Name.h"
#include "address_key.h"
#include "messages.h"

#include <optional>
#include <utility>

namespace relay {

void Hub::log_in(Session& session, const Envelope* login, TimePoint now) {
    if (session.waitsFor) {
        ++metrics_.framesDropped;
    } else if (const std::optional<Reason> fault = login_fault(session, login, now)) {
        if (*fault != Reason::FAILED_LOGINS) {
            addresses_.fail_login(session.address, now);
        }
        refuse(session, *fault);
    } else {
        try_password(session, *login, now);
    }
    reader_.forget_password();
}

std::optional<Reason> Hub::login_fault(const Session& session, const Envelope* login,
                                       TimePoint now) const {
    if (login == nullptr || login->type != "LOGIN" || login->to != "+") {
        return Reason::NO_LOGIN;
    }
    if (const std::optional<Reason> fault = name_fault(login->from)) {
        return fault;
    }
    if (!addresses_.may_log_in(session.address, now)) {
        return Reason::FAILED_LOGINS;
    }
    return std::nullopt;
}

// Right and wrong passwords wait alike: who does not know the word learns nothing from the pause.
void Hub::try_password(Session& session, const Envelope& login, TimePoint now) {
    Group& group = group_for(login, now);
    group.flagHeld = true;
    Attempt attempt{&session, network_key(session.address), login.from,
                    group.password.matches(login.pw)};
    if (group.attempts.knows(session.address)) {
        answer(group, attempt, now);
    } else {
        wait(group, std::move(attempt));
        answer_line(group, now);
    }
    release(group);
}

Group& Hub::group_for(const Envelope& login, TimePoint now) {
    std::string name(group_of(login.from));
    const auto found = groups_.find(name);
    if (found != groups_.end()) {
        return found->second;
    }
    Group group{name, Password(login.pw), Attempts(limits_, now)};
    Group& made = groups_.emplace(std::move(name), std::move(group)).first->second;
    metrics_.groups = groups_.size();
    return made;
}

void Hub::wait(Group& group, Attempt attempt) {
    attempt.session->waitsFor = &group;
    if (Session* leaver = group.attempts.add(std::move(attempt))) {
        refuse(*leaver, Reason::GROUP_GUESSED);
    }
}

void Hub::check_waiting(Session& session, TimePoint now) {
    Group& group = *session.waitsFor;
    group.flagHeld = true;
    answer_line(group, now);
    release(group);
    if (session.waitsFor && now >= end_of_wait(session)) {
        refuse(session, Reason::GROUP_GUESSED);
    }
}

void Hub::answer_line(Group& group, TimePoint now) {
    while (const std::optional<Attempt> attempt = group.attempts.take(now)) {
        attempt->session->waitsFor = nullptr;
        answer(group, *attempt, now);
    }
}

// The password counts before the rest of the group: who does not know it learns no more. Whether
// the name is taken is for the log alone.
void Hub::answer(Group& group, const Attempt& attempt, TimePoint now) {
    Session& session = *attempt.session;
    Session* const namesake = group.find(attempt.name);
    if (!attempt.flagRight) {
        addresses_.fail_login(session.address, now);
        // A member's neighbour does not use up what is left for strangers.
        if (!group.attempts.knows(session.address)) {
            group.attempts.fail(attempt.network, now);
        }
        refuse(session, namesake ? Reason::NAME_TAKEN : Reason::WRONG_PASSWORD);
    } else if (group.is_full() && !namesake) {
        refuse(session, Reason::GROUP_FULL);
    } else {
        // Who returns after a lost line finds his own place still held by the connection that died.
        // His friend sees a "bye" and then a "join", which puts both clients back to the start.
        if (namesake) {
            refuse(*namesake, Reason::REPLACED);
        }
        enter(session, group, attempt.name, now);
    }
}

void Hub::enter(Session& session, Group& group, const std::string& name, TimePoint now) {
    session.name = name;
    session.group = &group;
    session.tmHeard = now;
    session.tmPinged = now;
    group.add(session);
    group.attempts.know(session.address);
    ++metrics_.members;
    log_.event("login", {{"name", session.name}, {"address", session.address}});
    tell(session, chat_message("welcome", RELAY_NAME, session.name,
                               group.is_full() ? "Welcome, your friend is here."
                                               : "Welcome, your friend is not here yet.",
                               group.list()));
    Session* const friendSession = group.other(session);
    if (session.is_member() && friendSession) {  // who does not read is out again
        tell(*friendSession,
             chat_message("join", session.name, friendSession->name, "has joined."));
    }
}

void Hub::release(Group& group) {
    group.flagHeld = false;
    if (group.is_empty()) {
        dissolve(group);
    }
}

void Hub::dissolve(Group& group) {
    for (const Attempt& attempt : group.attempts.take_all()) {
        attempt.session->waitsFor = nullptr;
        refuse(*attempt.session, Reason::GROUP_GUESSED);
    }
    groups_.erase(group.name);
    metrics_.groups = groups_.size();
}

}  // namespace relay
