#include "modem/ntt_session.h"

#include "framework/string_table.h"
#include "modem/modem_dialling.h"
#include "modem/ntt_line.h"
#include "modem/service_dialogue.h"

namespace brantel {
namespace {

constexpr ReplySign kReadyPrompt = {.text = "READY"};

// The service's numbers, of which no more is known than this.
constexpr auto kAtStart = ReplySign::Place::kAtStart;
constexpr ReplySign kReady = {.text = "10", .place = kAtStart, .outweighs_end = true};
constexpr ReplySign kRefusal = {.text = "17", .place = kAtStart};
constexpr ReplySign kAccepted = {.text = "28", .place = kAtStart};

// Once the service has been silent, only its number makes it ready, and no longer its prompt.
bool WaitForReadiness(ModemPort& port, std::string& response) {
  return WakeService(port, kReadyPrompt, &kRefusal, response) &&
         port.SetTimeouts(kTransferTimeouts) &&
         (Shows(response, kReadyPrompt) || WaitForReply(port, kReady, &kRefusal, response));
}

// The host's log adds no line ends of its own.
void LogAsLine(ModemPort& port, const std::string& reply) {
  const std::string_view missing =
      reply.ends_with('\n') ? "" : (reply.ends_with('\r') ? "\n" : "\r\n");
  port.log().Made([&] { return reply + std::string(missing); });
}

bool TransmitLine(ModemPort& port, const PagerCall& call, std::string& response) {
  const std::string line =
      BuildNttLine(call.pager_id, call.terminal_password, NttMessage(call.message));
  return port.WriteLogged(line) && port.ReadLogged(response) && Shows(response, kAccepted);
}

bool Deliver(ModemPort& port, const PagerCall& call, std::string& response) {
  if (!WaitForReadiness(port, response)) return false;
  LogAsLine(port, response);
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
