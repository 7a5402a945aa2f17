#pragma once

#include "voice/message_pump.h"

namespace brantel {

class ThreadMessagePump final : public MessagePump {
 public:
  void PumpUntil(const std::function<bool()>& is_over) override;
};

}  // namespace brantel
