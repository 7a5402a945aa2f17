#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "port/modem_port.h"
#include "port/serial_device.h"

namespace brantel {

// While the service's log-in and the page go over the line.
inline constexpr SerialTimeouts kTransferTimeouts = {
    .read_interval = 1000, .read_total_constant = 10000, .write_total_constant = 10000};

// A text by which replies of a service are known.
struct ReplySign {
  enum class Place { kAnywhere, kAtStart };

  std::string_view text;
  Place place = Place::kAnywhere;
  // Whether a reply that shows it is what was waited for even if it ends the call as well.
  bool outweighs_end = false;
};

bool Shows(std::string_view reply, const ReplySign& sign);

// Whether a reply tells that the line is lost or that the service will not go on: by the modem's
// words, or by the service's own sign, if it has one.
bool EndsCall(std::string_view reply, const ReplySign* refusal);

// Sends line ends until the service, whose modem has just answered ours, shows `prompt`; five at
// most. The last reply need not show it yet. False when the call ends.
bool WakeService(ModemPort& port, const ReplySign& prompt, const ReplySign* refusal);

// Reads until a reply shows `sign`; six times at most. False, with the reason in the log, when none
// does, and when the call ends.
bool WaitForReply(ModemPort& port, const ReplySign& sign, const ReplySign* refusal);

}  // namespace brantel
