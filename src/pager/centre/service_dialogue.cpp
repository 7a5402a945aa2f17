#include "pager/centre/service_dialogue.h"

#include "port/modem_response.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr SerialTimeouts kPromptTimeouts = {
    .read_interval = 1000, .read_total_constant = 2000, .write_total_constant = 2000};
constexpr int kMostLineEnds = 5;
constexpr int kMostReads = 6;

enum class Meaning { kAwaited, kEnd, kOther };

// What a reply means to who waits for one with this sign.
Meaning MeaningOf(std::string_view reply, const ReplySign& awaited, const ReplySign* refusal) {
  const bool ends = EndsCall(reply, refusal);
  if (Shows(reply, awaited) && (!ends || awaited.outweighs_end)) return Meaning::kAwaited;
  return ends ? Meaning::kEnd : Meaning::kOther;
}

// Reads until the service shows its prompt or is silent. False when the call ends.
bool ReadToPrompt(ModemPort& port, const ReplySign& prompt, const ReplySign* refusal) {
  Meaning meaning = Meaning::kOther;
  while (meaning == Meaning::kOther && port.ReadLogged() && !port.response().empty()) {
    meaning = MeaningOf(port.response(), prompt, refusal);
  }
  return meaning != Meaning::kEnd;
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

bool WakeService(ModemPort& port, const ReplySign& prompt, const ReplySign* refusal) {
  if (!port.SetTimeouts(kPromptTimeouts)) return false;
  for (int sent = 0; sent < kMostLineEnds && !Shows(port.response(), prompt); ++sent) {
    if (!port.WriteLogged("\r") || !ReadToPrompt(port, prompt, refusal)) return false;
  }
  return true;
}

bool WaitForReply(ModemPort& port, const ReplySign& sign, const ReplySign* refusal) {
  for (int reads = 0; reads < kMostReads; ++reads) {
    if (!port.ReadLogged()) {
      port.log().Line(text_id::kUnknownResponse);
      return false;
    }
    const Meaning meaning = MeaningOf(port.response(), sign, refusal);
    if (meaning != Meaning::kOther) return meaning == Meaning::kAwaited;
  }
  port.log().Line(text_id::kGaveUp);
  return false;
}

}  // namespace brantel
