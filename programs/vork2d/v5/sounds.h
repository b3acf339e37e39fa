// The game's sounds, as paths of the resource tree.
#pragma once

#include <QString>

namespace vork2d::v5::sounds {

inline const QString START = QStringLiteral(":/wb/shared-res/sounds/Swirl2.wav");
inline const QString WALL_HIT = QStringLiteral(":/wb/shared-res/sounds/Blop1.wav");
inline const QString PADDLE_HIT = QStringLiteral(":/wb/shared-res/sounds/Blop2.wav");
inline const QString POINT_WON = QStringLiteral(":/wb/shared-res/sounds/Jackpot_Melody_2.wav");
inline const QString POINT_LOST = QStringLiteral(":/wb/shared-res/sounds/Game_Over_Music_1.wav");
inline const QString ENTER_ROOM = QStringLiteral(":/wb/shared-res/sounds/enterRoom.wav");
inline const QString LEFT_ROOM = QStringLiteral(":/wb/shared-res/sounds/leftRoom.wav");
inline const QString CHAT = QStringLiteral(":/wb/shared-res/sounds/msg.wav");
inline const QString QUIET = QStringLiteral(":/wb/shared-res/sounds/quiet.wav");

}  // namespace vork2d::v5::sounds
