#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "port/modem_port.h"

namespace brantel {

// One page and the centre that is to deliver it.
struct PagerCall {
  std::string_view modem_string;
  std::string_view pager_number;  // of the centre's modem
  std::string_view terminal_password;
  std::string_view pager_id;  // whom the page is for
  std::string_view message;
};

// Whether number, pager ID and message are there at all. Logs the first one that is not.
bool HasArguments(ModemPort& port, const PagerCall& call);

// What TAP and NTT begin with: checks the arguments, initialises the modem and dials the centre,
// which is left alone for `busy_wait` milliseconds when it is busy. False, with the reason in the
// log, when there is no line.
bool CallCentre(ModemPort& port, const PagerCall& call, std::uint32_t busy_wait);

}  // namespace brantel
