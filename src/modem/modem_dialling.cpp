#include "modem/modem_dialling.h"

#include "framework/string_table.h"
#include "modem/modem_response.h"

namespace brantel {
namespace {

constexpr SerialTimeouts kDiallingTimeouts = {2000, 0, 50000, 0, 10000};

}  // namespace

std::string DialCommand(std::string_view phone_number) {
  return "ATDT" + std::string(phone_number) + "\r";
}

bool DialCentre(ModemPort& port, std::string_view phone_number, std::uint32_t busy_wait,
                std::string& response) {
  if (!port.SetTimeouts(kDiallingTimeouts)) return false;
  const std::string command = DialCommand(phone_number);
  if (!port.SendCommand(command, response)) return false;
  while (Contains(response, "BUSY")) {
    port.log().Line(text_id::kBusy);
    port.Wait(busy_wait);
    if (!port.SendCommand(command, response)) return false;
  }
  // Before the next test, since it holds the word "CARRIER" too.
  if (Contains(response, "NO CARRIER")) {
    port.log().Line(text_id::kNoCarrier);
    return false;
  }
  if (!Contains(response, "CONNECT") && !Contains(response, "CARRIER")) {
    port.log().Line(text_id::kUnknownResponse);
    return false;
  }
  return true;
}

}  // namespace brantel
