#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "port/modem_port.h"

namespace brantel {

// One call to a numeric pager.
struct BeeperCall {
  std::optional<std::uint32_t> port_number;
  std::int32_t baud_selector = 0;
  std::string modem_string;
  // The dial command without its carriage return: number, pauses and digits to key.
  std::string dial_command;
  // How long to wait after dialling, in milliseconds, beside the dial command's pauses.
  std::uint32_t extra_wait = 0;
};

// Makes the call. Succeeds once the modem has taken the dial command: a numeric pager has no modem
// of its own, so nothing comes back over the line that could say more.
bool PlaceCall(ModemPort& port, const BeeperCall& call);

}  // namespace brantel
