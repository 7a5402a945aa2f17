#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "telephone/line_constants.h"
#include "telephone/sized_block.h"
#include "telephone/telephony.h"
#include "telephone/voice_state.h"
#include "telephone/voice_system.h"
#include "telephone/wave_playback.h"

namespace brantel {

// What the waits of a session answer when the line is no longer open.
inline constexpr LineCode kLineGoneBeforeConnection = 3;
inline constexpr LineCode kLineGoneDuringPlayback = 4;

// The key that acknowledges a call: 0 to 9 for that digit, or one of these. Any other number is no
// key at all.
inline constexpr std::int32_t kStarButton = 10;
inline constexpr std::int32_t kHashButton = 11;
inline constexpr std::int32_t kAnyButton = 99;

// One outgoing call, or the search for a line that could make one. Its steps are called in their
// order; each answers 0 or an error, behind which only TearDown may follow. When InitializeLine has
// failed there is nothing to tear down. What the steps meet is logged through the shared state.
class LineSession final : private LineMessageReceiver {
 public:
  // All references must outlive the object. Of the number, as much as a dial string holds is
  // dialled.
  LineSession(const VoiceSystem& system, VoiceState& state, WavePlayback& playback,
              std::string_view number, std::int32_t acknowledge_button);
  LineSession(const LineSession&) = delete;
  LineSession& operator=(const LineSession&) = delete;
  // Tears down what an exception has left.
  ~LineSession() override;

  LineCode InitializeLine();

  // Chooses the first device that takes automated voice. Where telephony counts no devices, device
  // 0 is tried unseen.
  LineCode ChooseDevice();

  LineCode OpenLine();

  // Places the call and waits until it is connected. Deliberately succeeds whatever comes of that:
  // there is no time-out, and busy lines and calls that nobody answers are only logged.
  LineCode PlaceCall();

  LineCode GetWaveDevice(CallSelect select);
  [[nodiscard]] std::uint32_t wave_device() const { return wave_device_; }

  LineCode MonitorDigits();

  // Waits until the queued sound has ended. At once 0 when none is queued.
  LineCode WaitForPlayback();

  // Ends the call by closing the line, and gives back everything. The error of telephony that would
  // not let go after five attempts.
  LineCode TearDown();

 private:
  void Receive(const LineMessage& message) override;
  void HandleDigit(char digit);
  void Acknowledge();
  void HandleReply(std::uint32_t request, LineCode result);

  bool Negotiate(std::uint32_t device);
  LineCode ReadCapabilities(std::uint32_t device);
  [[nodiscard]] bool TakesAutomatedVoice() const;
  void LogDeviceFailure(unsigned text_id, std::uint32_t device) const;
  LineCode WaitForConnection();
  void ClearState();

  const VoiceSystem& system_;
  VoiceState& state_;
  WavePlayback& playback_;
  const std::string dial_string_;
  const std::int32_t acknowledge_button_;

  std::uint32_t line_ = 0;
  std::uint32_t call_ = 0;
  std::uint32_t application_ = 0;
  std::uint32_t version_ = 0;  // major in the upper half, minor in the lower
  std::uint32_t device_count_ = 0;
  std::uint32_t device_ = 0;
  bool initialised_ = false;
  bool line_open_ = false;
  std::uint32_t wave_device_ = 0;
  SizedBlock capabilities_;
  SizedBlock call_parameters_;
  SizedBlock wave_id_;
};

// Whether the machine has a voice line that can be opened, has a wave device and can be closed
// again.
bool ProbeLine(const VoiceSystem& system, VoiceState& state);

}  // namespace brantel
