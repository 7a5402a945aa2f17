#pragma once

#include <functional>

#include "telephone/event_handle.h"

namespace brantel {

// The window messages of the calling thread, through which telephony tells what happens.
class MessagePump {
 public:
  virtual ~MessagePump() = default;

  // Handles the thread's messages until `is_over`, which is asked again after each, as soon as the
  // event is set, and now and then also without either: state that is shared may be changed by
  // another thread. In between it sleeps, and is awake at once for a message and for the event.
  // While the event is set `is_over` has to be true, or it does not sleep.
  virtual void PumpUntil(const std::function<bool()>& is_over, EventHandle event) = 0;
};

}  // namespace brantel
