#pragma once

#include <cstdint>
#include <memory>

#include "framework/alert_log.h"
#include "framework/notifier_host.h"
#include "voice/line_constants.h"

namespace brantel {

// What all Voice objects of a process share. There can be one call at a time.
struct VoiceState {
  // A usable voice line has been found once.
  bool probe_done = false;
  // The host that is told of every step; none before the first probe has succeeded, nor after any
  // object's Shutdown.
  std::shared_ptr<NotifierHost> host{};

  bool line_open = false;
  bool call_connected = false;
  bool playback_done = false;
  bool acknowledged = false;
  // The last key that no telephone has.
  char last_digit = '0';
  // Nothing sets it: replies to requests with other numbers are nobody's.
  std::uint32_t pending_request = 0;
  bool reply_received = false;
  LineCode reply_result = line_error::kOperationFailed;

  // Keeps the host as long as it is told: it may end the binding from within.
  [[nodiscard]] AlertLog log() const noexcept { return AlertLog(host); }
};

}  // namespace brantel
