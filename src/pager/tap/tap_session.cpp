#include "pager/tap/tap_session.h"

#include "pager/centre/service_dialogue.h"
#include "port/modem_dialling.h"
#include "text/string_table.h"

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

bool WaitForIdPrompt(ModemPort& port) {
  return WakeService(port, kIdPrompt, kNoRefusal) && port.SetTimeouts(kTransferTimeouts) &&
         (Shows(port.response(), kIdPrompt) || WaitForReply(port, kIdPrompt, kNoRefusal));
}

std::string LogInCommand(std::string_view password) {
  std::string command(kEscape);
  command += "PG1";
  command += password;
  command += '\r';
  return command;
}

bool LogIn(ModemPort& port, const PagerCall& call) {
  const std::string command = LogInCommand(call.terminal_password);
  if (!port.SendCommand(command)) return false;
  if (!Shows(port.response(), kGoAhead) && Shows(port.response(), kIdPrompt) &&
      !port.SendCommand(command)) {
    return false;
  }
  if (Shows(port.response(), kGoAhead)) return true;
  return !EndsCall(port.response(), kNoRefusal) && WaitForReply(port, kGoAhead, kNoRefusal);
}

// A centre that ends the transmission behind the block has, deliberately, taken it.
bool IsDelivery(const ModemPort& port, const TapVariant& variant) {
  return port.Answers(kAcknowledge) || port.Answers(kEndOfTransmission) ||
         (variant.takes_rejection && port.Answers(kRecordSeparator));
}

bool TransmitBlock(ModemPort& port, const PagerCall& call, const TapVariant& variant) {
  for (int transmission = 0; transmission < kMostTransmissions; ++transmission) {
    if (variant.block_timeouts && !port.SetTimeouts(*variant.block_timeouts)) return false;
    if (!port.WriteLogged(BuildTapBlock(call.pager_id, call.message, variant.block))) return false;
    const bool answered = port.ReadLogged();
    if (IsDelivery(port, variant)) return true;
    if (!answered || !port.Answers(kNegativeAcknowledge)) return false;
  }
  return false;
}

void EndTransmission(ModemPort& port) {
  port.SendCommand(std::string(kEndOfTransmission) + '\r');
}

bool Deliver(ModemPort& port, const PagerCall& call, const TapVariant& variant) {
  if (!WaitForIdPrompt(port)) return false;
  port.log().Line(text_id::kGotIdPrompt);
  if (!LogIn(port, call)) return false;
  port.log().Line(text_id::kGotGoAhead);
  if (!TransmitBlock(port, call, variant)) return false;
  EndTransmission(port);
  return true;
}

}  // namespace

bool SendByTap(ModemPort& port, const PagerCall& call, const TapVariant& variant) {
  if (!CallCentre(port, call, kBusyWait)) return false;
  const bool delivered = Deliver(port, call, variant);
  port.HangUp();
  return delivered;
}

}  // namespace brantel
