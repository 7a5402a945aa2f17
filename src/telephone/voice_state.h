#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "notifier/alert_log.h"
#include "notifier/notifier_host.h"
#include "telephone/line_constants.h"

namespace brantel {

// What all Voice objects of a process share. There can be one call at a time.
struct VoiceState {
  // A usable voice line has been found once.
  bool probe_done = false;
  // The host that is told of every step, held by a reference of its own; none before the first
  // probe has succeeded, nor after any object's Shutdown, which may come while another thread is
  // telling it.
  std::atomic<std::shared_ptr<NotifierHost>> host{};

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
  [[nodiscard]] AlertLog log() const noexcept { return AlertLog(host.load()); }
};

}  // namespace brantel
