#pragma once

#include <string_view>

#include "framework/notifier_host.h"

namespace brantel {

// The host's log of a mail session; nothing is logged when no host is bound.
class MailLog {
 public:
  explicit MailLog(NotifierHost* host) : host_(host) {}

  void Add(std::string_view text) const {
    if (host_ != nullptr) host_->LogMessage(text);
  }

 private:
  NotifierHost* host_;
};

}  // namespace brantel
