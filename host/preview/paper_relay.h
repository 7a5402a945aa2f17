#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "host/preview/paper_clock.h"
#include "host/preview/preview_part.h"
#include "smtp_mail/network/mail_socket.h"

namespace brantel::host {

// A network with a mail relay at each address that takes every message (RFC 5321). What it is sent
// becomes parts as relays take it apart: a command each, and the message. No connection is made.
class PaperRelay final : public MailNetwork {
 public:
  // All must outlive the object. Of the real network the addresses are read alone.
  PaperRelay(const MailNetwork& real_network, PaperClock& clock, PreviewParts& parts)
      : real_network_(real_network), clock_(clock), parts_(parts) {}

  [[nodiscard]] std::optional<Ipv4Address> ParseAddress(const std::string& text) const override {
    return real_network_.ParseAddress(text);
  }
  std::unique_ptr<MailSocket> CreateSocket() override;

  // How many replies there were, and how many milliseconds each was waited for.
  [[nodiscard]] std::uint32_t replies() const { return replies_; }
  [[nodiscard]] std::uint32_t timeout() const { return timeout_; }

 private:
  class Connection;

  const MailNetwork& real_network_;
  PaperClock& clock_;
  PreviewParts& parts_;
  std::uint32_t replies_ = 0;
  std::uint32_t timeout_ = 0;
};

}  // namespace brantel::host
