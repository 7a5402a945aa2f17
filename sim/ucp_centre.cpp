#include "sim/ucp_centre.h"

#include "sim/ucp_frame.h"

namespace brantel::sim {
namespace {

// No frame is as long.
constexpr std::size_t kLongestInput = 2000;

}  // namespace

void UcpCentre::Receive(std::string_view bytes) {
  received_ += bytes;
  for (;;) {
    // What stands before a frame means nothing.
    received_.erase(0, received_.find(ucp::kStx));
    const std::size_t end = received_.find(ucp::kEtx);
    if (end == std::string::npos) break;
    const std::string frame = received_.substr(1, end - 1);
    received_.erase(0, end + 1);
    TakeFrame(frame);
  }
  if (received_.size() > kLongestInput) received_.clear();
}

void UcpCentre::TakeFrame(const std::string& frame) {
  if (Loses(CarrierLoss::kAtReply)) return;
  const auto reading = ReadUcpOperation(frame);
  if (const auto* const fault = std::get_if<UcpFault>(&reading)) {
    Note("refuses the frame: " + fault->what);
    return Say(UcpRefusal(fault->reference, fault->error));
  }
  const auto& operation = std::get<UcpOperation>(reading);
  NotePage(operation.recipients, operation.text);
  switch (habits_.reply) {
    case UcpHabits::Reply::kResult:
      return Say(UcpAcceptance(operation.reference, operation.recipients));
    case UcpHabits::Reply::kErrorOfNumber:
      return Say(UcpRefusal(operation.reference, error_));
    case UcpHabits::Reply::kNothing:
      return;
    case UcpHabits::Reply::kEmptyFrame:
      return Say({ucp::kStx, ucp::kEtx});
    case UcpHabits::Reply::kGarbage:
      return Say("\x7F~{@}#\r\n");
  }
}

}  // namespace brantel::sim
