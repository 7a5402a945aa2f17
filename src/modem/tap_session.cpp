#include "modem/tap_session.h"

#include "framework/string_table.h"
#include "modem/modem_dialling.h"
#include "modem/modem_response.h"
#include "modem/service_dialogue.h"

namespace brantel {
namespace {

constexpr std::string_view kEndOfTransmission = "\x04";
constexpr std::string_view kAcknowledge = "\x06";
constexpr std::string_view kNegativeAcknowledge = "\x15";
constexpr std::string_view kEscape = "\x1B";
constexpr std::string_view kRecordSeparator = "\x1E";

constexpr ReplySign kIdPrompt = {.text = "ID="};
constexpr ReplySign kGoAhead = {.text = "[p", .outweighs_end = true};
// A centre that ends the call does so by what the modem then says.
constexpr const ReplySign* kNoRefusal = nullptr;

constexpr int kMostTransmissions = 3;

bool WaitForIdPrompt(ModemPort& port, std::string& response) {
  return WakeService(port, kIdPrompt, kNoRefusal, response) &&
         port.SetTimeouts(kTransferTimeouts) &&
         (Shows(response, kIdPrompt) || WaitForReply(port, kIdPrompt, kNoRefusal, response));
}

std::string LogInCommand(std::string_view password) {
  std::string command(kEscape);
  command += "PG1";
  command += password;
  command += '\r';
  return command;
}

bool LogIn(ModemPort& port, const PagerCall& call, std::string& response) {
  const std::string command = LogInCommand(call.terminal_password);
  if (!port.SendCommand(command, response)) return false;
  if (!Shows(response, kGoAhead) && Shows(response, kIdPrompt) &&
      !port.SendCommand(command, response)) {
    return false;
  }
  if (Shows(response, kGoAhead)) return true;
  return !EndsCall(response, kNoRefusal) && WaitForReply(port, kGoAhead, kNoRefusal, response);
}

// A centre that ends the transmission behind the block has, deliberately, taken it.
bool IsDelivery(const std::string& response, const TapVariant& variant) {
  return Contains(response, kAcknowledge) || Contains(response, kEndOfTransmission) ||
         (variant.takes_rejection && Contains(response, kRecordSeparator));
}

bool TransmitBlock(ModemPort& port, const PagerCall& call, const TapVariant& variant,
                   std::string& response) {
  for (int transmission = 0; transmission < kMostTransmissions; ++transmission) {
    if (variant.block_timeouts && !port.SetTimeouts(*variant.block_timeouts)) return false;
    if (!port.WriteLogged(BuildTapBlock(call.pager_id, call.message, variant.block))) return false;
    const bool answered = port.ReadLogged(response);
    if (IsDelivery(response, variant)) return true;
    if (!answered || !Contains(response, kNegativeAcknowledge)) return false;
  }
  return false;
}

void EndTransmission(ModemPort& port, std::string& response) {
  port.SendCommand(std::string(kEndOfTransmission) + '\r', response);
}

bool Deliver(ModemPort& port, const PagerCall& call, const TapVariant& variant,
             std::string& response) {
  if (!WaitForIdPrompt(port, response)) return false;
  port.log().Line(text_id::kGotIdPrompt);
  if (!LogIn(port, call, response)) return false;
  port.log().Line(text_id::kGotGoAhead);
  if (!TransmitBlock(port, call, variant, response)) return false;
  EndTransmission(port, response);
  return true;
}

}  // namespace

bool SendByTap(ModemPort& port, const PagerCall& call, const TapVariant& variant) {
  std::string response;
  if (!CallCentre(port, call, kBusyWait, response)) return false;
  const bool delivered = Deliver(port, call, variant, response);
  port.HangUp(response);
  return delivered;
}

}  // namespace brantel
