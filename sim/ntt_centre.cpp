#include "sim/ntt_centre.h"

#include "sim/ntt_line.h"

namespace brantel::sim {
namespace {

constexpr std::string_view kAccepted = "28";
constexpr std::string_view kRefused = "17";
constexpr Time kBetweenPrompts{4000};
constexpr Time kNttHangUpDelay{1500};

// No line is as long.
constexpr std::size_t kLongestInput = 1000;

std::string Line(std::string_view text) {
  return std::string(text) + "\r\n";
}

}  // namespace

void NttCentre::Receive(std::string_view bytes) {
  received_ += bytes;
  std::size_t end = 0;
  while ((end = received_.find('\r')) != std::string::npos) {
    const std::string line = received_.substr(0, end);
    received_.erase(0, end + 1);
    if (line.empty()) {
      Prompt();
    } else {
      TakeLine(line);
    }
  }
  if (received_.size() > kLongestInput) received_.clear();
}

// Callers who are in a hurry ask several times; they are answered once.
void NttCentre::Prompt() {
  if (HasMoreToSay() || Loses(CarrierLoss::kAtPrompt) || habits_.prompt.empty()) return;
  Time delay = habits_.prompt_delay;
  for (unsigned i = 0; i < habits_.prompts; ++i) {
    Say(Line(habits_.prompt), delay);
    delay += kBetweenPrompts;
  }
}

void NttCentre::TakeLine(std::string_view line) {
  if (Loses(CarrierLoss::kAtReply)) return;
  const auto reading = ReadNttLine(line);
  if (const auto* const fault = std::get_if<NttFault>(&reading)) {
    Note("refuses the line: " + fault->what);
    return Say(Line(kRefused));
  }
  const auto& page = std::get<NttPage>(reading);
  Note("is given password " + Quoted(page.password));
  const std::string_view reply = Reply();
  if (reply == kAccepted) {
    TakePage(page.pager_id, page.text, Line(reply));
  } else {
    NoteUntakenPage(page.pager_id, page.text);
    if (!reply.empty()) Say(Line(reply));
  }
  if (habits_.takes_one_page) HangUp(kNttHangUpDelay);
}

std::string_view NttCentre::Reply() const {
  switch (habits_.reply) {
    case NttHabits::Reply::kAccepted:
      return kAccepted;
    case NttHabits::Reply::kDigitsOfNumber:
      return digits_;
    default:
      return {};
  }
}

}  // namespace brantel::sim
