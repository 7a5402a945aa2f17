#include "pager/centre/pager_call.h"

#include <algorithm>
#include <array>

#include "port/modem_dialling.h"
#include "port/modem_handshake.h"
#include "text/string_table.h"

namespace brantel {

bool HasArguments(ModemPort& port, const PagerCall& call) {
  struct Argument {
    std::string_view text;
    std::size_t shortest;
    unsigned missing_text;
  };
  const std::array arguments = {Argument{call.pager_number, 3, text_id::kNoPhoneNumber},
                                Argument{call.pager_id, 3, text_id::kNoPagerId},
                                Argument{call.message, 1, text_id::kNoMessage}};
  const auto* const missing = std::ranges::find_if(
      arguments, [](const Argument& argument) { return argument.text.size() < argument.shortest; });
  if (missing == arguments.end()) return true;
  port.log().Line(missing->missing_text);
  return false;
}

bool CallCentre(ModemPort& port, const PagerCall& call, std::uint32_t busy_wait) {
  return HasArguments(port, call) && InitialiseModem(port, call.modem_string) &&
         DialCentre(port, call.pager_number, busy_wait);
}

}  // namespace brantel
