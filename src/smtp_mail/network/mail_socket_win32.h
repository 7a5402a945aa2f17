#pragma once

#include "smtp_mail/network/mail_socket.h"

namespace brantel {

// Blocking TCP sockets of WinSock, which has to be started.
class SystemMailNetwork final : public MailNetwork {
 public:
  [[nodiscard]] std::optional<Ipv4Address> ParseAddress(const std::string& text) const override;
  std::unique_ptr<MailSocket> CreateSocket() override;
};

}  // namespace brantel
