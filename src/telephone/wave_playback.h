#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "telephone/line_constants.h"
#include "telephone/memory_blocks.h"
#include "telephone/voice_state.h"
#include "telephone/voice_system.h"
#include "telephone/wave_file.h"
#include "telephone/wave_system.h"

namespace brantel {

// What Play answers for a file that it could not queue.
inline constexpr LineCode kPlaybackFailed = 0x80000000;

// Plays wave files on a call's wave device, one after the other. Each opens the device anew.
//
// The driver reports on its own thread that a sound has ended. Wave functions must not be called
// from there, so that the report is only kept, and whoever waits for the end takes it up with
// CompleteWhenDone on the thread of all other calls.
class WavePlayback {
 public:
  // Both must outlive the object.
  WavePlayback(const VoiceSystem& system, VoiceState& state) : system_(system), state_(state) {}
  WavePlayback(const WavePlayback&) = delete;
  WavePlayback& operator=(const WavePlayback&) = delete;
  // Ends what is still playing.
  ~WavePlayback() { Stop(); }

  // Queues a file and returns at once: 0, or kPlaybackFailed when that failed, which is logged.
  LineCode Play(std::uint32_t device_id, const std::string& file);

  // Whether a file is queued that has not been completed.
  [[nodiscard]] bool IsQueued() const { return device_ != nullptr; }

  // What is set when the driver has reported that the sound has ended. None when none is queued.
  [[nodiscard]] EventHandle DoneEvent() const {
    return IsQueued() ? device_->DoneEvent() : kNoEvent;
  }

  // Makes the driver report at once that the sound has ended.
  void CutShort();

  // When the driver has reported that the sound has ended: closes the device, frees the samples,
  // and says in the shared state that the playback is done, in this order.
  void CompleteWhenDone();

 private:
  bool Queue(std::uint16_t device_id, Wave& wave);
  bool Fail(unsigned text_id);
  void Stop();
  void Release();

  const VoiceSystem& system_;
  VoiceState& state_;
  // Of the queued file. All of this is there or none.
  MemoryBlock samples_;
  MemoryBlock header_memory_;
  WaveHeader* header_ = nullptr;
  std::unique_ptr<WaveDevice> device_;
};

}  // namespace brantel
