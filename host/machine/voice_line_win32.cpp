#include "host/machine/voice_line_win32.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "host/alert/host_callback_win32.h"
#include "host/module/created_notifier_win32.h"
#include "host/outcome/command_failure.h"
#include "telephone/telephony_win32.h"

namespace brantel::host {
namespace {

// Enough for the fixed part of a line's capabilities and the texts behind it.
constexpr std::size_t kCapabilitiesCapacity = 8192;

constexpr VersionRange kVersions = {.lowest = 0x00010000, .highest = 0x00050000};

class DeafReceiver final : public LineMessageReceiver {
 public:
  void Receive(const LineMessage&) override {}
};

bool TakesAutomatedVoice(Telephony& telephony, std::uint32_t application, std::uint32_t device) {
  std::uint32_t version = 0;
  if (telephony.NegotiateVersion(application, device, kVersions, version) != 0) return false;
  std::array<std::byte, kCapabilitiesCapacity> capabilities{};
  const std::uint32_t size = kCapabilitiesCapacity;
  std::memcpy(capabilities.data(), &size, sizeof size);
  if (telephony.GetCapabilities(application, device, version, capabilities) != 0) return false;
  std::uint32_t media_modes = 0;
  std::memcpy(&media_modes, &capabilities.at(line_structure::kCapabilitiesMediaModes),
              sizeof media_modes);
  return (media_modes & kMediaModeAutomatedVoice) != 0;
}

}  // namespace

VoiceLineState StateOfVoiceLine() {
  SystemTelephony telephony;
  DeafReceiver receiver;
  std::uint32_t application = 0;
  std::uint32_t device_count = 0;
  if (telephony.Initialize(receiver, application, device_count) != 0)
    return VoiceLineState::kNoTelephony;
  bool is_there = false;
  for (std::uint32_t device = 0; device < device_count && !is_there; ++device)
    is_there = TakesAutomatedVoice(telephony, application, device);
  telephony.Shutdown(application);
  return is_there ? VoiceLineState::kThere : VoiceLineState::kNoVoiceLine;
}

bool OpenVoiceLine(const std::optional<std::string>& module_file) try {
  const CreatedNotifier created = CreateNotifier("Voice", module_file);
  const auto callback = ComPointer<HostCallback>::Adopt(
      new HostCallback(kNoEvent, PlainExpander({}), [](std::string_view) {}));
  if (FAILED(created.notifier->Initialize(callback.get()))) return false;
  created.notifier->Shutdown();
  return true;
} catch (const CommandFailure&) {
  return false;
}

}  // namespace brantel::host
