#include "modem/ntt_session.h"

#include "framework/string_table.h"
#include "modem/modem_dialling.h"
#include "modem/ntt_line.h"
#include "modem/service_dialogue.h"

namespace brantel {
namespace {

constexpr ReplySign kReadyPrompt = {"READY"};
// The service's numbers, of which no more is known than this.
constexpr ReplySign kReady = {"10", ReplySign::Place::kAtStart};
constexpr ReplySign kRefusal = {"17", ReplySign::Place::kAtStart};
constexpr ReplySign kAccepted = {"28", ReplySign::Place::kAtStart};

// Once the service has been silent, only its number makes it ready, and no longer its prompt.
bool WaitForReadiness(ModemPort& port, std::string& response) {
  return WakeService(port, kReadyPrompt, &kRefusal, response) &&
         port.SetTimeouts(kTransferTimeouts) &&
         (Shows(response, kReadyPrompt) || WaitForReply(port, kReady, &kRefusal, response));
}

bool TransmitLine(ModemPort& port, const PagerCall& call, std::string& response) {
  const std::string line =
      BuildNttLine(call.pager_id, call.terminal_password, NttMessage(call.message));
  return port.WriteLogged(line) && port.ReadLogged(response) && Shows(response, kAccepted);
}

bool Deliver(ModemPort& port, const PagerCall& call, std::string& response) {
  if (!WaitForReadiness(port, response)) return false;
  port.log().Text(response);
  if (!TransmitLine(port, call, response)) return false;
  port.ReadLogged(response);  // for the log alone
  port.log().Line(text_id::kNttSuccess);
  return true;
}

}  // namespace

bool SendByNtt(ModemPort& port, const PagerCall& call) {
  std::string response;
  if (!CallCentre(port, call, kBusyWaitNtt, response)) return false;
  const bool delivered = Deliver(port, call, response);
  port.HangUp(response);
  return delivered;
}

}  // namespace brantel
