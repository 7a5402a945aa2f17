#include "sound/sound_player_win32.h"

#include <windows.h>
#include <mmsystem.h>

namespace brantel {

bool SystemSoundPlayer::PlayOnce(const std::string& file) {
  return PlaySoundA(file.c_str(), nullptr, SND_FILENAME) != FALSE;
}

bool SystemSoundPlayer::PlayLoop(const std::string& file) {
  return PlaySoundA(file.c_str(), nullptr, SND_FILENAME | SND_LOOP | SND_ASYNC) != FALSE;
}

bool SystemSoundPlayer::Stop() {
  return PlaySoundA(nullptr, nullptr, SND_PURGE) != FALSE;
}

}  // namespace brantel
