#include "smtp_mail/session/smtp_state.h"

namespace brantel {
namespace {

using OwnedText = std::unique_ptr<const std::string>;

}  // namespace

SmtpState::~SmtpState() {
  const OwnedText name(local_mail_host_name_.load());
  const OwnedText carry_over(carry_over_.load());
}

std::string SmtpState::local_mail_host_name() const {
  const std::string* const name = local_mail_host_name_.load();
  return name == nullptr ? std::string() : *name;
}

void SmtpState::KeepLocalMailHostName(std::string_view name) {
  if (name.empty()) return;
  OwnedText kept = std::make_unique<const std::string>(name);
  const std::string* none = nullptr;
  if (local_mail_host_name_.compare_exchange_strong(none, kept.get())) (void)kept.release();
}

CarryOver::CarryOver(SmtpState& state)
    : state_(state), bytes_(state.carry_over_.exchange(nullptr)) {
  if (!bytes_) bytes_ = std::make_unique<std::string>();
}

// Nothing here needs memory, so that nothing is lost for want of it.
CarryOver::~CarryOver() {
  if (!bytes_->empty()) bytes_.reset(state_.carry_over_.exchange(bytes_.release()));
}

}  // namespace brantel
