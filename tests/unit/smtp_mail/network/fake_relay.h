#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "smtp_mail/network/mail_socket.h"
#include "tests/unit/allocation_counter.h"

namespace brantel {

// A relay at 192.0.2.25 that takes commands line by line, in its own way of telling them from the
// message, and accepts everything for which the test has no other reply.
class FakeRelay final : public MailNetwork {
 public:
  // Replies by the first word of a command; "." is that to the message.
  std::map<std::string, std::string, std::less<>> replies;

  // What came, over all connections.
  std::vector<std::string> commands;
  std::string content;  // of the message, up to the line with the dot
  std::uint32_t timeout = 0;

  [[nodiscard]] std::optional<Ipv4Address> ParseAddress(const std::string& text) const override {
    if (text != "192.0.2.25") return std::nullopt;
    return Ipv4Address{0x190200C0};
  }

  std::unique_ptr<MailSocket> CreateSocket() override { return std::make_unique<Socket>(*this); }

 private:
  class Socket final : public MailSocket {
   public:
    explicit Socket(FakeRelay& relay) : relay_(relay) {}

    bool Connect(Ipv4Address, std::uint16_t) override {
      const MemoryOfOthers memory;
      Reply("220 ready");
      return true;
    }

    Outcome<std::size_t> Send(std::string_view bytes) override {
      const MemoryOfOthers memory;
      received_ += bytes;
      while (is_in_message_ ? TakeMessage() : TakeCommand()) {
      }
      return bytes.size();
    }

    void PumpMessages() override {}

    // Other threads run meanwhile, as they do where a session really waits.
    Outcome<Readiness> WaitForData(std::uint32_t milliseconds) override {
      std::this_thread::yield();
      relay_.timeout = milliseconds;
      return unread_.empty() ? Readiness::kTimedOut : Readiness::kReady;
    }

    Outcome<std::size_t> Receive(std::span<char> buffer) override {
      const std::size_t count = std::min(buffer.size(), unread_.size());
      std::copy_n(unread_.begin(), count, buffer.begin());
      unread_.erase(0, count);
      return count;
    }

   private:
    void Reply(const std::string& reply) { unread_ += reply + "\r\n"; }

    void ReplyTo(const std::string& word, const std::string& otherwise) {
      const auto reply = relay_.replies.find(word);
      Reply(reply == relay_.replies.end() ? otherwise : reply->second);
    }

    // Lenient, as some relays are: a line feed alone ends a command.
    bool TakeCommand() {
      const std::size_t end = received_.find('\n');
      if (end == std::string::npos) return false;
      std::string command = received_.substr(0, end);
      received_.erase(0, end + 1);
      if (command.ends_with('\r')) command.pop_back();
      relay_.commands.push_back(command);
      const std::string word = command.substr(0, command.find(' '));
      is_in_message_ = word == "DATA" && !relay_.replies.contains(word);
      ReplyTo(word, is_in_message_ ? "354 go ahead" : "250 ok");
      return true;
    }

    bool TakeMessage() {
      constexpr std::string_view kEnd = "\r\n.\r\n";
      const std::size_t end = received_.find(kEnd);
      if (end == std::string::npos) return false;
      relay_.content += received_.substr(0, end);
      received_.erase(0, end + kEnd.size());
      is_in_message_ = false;
      ReplyTo(".", "250 queued");
      return true;
    }

    FakeRelay& relay_;
    std::string received_;
    std::string unread_;
    bool is_in_message_ = false;
  };
};

}  // namespace brantel
