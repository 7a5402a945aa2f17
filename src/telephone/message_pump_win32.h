#pragma once

#include "telephone/message_pump.h"

namespace brantel {

class ThreadMessagePump final : public MessagePump {
 public:
  void PumpUntil(const std::function<bool()>& is_over, EventHandle event) override;
};

}  // namespace brantel
