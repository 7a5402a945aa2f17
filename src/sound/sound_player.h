#pragma once

#include <string>

namespace brantel {

// Plays wave files on the machine's sound device, one at a time: whatever this process plays gives
// way to the next. All methods are false when that did not succeed.
class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;

  // Returns when the sound has ended.
  virtual bool PlayOnce(const std::string& file) = 0;

  // Returns at once; the sound goes on and on.
  virtual bool PlayLoop(const std::string& file) = 0;

  // Ends whatever is playing.
  virtual bool Stop() = 0;
};

}  // namespace brantel
