// The messages that the relay itself sends, as JSON text.
#pragma once

#include "Reason.h"

#include <string>
#include <string_view>

namespace relay {

/// The relay's own name in `from`; no client can have it, for it has no colon.
inline constexpr std::string_view RELAY_NAME = "relay";

[[nodiscard]] std::string ping_message(std::string_view to);
[[nodiscard]] std::string error_message(std::string_view to, const ReasonInfo& reason);

/// A line in the client's chat, from:text.
[[nodiscard]] std::string chat_message(std::string_view subType, std::string_view from,
                                       std::string_view to, std::string_view text,
                                       std::string_view extraData = "");

/// Whether only a relay says this: a game would believe it, whoever it came from.
[[nodiscard]] bool is_of_the_relay_alone(std::string_view type, std::string_view subType) noexcept;

/// The text as a JSON string, in quotes.
[[nodiscard]] std::string json_string(std::string_view text);

}  // namespace relay
