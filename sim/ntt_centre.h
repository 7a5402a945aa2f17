#pragma once

#include <string>
#include <string_view>

#include "sim/paging_centre.h"

namespace brantel::sim {

// How an NTT centre behaves towards its callers.
struct NttHabits {
  enum class Reply { kAccepted, kDigitsOfNumber, kNothing };

  Time pace{300};
  std::string_view prompt = "READY";  // empty: it says nothing
  Time prompt_delay{0};               // beside the pace
  unsigned prompts = 1;               // so many, at equal distances
  Reply reply = Reply::kAccepted;     // to a line that is in order
  bool takes_one_page = false;        // it hangs up behind its answer to the first
  CarrierLoss loss = CarrierLoss::kNever;
};

// The computer of a Japanese paging service that takes a line for each page, and checks it. Its
// answers are two digits; of their meanings little is known.
class NttCentre final : public PagingCentre {
 public:
  NttCentre(const Surroundings& system, const NttHabits& habits)
      : PagingCentre(system, habits.pace, habits.loss),
        habits_(habits),
        digits_(system.LastTwoDigits()) {}

  void Receive(std::string_view bytes) override;

 private:
  void Prompt();
  void TakeLine(std::string_view line);
  // To a line that is in order; empty when there is none.
  [[nodiscard]] std::string_view Reply() const;

  const NttHabits habits_;
  const std::string digits_;
  std::string received_;
};

}  // namespace brantel::sim
