#include "port/modem_handshake.h"

#include "text/string_table.h"

namespace brantel {
namespace {

constexpr std::string_view kAttention = "AT\r";

void AnnounceAttempt(ModemPort& port, unsigned text_id) {
  if (port.policy().announces_attempts) port.log().Line(text_id);
}

bool TryAttention(ModemPort& port) {
  AnnounceAttempt(port, text_id::kTryingAgainForOk);
  if (!port.SendCommand(kAttention) || !port.Answers("OK")) {
    port.log().Quoted(text_id::kNoOk, port.response());
    return false;
  }
  if (port.policy().refuses_echo && port.Answers("AT")) {
    port.log().Quoted(text_id::kEchoNotOff, port.response());
    return false;
  }
  return true;
}

}  // namespace

std::string InitialisationCommand(const ModemPolicy& policy, std::string_view modem_string) {
  std::string command(modem_string.empty() ? policy.bare_modem_string : modem_string);
  if (command.find('\r') == std::string::npos) command += '\r';
  return command;
}

bool InitialiseModem(ModemPort& port, std::string_view modem_string) {
  const ModemPolicy& policy = port.policy();
  if (policy.initialisation_timeouts && !port.SetTimeouts(*policy.initialisation_timeouts)) {
    return false;
  }
  const bool answered = port.SendCommand(InitialisationCommand(policy, modem_string));
  if (port.Answers("OK")) return true;
  if (answered) {
    AnnounceAttempt(port, text_id::kLookingForOk);
    if (!port.ReadLogged()) return false;
  }
  return port.Answers("OK") || TryAttention(port);
}

}  // namespace brantel
