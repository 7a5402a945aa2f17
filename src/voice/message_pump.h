#pragma once

#include <functional>

namespace brantel {

// The window messages of the calling thread, through which telephony tells what happens.
class MessagePump {
 public:
  virtual ~MessagePump() = default;

  // Handles the thread's messages until `is_over`, which is asked again after each and also when
  // there is none. Never sleeps.
  virtual void PumpUntil(const std::function<bool()>& is_over) = 0;
};

}  // namespace brantel
