#include "voice/voice.h"

#include <string>
#include <string_view>
#include <utility>

#include "notifier/instance_loading.h"
#include "telephone/line_session.h"
#include "text/text_end.h"
#include "voice/voice_call.h"
#include "voice/voice_description.h"
#include "voice/voice_messages.h"

namespace brantel {
namespace {

// The host's own variables for the sound of the device and for the device's name.
constexpr const char* kDeviceMessage = "%C";
constexpr const char* kDeviceName = "%n";

}  // namespace

std::shared_ptr<NotifierHost> Voice::Initialize(const HostQuery& query_host) {
  auto host = query_host();
  if (!host || state_.probe_done) return host;
  if (!ProbeLine(system_, state_)) return nullptr;
  state_.host = host->AddReference();
  state_.probe_done = true;
  return host;
}

void Voice::Shutdown() noexcept {
  state_.host.store(nullptr);
}

Result Voice::Send(const InstanceArgument& argument, NotifierHost* host) {
  using namespace voice_field;
  const auto instance = LoadInstanceForAlert(files_, kVoice.instances, argument, host);
  if (!instance || host == nullptr) return kFail;

  std::string device_message = kDeviceMessage;
  const Result message_expanded = host->ExpandMessage(device_message);
  if (Failed(message_expanded)) return message_expanded;
  std::string device_name = kDeviceName;
  const Result name_expanded = host->ExpandMessage(device_name);
  if (Failed(name_expanded)) return name_expanded;

  // A host that has no event leaves the word as it is, which then counts as an item that is down.
  std::uint32_t trigger_word = 0;
  host->GetAlertTrigger(trigger_word);

  VoiceCall call = {
      .number = instance->text(kPhoneNumber),
      .repeat_message = instance->text(kRepeatMessage),
      .first_message = DeviceWave(UpToNul(device_message), UpToNul(device_name), system_.code_page,
                                  [this](const std::string& path) { return files_.Exists(path); }),
      .second_message = instance->text(EventField(trigger_word)),
      .count = instance->integer(kCount),
      .button = instance->integer(kButton),
  };
  if (EventComesFirst(trigger_word)) std::swap(call.first_message, call.second_message);
  return PlaceVoiceCall(system_, state_, call) == 0 ? name_expanded : kFail;
}

}  // namespace brantel
