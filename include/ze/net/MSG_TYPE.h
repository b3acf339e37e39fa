// The class words of the wire messages, as they stand in the key "type". Case-sensitive.
#pragma once

#include <QString>

namespace ze::net::MSG_TYPE {

inline const QString ERROR = QStringLiteral("ERROR");
inline const QString CHAT = QStringLiteral("CHAT");
inline const QString PING = QStringLiteral("PING");
inline const QString PONG = QStringLiteral("PONG");
inline const QString PLAY = QStringLiteral("PLAY");
inline const QString ADMIN = QStringLiteral("ADMIN");
inline const QString LOGIN = QStringLiteral("LOGIN");

}  // namespace ze::net::MSG_TYPE
