#include "port/modem_dialling.h"

#include "text/string_table.h"

namespace brantel {
namespace {

constexpr SerialTimeouts kDiallingTimeouts = {
    .read_interval = 2000, .read_total_constant = 50000, .write_total_constant = 10000};

}  // namespace

std::string DialCommand(std::string_view phone_number) {
  return "ATDT" + std::string(phone_number) + "\r";
}

bool DialCentre(ModemPort& port, std::string_view phone_number, std::uint32_t busy_wait) {
  if (!port.SetTimeouts(kDiallingTimeouts)) return false;
  const std::string command = DialCommand(phone_number);
  if (!port.SendCommand(command)) return false;
  while (port.Answers("BUSY")) {
    port.log().Line(text_id::kBusy);
    port.Wait(busy_wait);
    if (!port.SendCommand(command)) return false;
  }
  // Before the next test, since it holds the word "CARRIER" too.
  if (port.Answers("NO CARRIER")) {
    port.log().Line(text_id::kNoCarrier);
    return false;
  }
  if (!port.Answers("CONNECT") && !port.Answers("CARRIER")) {
    port.log().Line(text_id::kUnknownResponse);
    return false;
  }
  return true;
}

}  // namespace brantel
