#include "modem/service_dialogue.h"

#include "framework/string_table.h"
#include "modem/modem_response.h"

namespace brantel {
namespace {

constexpr SerialTimeouts kPromptTimeouts = {1000, 0, 2000, 0, 2000};
constexpr int kMostLineEnds = 5;
constexpr int kMostReads = 6;

// Reads until the service shows its prompt or is silent. False when the call ends.
bool ReadToPrompt(ModemPort& port, const ReplySign& prompt, const ReplySign* refusal,
                  std::string& reply) {
  while (port.ReadLogged(reply) && !reply.empty()) {
    if (EndsCall(reply, refusal)) return false;
    if (Shows(reply, prompt)) break;
  }
  return true;
}

}  // namespace

bool Shows(std::string_view reply, const ReplySign& sign) {
  return sign.place == ReplySign::Place::kAtStart ? reply.starts_with(sign.text)
                                                  : Contains(reply, sign.text);
}

bool EndsCall(std::string_view reply, const ReplySign* refusal) {
  return Contains(reply, "NO CARRIER") || Contains(reply, "Slow") ||
         (refusal != nullptr && Shows(reply, *refusal));
}

bool WakeService(ModemPort& port, const ReplySign& prompt, const ReplySign* refusal,
                 std::string& reply) {
  if (!port.SetTimeouts(kPromptTimeouts)) return false;
  for (int sent = 0; sent < kMostLineEnds && !Shows(reply, prompt); ++sent) {
    if (!port.WriteLogged("\r") || !ReadToPrompt(port, prompt, refusal, reply)) return false;
  }
  return true;
}

bool WaitForReply(ModemPort& port, const ReplySign& sign, const ReplySign* refusal,
                  std::string& reply) {
  for (int reads = 0; reads < kMostReads; ++reads) {
    if (!port.ReadLogged(reply)) {
      port.log().Line(text_id::kUnknownResponse);
      return false;
    }
    if (Shows(reply, sign)) return true;
    if (EndsCall(reply, refusal)) return false;
  }
  port.log().Line(text_id::kGaveUp);
  return false;
}

}  // namespace brantel
