#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "notifier/alert_log.h"
#include "smtp_mail/network/mail_socket.h"

namespace brantel {

// What a relay answered. The session judges it by its code and by the first character of its last
// line.
struct SmtpReply {
  int code = 0;  // the number at the start of the last line; 0 when none could be read
  char first = '\0';

  [[nodiscard]] bool IsOfKind(char digit) const { return code > 0 && first == digit; }
};

// The conversation with a relay (RFC 5321) over a connected socket. All that is sent and received
// also goes to the host's log.
class SmtpConnection {
 public:
  // Bytes that come too early, behind the end of a reply line, are kept in `carry_over` as far
  // as their first NUL; what stands there already is read first. Each receive waits for `timeout`
  // milliseconds.
  SmtpConnection(AlertLog log, MailSocket& socket, std::string& carry_over, std::uint32_t timeout)
      : log_(std::move(log)), socket_(socket), carry_over_(carry_over), timeout_(timeout) {
    line_.reserve(kLongestLine + kLongestReceive);
    carry_over_.reserve(kLongestReceive);
  }

  // False when not all of it could be sent.
  bool SendText(std::string_view text);

  // Reads one reply with all its lines.
  SmtpReply ReadReply();

 private:
  // A reply line ends, complete or not, at the receive that brings it to `kLongestLine` bytes.
  static constexpr std::size_t kLongestLine = 900;
  static constexpr std::size_t kLongestReceive = 82;

  bool SendAll(std::string_view bytes);
  void ReadReplyLine();
  void TakeCarriedLine();
  Outcome<std::size_t> RecvWithTimeout(std::span<char> buffer);

  AlertLog log_;
  MailSocket& socket_;
  std::string& carry_over_;
  std::uint32_t timeout_;
  // The line that was read last. Its memory and the carry-over's are there before the first reply:
  // that the relay has accepted a message is not to be lost for want of them.
  std::string line_;
};

}  // namespace brantel
