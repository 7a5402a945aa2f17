#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "sim/paging_centre.h"
#include "sim/tap_block.h"

namespace brantel::sim {

// How a TAP centre behaves towards its callers.
struct TapHabits {
  static constexpr unsigned kAlways = std::numeric_limits<unsigned>::max();

  Time pace{300};
  std::string_view prompt = "ID=";  // empty: it says nothing
  Time prompt_delay{0};             // beside the pace
  std::string_view password{};      // without which nobody gets further; empty: anybody does
  unsigned log_ins = 1;             // the last of so many counts, the others get the prompt
  bool goes_ahead = true;
  Time go_ahead_delay{0};   // beside the pace
  unsigned naks = 0;        // so many blocks are refused, whatever they hold
  char answer = tap::kAck;  // to a block that is in order; NUL: none
  CarrierLoss loss = CarrierLoss::kNever;
};

// The computer of a paging service that takes pages by TAP: it prompts, takes a log-in and then
// blocks of one page each, and checks each block.
class TapCentre final : public PagingCentre {
 public:
  TapCentre(const Surroundings& system, const TapHabits& habits)
      : PagingCentre(system, habits.pace, habits.loss), habits_(habits) {}

  void Receive(std::string_view bytes) override;

 private:
  // Takes what is complete from the front of the received bytes. False when nothing is.
  bool TakeSomething();
  void TakeLine(const std::string& line);
  void TakeBlock(const std::string& block);

  void Prompt();
  void LogIn(std::string_view password);
  void RefuseLogIn();
  void GoAhead();
  void Refuse(const TapFault& fault);
  void AnswerBlock(char answer);
  void End();

  const TapHabits habits_;
  std::string received_;
  bool takes_pages_ = false;
  unsigned log_ins_ = 0;
  unsigned wrong_passwords_ = 0;
  unsigned blocks_ = 0;
};

}  // namespace brantel::sim
