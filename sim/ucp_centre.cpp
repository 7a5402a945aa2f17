#include "sim/ucp_centre.h"

namespace brantel::sim {
namespace {

// No frame is as long.
constexpr std::size_t kLongestUcpInput = 2000;

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
  if (received_.size() > kLongestUcpInput) received_.clear();
}

void UcpCentre::TakeFrame(const std::string& frame) {
  if (Loses(CarrierLoss::kAtReply)) return;
  const auto reading = ReadUcpOperation(frame);
  if (const auto* const fault = std::get_if<UcpFault>(&reading)) {
    Note("refuses the frame: " + fault->what);
    return Say(UcpRefusal(fault->reference, fault->error));
  }
  const auto& operation = std::get<UcpOperation>(reading);
  const std::string reply = ReplyTo(operation);
  if (habits_.reply == UcpHabits::Reply::kResult) {
    return TakePage(operation.recipients, operation.text, reply);
  }
  NoteUntakenPage(operation.recipients, operation.text);
  if (!reply.empty()) Say(reply);
}

std::string UcpCentre::ReplyTo(const UcpOperation& operation) const {
  switch (habits_.reply) {
    case UcpHabits::Reply::kResult:
      return UcpAcceptance(operation.reference, operation.recipients);
    case UcpHabits::Reply::kErrorOfNumber:
      return UcpRefusal(operation.reference, error_);
    case UcpHabits::Reply::kEmptyFrame:
      return {ucp::kStx, ucp::kEtx};
    case UcpHabits::Reply::kGarbage:
      return "\x7F~{@}#\r\n";
    default:
      return {};
  }
}

}  // namespace brantel::sim
