// The two sound effects of the running game. Null until the field plays its first sound; never
// deleted, since Qt's audio may still use them while the program ends. Main thread only.
#pragma once

namespace ze::qt {
class GSoundEffect;
}

namespace vork2d::v5 {

extern ze::qt::GSoundEffect* gSound;         ///< plays every sound of the game
extern ze::qt::GSoundEffect* gSoundEndless;  ///< Android only: silence that keeps the audio awake

/// Silences both, where there are any. To be called before the application object goes.
void stop_sounds();

}  // namespace vork2d::v5
