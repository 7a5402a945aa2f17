#pragma once

#include <memory>

#include "instance/instance_files.h"
#include "notifier/notifier.h"
#include "telephone/voice_state.h"
#include "telephone/voice_system.h"

namespace brantel {

// Calls a person by telephone and plays recorded messages, the last of them once the person has
// pressed a key.
class Voice final : public Notifier {
 public:
  // What is passed by reference must outlive the object.
  Voice(InstanceFiles& files, const VoiceSystem& system, VoiceState& state)
      : files_(files), system_(system), state_(state) {}

  // Binds a host only where a telephone line takes automated voice, which is tried until it has
  // succeeded once in the process. The host of that first time is told of the steps of all calls.
  std::shared_ptr<NotifierHost> Initialize(const HostQuery& query_host) override;

  // From now on no host is told of the steps of any call: deliberately the line is not tried again,
  // which is what a host is told of them for.
  void Shutdown() noexcept override;

  // The host's success code when the call was acknowledged. E_FAIL for an instance that cannot be
  // loaded, without a host, and for any other call; the host's result when it cannot say what
  // happened to which device.
  Result Send(const InstanceArgument& argument, NotifierHost* host) override;

 private:
  InstanceFiles& files_;
  const VoiceSystem system_;
  VoiceState& state_;
};

}  // namespace brantel
