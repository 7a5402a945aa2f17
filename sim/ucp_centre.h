#pragma once

#include <string>
#include <string_view>

#include "sim/paging_centre.h"
#include "sim/ucp_frame.h"

namespace brantel::sim {

// How a UCP centre behaves towards its callers.
struct UcpHabits {
  enum class Reply { kResult, kErrorOfNumber, kNothing, kEmptyFrame, kGarbage };

  Time pace{300};
  // What a message gets that is in order; kErrorOfNumber: the error of the number's last two
  // digits.
  Reply reply = Reply::kResult;
  CarrierLoss loss = CarrierLoss::kNever;
};

// The computer of a message service that takes messages by UCP. It refuses a frame that is not in
// order with the error that tells why.
class UcpCentre final : public PagingCentre {
 public:
  UcpCentre(const Surroundings& system, const UcpHabits& habits)
      : PagingCentre(system, habits.pace, habits.loss),
        habits_(habits),
        error_(system.LastTwoDigits()) {}

  void Receive(std::string_view bytes) override;

 private:
  void TakeFrame(const std::string& frame);
  // To an operation that is in order; empty when there is none.
  [[nodiscard]] std::string ReplyTo(const UcpOperation& operation) const;

  const UcpHabits habits_;
  const std::string error_;
  std::string received_;
};

}  // namespace brantel::sim
