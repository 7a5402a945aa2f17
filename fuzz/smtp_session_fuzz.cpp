// Whole mail sessions against a relay that sends arbitrary bytes, with arbitrary texts to send:
// each session ends, and what it sends before the body holds no line end but those at the ends of
// commands and headers, of which the encoding of a header can drop some. None succeeds unless the
// relay has agreed to each step.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "smtp_mail/network/mail_socket.h"
#include "smtp_mail/session/smtp_session.h"
#include "text/leading_number.h"

namespace brantel {
namespace {

// What relay and log have shown in all sessions, and how the last one went.
class SessionNotes final : public NotifierHost {
 public:
  // Lines, and pieces as they came, that begin with these: a silence ends a line, too.
  int agreements = 0;  // "2"
  int go_aheads = 0;   // "3"
  bool is_body_ended = false;
  bool has_unread_recipient = false;

  void BeginSession() { is_body_ended = has_unread_recipient = is_recipient_sent_ = false; }

  void NoteReceived(std::string_view bytes) {
    char before = '\n';
    for (const char c : bytes) {
      if (before == '\n' && c == '2') ++agreements;
      if (before == '\n' && c == '3') ++go_aheads;
      before = c;
    }
  }

  // What is sent stands in the log already.
  void NoteSent(std::string_view bytes) {
    if (is_recipient_sent_ && !IsWhole(reply_before_)) has_unread_recipient = true;
    is_recipient_sent_ = bytes.starts_with("RCPT To:");
    if (bytes == "\r\n.\r\n") is_body_ended = true;
    reply_.clear();
  }

  Result ExpandMessage(std::string&, EmptyText) override { return kFail; }
  void LogMessage(std::string_view text) override {
    reply_before_ = reply_;
    if (!text.ends_with('\n')) reply_ = text;
  }
  void LogMessage(std::u16string_view) override {}
  Result GetAlertTrigger(std::uint32_t&) override { return kFail; }

 private:
  // Whether the last line of a reply has a number and no other line is to come.
  static bool IsWhole(std::string_view line) {
    return LeadingNumber(line) != 0 && (line.size() < 4 || line[3] != '-');
  }

  bool is_recipient_sent_ = false;
  std::string reply_;         // the last line in the log, if it is one of a reply
  std::string reply_before_;  // the same before the last text that was logged
};

class Relay final : public MailSocket {
 public:
  Relay(FuzzInput& input, std::size_t body_size, SessionNotes& notes)
      : input_(input), body_size_(body_size), notes_(notes) {}

  bool Connect(Ipv4Address, std::uint16_t) override { return true; }

  Outcome<std::size_t> Send(std::string_view bytes) override {
    if (!IsBody()) {
      const std::string end = LineEndOf(bytes);
      Require(end == "\r\n.\r\n" ||
              std::string_view("\r\n\r\n").find(end) != std::string_view::npos);
    }
    NoteProgress(bytes);
    notes_.NoteSent(bytes);
    return bytes.size();
  }

  void PumpMessages() override {}

  Outcome<Readiness> WaitForData(std::uint32_t) override {
    constexpr std::uint8_t kSilence = 0xFF;
    return !input_.AtEnd() && input_.Byte() == kSilence ? Readiness::kTimedOut : Readiness::kReady;
  }

  Outcome<std::size_t> Receive(std::span<char> buffer) override {
    const std::string_view bytes = input_.Take(std::min<std::size_t>(buffer.size(), input_.Byte()));
    notes_.NoteReceived(bytes);
    std::ranges::copy(bytes, buffer.begin());
    return bytes.size();
  }

 private:
  // What comes from the first line end on, but for what closes kanji: half a character at the end
  // of a text takes the first byte of the line end for its other half, and leaves them open.
  static std::string LineEndOf(std::string_view bytes) {
    constexpr std::string_view kCloseKanji = "\x1B(B";
    std::string end(bytes.substr(std::min(bytes.find_first_of("\r\n"), bytes.size())));
    const std::size_t close = end.find(kCloseKanji);
    if (close != std::string::npos) end.erase(close, kCloseKanji.size());
    return end;
  }

  // Behind this header, which no text can feign for want of a line end, come the type and the
  // subject, and then the body, if there is any to be sent.
  void NoteProgress(std::string_view bytes) {
    if (bytes == "Mime-Version: 1.0\r\n")
      sends_before_body_ = 2;
    else if (sends_before_body_ >= 0)
      --sends_before_body_;
  }
  [[nodiscard]] bool IsBody() const { return sends_before_body_ == 0 && body_size_ != 0; }

  FuzzInput& input_;
  std::size_t body_size_;
  SessionNotes& notes_;
  int sends_before_body_ = -1;
};

class Network final : public MailNetwork {
 public:
  Network(FuzzInput& input, std::size_t body_size, SessionNotes& notes)
      : input_(input), body_size_(body_size), notes_(notes) {}

  [[nodiscard]] std::optional<Ipv4Address> ParseAddress(const std::string&) const override {
    return Ipv4Address{};
  }
  std::unique_ptr<MailSocket> CreateSocket() override {
    return std::make_unique<Relay>(input_, body_size_, notes_);
  }

 private:
  FuzzInput& input_;
  std::size_t body_size_;
  SessionNotes& notes_;
};

class Machine final : public MailEnvironment, public MachineName {
 public:
  explicit Machine(FuzzInput& input)
      : code_page_(kCodePages.at(input.Byte() % kCodePages.size())),
        host_name_(input.Field()),
        zone_(input.Field()) {}

  std::optional<TimeZone> QueryTimeZone() override { return std::nullopt; }
  std::optional<std::string> TimeZoneVariable() override { return zone_; }
  LocalTime Now() override { return {}; }
  unsigned CodePage() override { return code_page_; }
  std::optional<std::string> TcpipParameter(const std::string&, std::size_t) override {
    return host_name_;
  }
  std::optional<std::string> SocketsHostName() override { return std::nullopt; }

 private:
  static constexpr std::array kCodePages = {1252U, 932U, 949U, 437U};

  unsigned code_page_;
  std::string host_name_;
  std::string zone_;
};

// Each success takes a greeting, the agreement to HELO, sender, recipient and message, and the word
// to go ahead with that.
void CheckSuccess(const SessionNotes& notes, int successes) {
  Require(notes.is_body_ended);
  Require(notes.agreements >= 5 * successes && notes.go_aheads >= successes);
}

}  // namespace
}  // namespace brantel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  Machine machine(input);
  const MailMessage message{.to = input.Field(),
                            .from = input.Field(),
                            .subject = input.Field(),
                            .gateway = "192.0.2.25",
                            .message = input.Field()};
  SmtpState state;
  SessionNotes notes;
  int successes = 0;
  // The second one meets what the first one left behind.
  for (int session = 0; session < 2; ++session) {
    // On a Japanese system a short body is converted to nothing.
    const std::size_t body_size =
        machine.CodePage() == 932 && message.message.size() < 4 ? 0 : message.message.size();
    notes.BeginSession();
    Network network(input, body_size, notes);
    const int result = SmtpSendMessage(
        {.network = network, .environment = machine, .machine_name = machine, .state = state},
        &notes, message, 100);
    // A recipient whose answer could not be read looks like a success, too.
    if (result == 0 && !notes.has_unread_recipient) CheckSuccess(notes, ++successes);
  }
  return 0;
}
