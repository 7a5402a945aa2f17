#pragma once

#include <cstdint>
#include <string_view>

#include "notifier/notifier_host.h"
#include "smtp_mail/message/mail_environment.h"
#include "smtp_mail/network/mail_socket.h"
#include "smtp_mail/session/smtp_state.h"
#include "system/machine_name.h"

namespace brantel {

// One plain-text message and where it goes, in the system's ANSI code page.
struct MailMessage {
  std::string_view to;       // addresses separated by commas
  std::string_view from;     // an address, or a name with the address in angle brackets; a "%s" in
                             // it stands for this machine's name
  std::string_view subject;  // when empty the message's first line is the subject
  std::string_view gateway;  // the relay's IPv4 address in dotted form
  std::string_view message;
};

// What a session works on.
struct SmtpSystem {
  MailNetwork& network;
  MailEnvironment& environment;
  MachineName& machine_name;
  SmtpState& state;
};

// Delivers a message to its relay over a new connection, and logs the whole dialogue when there is
// a host. Each receive waits for `timeout` milliseconds. Any number of threads may do so at the
// same time, but the host's log and what else they work on is theirs to share.
//
// 0 when the relay accepted the message. Otherwise the code of the last reply to a recipient that
// was none of acceptance, for example 550; deliberately 0 when that reply could not be read, which
// then looks like success. -1 for every other failure.
//
// The body goes out as it is: without dot-stuffing, line wrapping or conversion of line ends,
// deliberately. Texts in commands and headers end at their first line end, so that they add none;
// what the encoding of a header drops, though, it drops with the header's own line end.
int SmtpSendMessage(const SmtpSystem& system, NotifierHost* host, const MailMessage& message,
                    std::uint32_t timeout);

}  // namespace brantel
