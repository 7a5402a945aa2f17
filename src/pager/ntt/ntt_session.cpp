#include "pager/ntt/ntt_session.h"

#include "pager/centre/service_dialogue.h"
#include "pager/ntt/ntt_line.h"
#include "port/modem_dialling.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr ReplySign kReadyPrompt = {.text = "READY"};

// The service's numbers, of which no more is known than this.
constexpr auto kAtStart = ReplySign::Place::kAtStart;
constexpr ReplySign kReady = {.text = "10", .place = kAtStart, .outweighs_end = true};
constexpr ReplySign kRefusal = {.text = "17", .place = kAtStart};
constexpr ReplySign kAccepted = {.text = "28", .place = kAtStart};

// Once the service has been silent, only its number makes it ready, and no longer its prompt.
bool WaitForReadiness(ModemPort& port) {
  return WakeService(port, kReadyPrompt, &kRefusal) && port.SetTimeouts(kTransferTimeouts) &&
         (Shows(port.response(), kReadyPrompt) || WaitForReply(port, kReady, &kRefusal));
}

// The host's log adds no line ends of its own.
void LogAsLine(ModemPort& port, const std::string& reply) {
  const std::string_view missing =
      reply.ends_with('\n') ? "" : (reply.ends_with('\r') ? "\n" : "\r\n");
  port.log().Made([&] { return reply + std::string(missing); });
}

bool TransmitLine(ModemPort& port, const PagerCall& call) {
  const std::string line =
      BuildNttLine(call.pager_id, call.terminal_password, NttMessage(call.message));
  return port.WriteLogged(line) && port.ReadLogged() && Shows(port.response(), kAccepted);
}

bool Deliver(ModemPort& port, const PagerCall& call) {
  if (!WaitForReadiness(port)) return false;
  LogAsLine(port, port.response());
  if (!TransmitLine(port, call)) return false;
  port.ReadLogged();  // for the log alone
  port.log().Line(text_id::kNttSuccess);
  return true;
}

}  // namespace

bool SendByNtt(ModemPort& port, const PagerCall& call) {
  if (!CallCentre(port, call, kBusyWaitNtt)) return false;
  const bool delivered = Deliver(port, call);
  port.HangUp();
  return delivered;
}

}  // namespace brantel
