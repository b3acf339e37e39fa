// The command words of a play payload, as they stand in its key "cmd". Case-sensitive.
#pragma once

#include <QString>

namespace ze::net::PLAY_CMD {

inline const QString START = QStringLiteral("start");
inline const QString STOP = QStringLiteral("stop");
inline const QString TRAVEL = QStringLiteral("travel");
inline const QString POINTS = QStringLiteral("points");
inline const QString ORIENTATION = QStringLiteral("orientation");
inline const QString OUT_OF_FIELD = QStringLiteral("out_of_field");
inline const QString SET_BALL = QStringLiteral("setBall");
inline const QString SET_POS = QStringLiteral("setPos");
inline const QString KEY_PRESSED = QStringLiteral("keyPressed");
inline const QString KEY_RELEASED = QStringLiteral("keyReleased");
inline const QString STRING = QStringLiteral("string");

}  // namespace ze::net::PLAY_CMD
