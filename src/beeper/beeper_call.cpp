#include "beeper/beeper_call.h"

#include <algorithm>

#include "beeper/beeper_port.h"
#include "port/modem_handshake.h"
#include "text/string_table.h"

namespace brantel {
namespace {

// A modem pauses for this long at each comma.
constexpr std::uint32_t kPauseAtComma = 2000;
constexpr std::uint32_t kTimeToDial = 1000;

std::uint32_t DialTime(const std::string& command) {
  const auto commas = static_cast<std::uint32_t>(std::ranges::count(command, ','));
  return kPauseAtComma * commas + kTimeToDial;
}

bool Dial(ModemPort& port, const BeeperCall& call) {
  const std::string command = call.dial_command + "\r";
  if (!port.Write(command)) return false;
  port.log().Text(command);
  port.log().Text("\r\n");
  port.Flush();
  port.Wait(DialTime(command));
  port.log().Line(text_id::kDelaying);
  port.Wait(call.extra_wait);
  return true;
}

// Deliberately a read of no bytes and its empty log line: what the modem says of the call is left
// for the hang-up's answer, and readers of the log expect a line here.
void ReadNothing(ModemPort& port) {
  std::string nothing;
  if (port.Read(0, nothing)) port.log().Text(nothing);
}

}  // namespace

bool PlaceCall(ModemPort& port, const BeeperCall& call) {
  if (!port.OpenPort(call.port_number, call.baud_selector, kBeeperFraming)) return false;
  const bool dialled = InitialiseModem(port, call.modem_string) && Dial(port, call);
  if (dialled) {
    ReadNothing(port);
    port.HangUp();
    port.log().Line(text_id::kSuccess);
  }
  port.ClosePort();
  return dialled;
}

}  // namespace brantel
