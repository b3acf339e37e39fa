// The entry into a group.

#include "Addresses.h"
#include "Hub.h"
#include "Log.h"
#include "Metrics.h"
#include "Name.h"
#include "messages.h"

#include <optional>

namespace relay {

void Hub::log_in(Session& session, const Envelope* login, TimePoint now) {
    if (const std::optional<Reason> fault = login_fault(session, login, now)) {
        if (*fault != Reason::FAILED_LOGINS && *fault != Reason::GROUP_FULL) {
            addresses_.fail_login(session.address, now);
        }
        refuse(session, *fault);
    } else {
        session.name = login->from;
        session.tmPinged = now;
        dismiss_stale(session.name);
        enter(session, group_for(*login));
    }
    reader_.forget_password();
}

// The password is looked at before the rest of the group: who does not know it learns no more.
std::optional<Reason> Hub::login_fault(const Session& session, const Envelope* login,
                                       TimePoint now) {
    if (login == nullptr || login->type != "LOGIN" || login->to != "+") {
        return Reason::NO_LOGIN;
    }
    if (const std::optional<Reason> fault = name_fault(login->from)) {
        return fault;
    }
    if (!addresses_.may_log_in(session.address, now)) {
        return Reason::FAILED_LOGINS;
    }
    const auto found = groups_.find(std::string(group_of(login->from)));
    if (found == groups_.end()) {
        return std::nullopt;
    }
    const Group& group = found->second;
    const bool flagKnown = group.find(login->from) != nullptr;
    if (!group.password.matches(login->pw)) {
        return flagKnown ? Reason::NAME_TAKEN : Reason::WRONG_PASSWORD;
    }
    if (group.is_full() && !flagKnown) {
        return Reason::GROUP_FULL;
    }
    return std::nullopt;
}

// Who returns after a lost line finds his own place still held by the connection that died. His
// friend sees a "bye" and then a "join", which puts both clients back to the start.
void Hub::dismiss_stale(const std::string& name) {
    const auto found = groups_.find(std::string(group_of(name)));
    if (found == groups_.end()) {
        return;
    }
    if (Session* stale = found->second.find(name)) {
        refuse(*stale, Reason::REPLACED);
    }
}

Group& Hub::group_for(const Envelope& login) {
    std::string name(group_of(login.from));
    const auto found = groups_.find(name);
    if (found != groups_.end()) {
        return found->second;
    }
    Group group{name, Password(login.pw), {}};
    Group& made = groups_.emplace(std::move(name), std::move(group)).first->second;
    metrics_.groups = groups_.size();
    return made;
}

void Hub::enter(Session& session, Group& group) {
    group.add(session);
    session.group = &group;
    ++metrics_.members;
    log_.event("login", {{"name", session.name}, {"address", session.address}});
    tell(session, chat_message("welcome", RELAY_NAME, session.name,
                               group.is_full() ? "Welcome, your friend is here."
                                               : "Welcome, your friend is not here yet.",
                               group.list()));
    if (!session.is_member()) {
        return;  // it did not read, and with it the group may be gone
    }
    if (Session* friendSession = group.other(session)) {
        tell(*friendSession,
             chat_message("join", session.name, friendSession->name, "has joined."));
    }
}

}  // namespace relay
