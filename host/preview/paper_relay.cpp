#include "host/preview/paper_relay.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "host/text/letter_case.h"

namespace brantel::host {
namespace {

constexpr std::string_view kEndOfMessage = "\r\n.\r\n";
constexpr std::string_view kEndOfHeaders = "\r\n\r\n";

struct RelayCommand {
  std::string_view verb;
  std::string_view what;
  std::string_view reply;
  bool begins_message = false;
};

constexpr std::array kCommands = {
    RelayCommand{"HELO", "greeting", "250 paper\r\n"},
    RelayCommand{"MAIL", "sender", "250 OK\r\n"},
    RelayCommand{"RCPT", "recipient", "250 OK\r\n"},
    RelayCommand{"DATA", "announcement of the message", "354 go on\r\n", true},
    RelayCommand{"QUIT", "farewell", "221 bye\r\n"},
};
constexpr RelayCommand kUnknownCommand = {"", "line that is no command", "500 what?\r\n"};

const RelayCommand& CommandOf(std::string_view line) {
  const auto* const found = std::ranges::find_if(kCommands, [&](const RelayCommand& command) {
    return EqualIgnoringCase(line.substr(0, command.verb.size()), command.verb);
  });
  return found == kCommands.end() ? kUnknownCommand : *found;
}

// Where the full stop is that ends the message, with the line ends around it.
struct Ending {
  std::size_t begin;
  std::size_t end;
};
std::optional<Ending> FindEnding(std::string_view text) {
  // The announcement's own line end may be the one before the full stop.
  constexpr std::size_t kLineEnd = 2;
  const std::string_view alone = kEndOfMessage.substr(kLineEnd);
  if (text.starts_with(alone)) return Ending{0, alone.size()};
  const std::size_t begin = text.find(kEndOfMessage);
  if (begin == std::string_view::npos) return std::nullopt;
  return Ending{begin, begin + kEndOfMessage.size()};
}

std::string DottedForm(Ipv4Address address) {
  std::string text;
  for (const std::byte byte : std::as_bytes(std::span(&address.network_order, 1)))
    text += (text.empty() ? "" : ".") + std::to_string(std::to_integer<unsigned>(byte));
  return text;
}

}  // namespace

class PaperRelay::Connection final : public MailSocket {
 public:
  explicit Connection(PaperRelay& relay) : relay_(relay) {}
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  // What the relay would still wait for the rest of has gone out all the same.
  ~Connection() override { Tell("unfinished", unread_); }

  bool Connect(Ipv4Address address, std::uint16_t port) override {
    relay_.parts_.push_back(
        {.what = "connection",
         .words = "to " + DottedForm(address) + ", port " + std::to_string(port)});
    Reply("220 paper\r\n");
    return true;
  }

  Outcome<std::size_t> Send(std::string_view bytes) override {
    unread_ += bytes;
    while (is_in_message_ ? TakeMessage() : TakeCommand()) {
    }
    return bytes.size();
  }

  void PumpMessages() override {}

  Outcome<Readiness> WaitForData(std::uint32_t milliseconds) override {
    relay_.timeout_ = milliseconds;
    if (!replies_.empty()) return Readiness::kReady;
    relay_.clock_.Count(milliseconds);
    return Readiness::kTimedOut;
  }

  Outcome<std::size_t> Receive(std::span<char> buffer) override {
    const std::size_t count = replies_.copy(buffer.data(), buffer.size());
    replies_.erase(0, count);
    return count;
  }

 private:
  void Reply(std::string_view line) {
    replies_ += line;
    ++relay_.replies_;
  }

  void Tell(std::string_view what, std::string_view bytes) {
    if (bytes.empty()) return;
    relay_.parts_.push_back({.what = std::string(what), .bytes = std::string(bytes)});
  }

  std::string Take(std::size_t count) {
    std::string taken = unread_.substr(0, count);
    unread_.erase(0, count);
    return taken;
  }

  // False when there is no whole line.
  bool TakeCommand() {
    const std::size_t line_feed = unread_.find('\n');
    if (line_feed == std::string::npos) return false;
    const std::string line = Take(line_feed + 1);
    const RelayCommand& command = CommandOf(line);
    Tell(command.what, line);
    if (&command == &kUnknownCommand) {
      relay_.parts_.back().words =
          "for the relay the message has ended above, at a full stop alone in its line";
    }
    Reply(command.reply);
    is_in_message_ = command.begins_message;
    return true;
  }

  // False when it has not ended.
  bool TakeMessage() {
    const auto ending = FindEnding(unread_);
    if (!ending) return false;
    const std::string message = Take(ending->begin);
    const std::size_t blank_line = message.find(kEndOfHeaders);
    const std::size_t headers =
        blank_line == std::string::npos ? message.size() : blank_line + kEndOfHeaders.size();
    Tell("headers", std::string_view(message).substr(0, headers));
    Tell("body", std::string_view(message).substr(headers));
    Tell("end of the message", Take(ending->end - ending->begin));
    Reply("250 taken\r\n");
    is_in_message_ = false;
    return true;
  }

  PaperRelay& relay_;
  std::string unread_;
  std::string replies_;
  bool is_in_message_ = false;
};

std::unique_ptr<MailSocket> PaperRelay::CreateSocket() {
  return std::make_unique<Connection>(*this);
}

}  // namespace brantel::host
