#pragma once

#include <string_view>

namespace brantel::sample_mail {

inline constexpr std::string_view kTo = "ann@example.org";
inline constexpr std::string_view kFrom = "ops@example.org";
inline constexpr std::string_view kSubject = "router7 is down";
inline constexpr std::string_view kBody =
    "router7 has not answered for ten minutes.\r\nLast seen at 23:59.\r\n";

// What a session for this mail sends and receives, piece by piece, by a client that is connected:
// its Send sends a piece, and its Receive waits for a reply of the sink and receives it.
template <typename Client>
void SendBare(const Client& client) {
  const auto exchange = [&](std::string_view command) {
    client.Send(command);
    client.Receive();
  };
  client.Receive();
  exchange("HELO watch\r\n");
  client.Send("MAIL From:");
  client.Send(kFrom);
  exchange("\r\n");
  exchange("RCPT To:<ann@example.org>\r\n");
  exchange("DATA\r\n");
  client.Send("From: ");
  client.Send(kFrom);
  client.Send("\r\n");
  client.Send("Date: Fri,  5 Mar 2004 00:00:00 +0100\r\n");
  client.Send("To: ann@example.org\r\n");
  client.Send("Mime-Version: 1.0\r\n");
  client.Send("Content-Type: text/plain;charset=us-ascii\r\n");
  client.Send("Subject: router7 is down\r\n\r\n");
  client.Send(kBody);
  exchange("\r\n.\r\n");
  exchange("QUIT\r\n");
}

}  // namespace brantel::sample_mail
