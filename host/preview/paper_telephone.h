#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/preview/paper_clock.h"
#include "host/preview/preview_part.h"
#include "telephone/message_pump.h"
#include "telephone/telephony.h"
#include "telephone/wave_system.h"

namespace brantel::host {

// What the part of a sound is called.
inline constexpr std::string_view kMessage = "message";

// Wave files as they are, of which each that is opened becomes a part.
class PaperWaves final : public RiffFiles {
 public:
  // Both must outlive the object.
  PaperWaves(RiffFiles& files, PreviewParts& parts) : files_(files), parts_(parts) {}

  std::unique_ptr<RiffFile> Open(const std::string& path) override;

 private:
  RiffFiles& files_;
  PreviewParts& parts_;
};

// A wave device on which nothing is heard. What is said of the last part, which has to be that of
// the sound, is then how long that is.
class PaperWaveOutput final : public WaveOutput {
 public:
  // Both must outlive the object.
  PaperWaveOutput(PaperClock& clock, PreviewParts& parts) : clock_(clock), parts_(parts) {}

  WaveCode Query(std::uint16_t /*device*/, std::span<const std::byte> /*format*/) override {
    return 0;
  }
  std::string ErrorText(WaveCode /*error*/) override { return {}; }
  WaveCode Open(std::uint16_t device_id, std::span<const std::byte> format,
                std::unique_ptr<WaveDevice>& device) override;

  [[nodiscard]] bool is_playing() const { return is_playing_; }

  // Lets the sound be heard to its end.
  void PlayToEnd();

 private:
  class Device;

  PaperClock& clock_;
  PreviewParts& parts_;
  bool is_playing_ = false;
  std::uint64_t length_ = 0;  // of what is played, in milliseconds
};

// Thrown when the call would go on although nobody can end it any more: the message has been heard,
// and no telephone has the key that acknowledges it.
struct CallWithoutEnd {};

// A telephone line on which somebody answers and presses the key that is wanted as soon as it is
// listened for. The number becomes a part. Nobody is called.
class PaperTelephone final : public Telephony, public MessagePump {
 public:
  // The key as Voice has it. The others must outlive the object.
  PaperTelephone(std::int32_t button, PaperWaveOutput& output, PreviewParts& parts);

  LineCode Initialize(LineMessageReceiver& receiver, std::uint32_t& application,
                      std::uint32_t& device_count) override;
  LineCode NegotiateVersion(std::uint32_t application, std::uint32_t device,
                            const VersionRange& range, std::uint32_t& version) override;
  LineCode GetCapabilities(std::uint32_t application, std::uint32_t device, std::uint32_t version,
                           std::span<std::byte> capabilities) override;
  LineCode Open(std::uint32_t application, std::uint32_t device, std::uint32_t version,
                std::uint32_t media_mode, std::span<const std::byte> call_parameters,
                std::uint32_t& line) override;
  LineCode MakeCall(std::uint32_t line, const std::string& number,
                    std::span<const std::byte> call_parameters, std::uint32_t& call) override;
  LineCode GetId(std::uint32_t line, std::uint32_t call, CallSelect select,
                 const char* device_class, std::span<std::byte> id) override;
  LineCode MonitorDigits(std::uint32_t call, std::uint32_t digit_mode) override;
  LineCode Close(std::uint32_t line) override;
  LineCode Shutdown(std::uint32_t application) override;

  // Throws CallWithoutEnd.
  void PumpUntil(const std::function<bool()>& is_over, EventHandle event) override;

 private:
  void LetSomethingHappen();

  const std::optional<char> key_;  // none when no telephone has it
  PaperWaveOutput& output_;
  PreviewParts& parts_;
  LineMessageReceiver* receiver_ = nullptr;
  bool is_ringing_ = false;
  bool is_listening_ = false;
};

}  // namespace brantel::host
