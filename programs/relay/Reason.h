// Why a client is refused or let go: the word in the log and the metrics, the number and the plain
// words the client gets, and the close code of the WebSocket.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace relay {

/// Close codes of RFC 6455, 7.4.1.
enum class CloseCode : std::uint16_t {
    NORMAL = 1000,
    GOING_AWAY = 1001,
    UNKNOWN_DATA = 1003,
    POLICY = 1008,
    TOO_BIG = 1009,
    TRY_AGAIN_LATER = 1013
};

enum class Reason {
    NAME_EMPTY,
    NAME_WITHOUT_COLON,
    NAME_TOO_LONG,
    NAME_BAD_CHARACTER,
    NO_LOGIN,
    LOGIN_TIMEOUT,
    WRONG_PASSWORD,
    NAME_TAKEN,
    GROUP_FULL,
    FAILED_LOGINS,
    REPLACED,
    FOREIGN_FROM,
    NOT_JSON,
    NOT_TEXT,
    FRAME_SIZE,
    FRAME_RATE,
    BYTE_RATE,
    OUTPUT_FULL,
    SILENT,
    CONNECTIONS,
    CONNECTIONS_PER_ADDRESS,
    HALF_OPEN,
    HANDSHAKE_TIMEOUT,
    BAD_REQUEST,
    PROTOCOL,
    HANDSHAKE_FAILED,
    GROUP_GUESSED,
    COUNT
};

struct ReasonInfo {
    std::string_view word;  ///< in the log and as a label of the metrics
    int code;               ///< "code" of the "ERROR" message
    CloseCode close;
    std::string_view text;  ///< plain words, at most 123 bytes: they fit into a close frame too
};

[[nodiscard]] const ReasonInfo& info(Reason reason) noexcept;

}  // namespace relay
