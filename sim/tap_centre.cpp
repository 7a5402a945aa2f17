#include "sim/tap_centre.h"

namespace brantel::sim {
namespace {

constexpr std::string_view kLogInStart = "\x1BPG1";
constexpr unsigned kPasswordTries = 3;

// No block is as long.
constexpr std::size_t kLongestTapInput = 1000;

std::string Answer(char c) {
  return {c, tap::kCr};
}

}  // namespace

void TapCentre::Receive(std::string_view bytes) {
  received_ += bytes;
  while (TakeSomething()) {
  }
  if (received_.size() > kLongestTapInput) {
    received_.clear();
    Refuse({tap::kNak, "a block without an end"});
  }
}

bool TapCentre::TakeSomething() {
  const bool is_block = takes_pages_ && received_.starts_with(tap::kStx);
  const std::size_t line_end = received_.find(tap::kCr);
  const std::size_t size = is_block                        ? TapBlockSize(received_)
                           : line_end == std::string::npos ? 0
                                                           : line_end + 1;
  if (size == 0) return false;
  const std::string taken = received_.substr(0, size);
  received_.erase(0, size);
  if (is_block) {
    TakeBlock(taken);
  } else {
    TakeLine(taken.substr(0, size - 1));
  }
  return true;
}

void TapCentre::TakeLine(const std::string& line) {
  if (takes_pages_) {
    if (line == std::string(1, tap::kEot)) return End();
    return Note("does not understand " + Quoted(line));
  }
  if (line.starts_with(kLogInStart)) return LogIn(std::string_view(line).substr(4));
  Prompt();
}

// Callers who are in a hurry ask several times; they get one prompt.
void TapCentre::Prompt() {
  if (HasMoreToSay() || Loses(CarrierLoss::kAtPrompt)) return;
  if (habits_.prompt.empty()) return;
  Say(std::string(habits_.prompt), habits_.prompt_delay);
}

void TapCentre::LogIn(std::string_view password) {
  Note("is logged in to with password " + Quoted(password));
  if (Loses(CarrierLoss::kAtGoAhead)) return;
  if (++log_ins_ < habits_.log_ins) return Prompt();
  if (!habits_.password.empty() && password != habits_.password) return RefuseLogIn();
  GoAhead();
}

void TapCentre::RefuseLogIn() {
  Note("refuses the log-in");
  if (++wrong_passwords_ == kPasswordTries) return End();
  Say(Answer(tap::kNak));
}

void TapCentre::GoAhead() {
  Say(Answer(tap::kAck));
  if (!habits_.goes_ahead) return;
  takes_pages_ = true;
  Say("\x1B[p\r", habits_.go_ahead_delay);
  Loses(CarrierLoss::kAtPage);
}

void TapCentre::TakeBlock(const std::string& block) {
  if (Loses(CarrierLoss::kAtReply)) return;
  if (blocks_ < habits_.naks) {
    ++blocks_;
    return Refuse({tap::kNak, "this time"});
  }
  const auto reading = ReadTapBlock(block);
  if (const auto* const fault = std::get_if<TapFault>(&reading)) return Refuse(*fault);
  const auto& page = std::get<TapPage>(reading);
  if (habits_.answer == tap::kAck) return TakePage(page.pager_id, page.text, Answer(tap::kAck));
  NoteUntakenPage(page.pager_id, page.text);
  AnswerBlock(habits_.answer);
}

void TapCentre::Refuse(const TapFault& fault) {
  Note("refuses the block: " + fault.what);
  AnswerBlock(fault.answer);
}

void TapCentre::AnswerBlock(char answer) {
  if (answer == tap::kEot) return End();
  if (answer != '\0') Say(Answer(answer));
}

// The centre says goodbye and puts the receiver down.
void TapCentre::End() {
  Say(std::string(1, tap::kEsc) + Answer(tap::kEot));
  HangUp();
}

}  // namespace brantel::sim
