#include "Reason.h"

#include <array>

namespace relay {

namespace {

using enum CloseCode;

// In the order of the enumeration. The numbers are told to clients: a row keeps its own for good.
// A taken name says what a wrong password says; its former number 8 is not given to another.
constexpr std::array<ReasonInfo, static_cast<std::size_t>(Reason::COUNT)> TABLE = {{
    {"name_empty", 1, POLICY, "The group or the user name is empty. Log in as group:name."},
    {"name_without_colon", 2, POLICY, "The name has no colon. Log in as group:name."},
    {"name_too_long", 3, POLICY, "The name is longer than 64 characters."},
    {"name_bad_character", 4, POLICY,
     "A name holds no comma, no blank, no invisible character and no pile of accents."},
    {"no_login", 5, POLICY, "The first message has to be a LOGIN to \"+\"."},
    {"login_timeout", 6, POLICY, "No login came in time."},
    {"wrong_password", 7, POLICY, "The password is not that of this group."},
    {"name_taken", 7, POLICY, "The password is not that of this group."},
    {"group_full", 9, POLICY, "Two players are in this group already. Choose another group."},
    {"failed_logins", 10, POLICY,
     "Too many failed logins from your address. Try again in a minute."},
    {"replaced", 11, NORMAL, "You have logged in again from elsewhere."},
    {"foreign_from", 12, POLICY, "The sender of a message has to be your own name."},
    {"not_json", 13, POLICY, "A message has to be one JSON object."},
    {"not_text", 14, UNKNOWN_DATA, "The relay takes text frames only."},
    {"frame_size", 15, TOO_BIG, "A message is larger than this relay allows."},
    {"frame_rate", 16, POLICY, "Too many messages a second."},
    {"byte_rate", 17, POLICY, "Too many bytes a second."},
    {"output_full", 18, POLICY, "You read too slowly: too much is waiting for you."},
    {"silent", 19, POLICY, "Nothing was heard of you for too long."},
    {"connections", 20, TRY_AGAIN_LATER, "The relay is full. Try again later."},
    {"connections_per_address", 21, TRY_AGAIN_LATER, "Too many connections from your address."},
    {"half_open", 22, TRY_AGAIN_LATER, "Too many handshakes at once."},
    {"handshake_timeout", 23, POLICY, "The handshake took too long."},
    {"bad_request", 24, POLICY, "Nothing is served here but /ws/chat?sessid=play."},
    {"protocol", 25, POLICY, "The WebSocket protocol was violated."},
    {"handshake_failed", 26, POLICY, "The handshake broke off."},
    {"group_guessed", 27, TRY_AGAIN_LATER,
     "Too many wrong passwords were tried at this group. Try again in a minute."},
}};

}  // namespace

const ReasonInfo& info(Reason reason) noexcept {
    return TABLE[static_cast<std::size_t>(reason)];
}

}  // namespace relay
