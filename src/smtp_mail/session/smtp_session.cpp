#include "smtp_mail/session/smtp_session.h"

#include <memory>
#include <new>
#include <optional>

#include "notifier/alert_log.h"
#include "smtp_mail/message/charset.h"
#include "smtp_mail/message/date_header.h"
#include "smtp_mail/message/header_encoding.h"
#include "smtp_mail/message/recipient_list.h"
#include "smtp_mail/session/local_mail_host_name.h"
#include "smtp_mail/session/smtp_connection.h"
#include "text/format_text.h"
#include "text/japanese_text.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr int kAccepted = 0;
constexpr int kFailed = -1;
constexpr std::uint16_t kSmtpPort = 25;

// A text as far as it may stand in a command or header.
std::string_view OneLine(std::string_view text) {
  using namespace std::string_view_literals;
  return text.substr(0, text.find_first_of("\r\n\0"sv));
}

// The name by which this machine introduces itself, found out where no session has yet.
std::string LocalMailHostName(SmtpState& state, MachineName& machine_name) {
  std::string name = state.local_mail_host_name();
  if (!name.empty()) return name;
  name = OneLine(GetLocalMailHostName(machine_name));
  state.KeepLocalMailHostName(name);
  return name;
}

// What a session sends beside its message.
struct SmtpDetails {
  std::string local_mail_host_name;
  std::string zone_text;
};

// The dialogue over one connection.
class SmtpSession {
 public:
  SmtpSession(const SmtpSystem& system, const AlertLog& log, MailSocket& socket,
              const MailMessage& message, SmtpDetails details, std::uint32_t timeout)
      : environment_(system.environment),
        details_(std::move(details)),
        log_(log),
        carry_over_(system.state),
        connection_(log, socket, carry_over_.bytes(), timeout),
        message_(message),
        to_(OneLine(message.to)),
        from_(OneLine(message.from)) {}

  int Run() {
    if (!connection_.ReadReply().IsOfKind('2')) return kFailed;
    if (!IsAccepted("HELO " + details_.local_mail_host_name + "\r\n")) return kFailed;
    Transfer();
    Quit();
    return result_;
  }

 private:
  // Sends a command and reads the reply; nothing when it could not be sent.
  std::optional<SmtpReply> Exchange(std::string_view command) {
    if (!connection_.SendText(command)) return std::nullopt;
    return connection_.ReadReply();
  }

  bool IsAccepted(std::string_view command, char kind = '2') {
    const auto reply = Exchange(command);
    return reply && reply->IsOfKind(kind);
  }

  // From the sender to the end of the message, as far as the relay accepts it.
  void Transfer() {
    if (!SendSender() || !SendRecipients() || !IsAccepted("DATA\r\n", '3')) return;
    SendHeaders();
    if (SendBody() && IsAccepted("\r\n.\r\n")) result_ = kAccepted;
  }

  void Quit() { Exchange("QUIT\r\n"); }

  // A sender as it goes out: "%s" in it is this machine's name.
  [[nodiscard]] std::string FillInHostName(std::string_view sender) const {
    if (sender.find("%s") == std::string_view::npos) return std::string(sender);
    return FormatText(sender, {details_.local_mail_host_name});
  }

  bool SendSender() {
    constexpr std::size_t kLongestSender = 1023;
    std::string_view sender = from_.substr(0, kLongestSender);
    const std::size_t bracket = sender.find('<');
    if (bracket != std::string_view::npos) sender.remove_prefix(bracket);
    // Deliberately in three transmissions, with neither a blank nor brackets of our own.
    return connection_.SendText("MAIL From:") && connection_.SendText(FillInHostName(sender)) &&
           IsAccepted("\r\n");
  }

  std::optional<SmtpReply> SendRecipient(std::string_view address) {
    const bool has_brackets = address.starts_with('<');
    std::string command = has_brackets ? "RCPT To:" : "RCPT To:<";
    command += address;
    command += has_brackets ? "\r\n" : ">\r\n";
    return Exchange(command);
  }

  // True when the relay accepted the recipient. A refusal becomes the result for now.
  bool NoteRecipient(const SmtpReply& reply) {
    const bool is_accepted = reply.IsOfKind('2');
    if (!is_accepted) result_ = reply.code;
    return is_accepted;
  }

  // True when there is somebody to deliver the message to.
  bool SendRecipients() {
    if (to_.find(',') != std::string_view::npos) return SendRecipientList(SplitRecipients(to_));
    const auto reply = SendRecipient(to_);
    return reply && NoteRecipient(*reply);
  }

  bool SendRecipientList(const RecipientList& recipients) {
    if (!recipients.left_out.empty()) {
      log_.Inserts(text_id::kRecipientsLeftOut, {recipients.left_out});
    }
    bool is_any_accepted = false;
    for (const std::string_view address : recipients.behind_commas) {
      const auto reply = SendRecipient(address);
      if (reply && NoteRecipient(*reply)) is_any_accepted = true;
    }
    if (recipients.first.empty()) return is_any_accepted;
    const auto reply = SendRecipient(recipients.first);
    if (!reply) return false;
    return NoteRecipient(*reply) || is_any_accepted;
  }

  // Failures are left for the body to meet.
  void SendHeaders() {
    SendEncodedHeader("From: ");
    SendEncodedHeader(FillInHostName(from_));
    SendEncodedHeader("\r\n");
    SendEncodedHeader(DateHeader(environment_.Now(), details_.zone_text) + "\r\n");
    SendEncodedHeader("To: " + std::string(to_) + "\r\n");
    SendContentType();
    SendEncodedHeader(SubjectHeader() + "\r\n\r\n");
  }

  [[nodiscard]] std::string SubjectHeader() const {
    constexpr std::size_t kLongestHeader = 1024;
    const std::string_view subject = message_.subject.empty() ? message_.message : message_.subject;
    return ("Subject: " + std::string(OneLine(subject))).substr(0, kLongestHeader);
  }

  // A text with its line end, which is part of it: deliberately, what the encoding drops of the
  // text it drops with the line end, and what is sent next then goes on in the same line.
  void SendEncodedHeader(std::string_view text) {
    constexpr int kLimit = 512;
    if (HasHighBytes(text)) {
      connection_.SendText(EncodeHeaderText(text, environment_.CodePage(), kLimit));
    } else {
      connection_.SendText(text);
    }
  }

  void SendContentType() {
    connection_.SendText("Mime-Version: 1.0\r\n");
    connection_.SendText(ContentTypeLine(environment_.CodePage()));
  }

  // False when it could not be sent, and when there is no memory for a converted copy.
  bool SendBody() {
    if (environment_.CodePage() != kJapaneseCodePage) return connection_.SendText(message_.message);
    try {
      return connection_.SendText(ShiftJisToJis(message_.message, message_.message.size()));
    } catch (const std::bad_alloc&) {
      return false;
    }
  }

  MailEnvironment& environment_;
  SmtpDetails details_;
  AlertLog log_;
  CarryOver carry_over_;
  SmtpConnection connection_;
  const MailMessage& message_;
  std::string_view to_;
  std::string_view from_;
  int result_ = kFailed;
};

}  // namespace

int SmtpSendMessage(const SmtpSystem& system, NotifierHost* host, const MailMessage& message,
                    std::uint32_t timeout) {
  const AlertLog log(host);
  const SmtpDetails details{
      .local_mail_host_name = LocalMailHostName(system.state, system.machine_name),
      .zone_text = std::string(OneLine(ZoneText(system.environment)))};

  log.Inserts(text_id::kSendingMail, {message.gateway, message.to});
  const auto address = system.network.ParseAddress(std::string(message.gateway));
  if (!address) {
    log.Line(text_id::kGatewayIsNoAddress);
    return kFailed;
  }
  const auto socket = system.network.CreateSocket();
  if (!socket) {
    log.Line(text_id::kSocketFailed);
    return kFailed;
  }
  if (!socket->Connect(*address, kSmtpPort)) {
    log.Line(text_id::kConnectFailed);
    return kFailed;
  }
  return SmtpSession(system, log, *socket, message, details, timeout).Run();
}

}  // namespace brantel
