#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>

#include "smtp_mail/message/mail_environment.h"
#include "smtp_mail/network/mail_socket.h"
#include "smtp_mail/network/name_resolver.h"
#include "tests/torture/far_end.h"
#include "tests/torture/faults.h"
#include "tests/torture/strained_clock.h"

namespace brantel {

// A network with a relay at 192.0.2.25. It hears commands line by line; a message, up to the line
// with its dot, is one "." to it.
class StrainedMailNetwork final : public MailNetwork {
 public:
  StrainedMailNetwork(Faults& faults, FarEnd& far_end, StrainedClock& clock)
      : faults_(faults), far_end_(far_end), clock_(clock) {}

  int open_sockets = 0;

  [[nodiscard]] std::optional<Ipv4Address> ParseAddress(const std::string& text) const override {
    if (text != "192.0.2.25") return std::nullopt;
    return Ipv4Address{0x190200C0};
  }

  std::unique_ptr<MailSocket> CreateSocket() override {
    if (faults_.Strike()) return nullptr;
    return std::make_unique<Socket>(*this);
  }

 private:
  class Socket final : public MailSocket {
   public:
    explicit Socket(StrainedMailNetwork& network) : network_(network) { ++network_.open_sockets; }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() override {
      const MemoryOfOthers others;
      --network_.open_sockets;
      heard_ = {};
    }

    bool Connect(Ipv4Address, std::uint16_t) override {
      if (Fault("connect")) return false;
      far_end().Begin();
      far_end().Hear(kConnection);
      return true;
    }

    // A send that fails for good is no one that can be tried again.
    Outcome<std::size_t> Send(std::string_view bytes) override {
      if (far_end().Has(Ending::kBreaksDown)) return kReset;
      constexpr std::array<std::uint32_t, 4> kErrors = {kReset.reason, socket_error::kWouldBlock,
                                                        10055, 0};
      if (!network_.faults_.Strike("send")) return Take(bytes);
      const std::uint32_t error = network_.faults_.Choose(kErrors);
      if (error == 0) return Take(bytes.substr(0, 1));
      const bool is_over = error != socket_error::kWouldBlock || network_.faults_.last_for_good();
      return is_over ? kReset : Failure{error};
    }

    void PumpMessages() override { network_.clock_.Pass(1); }

    Outcome<Readiness> WaitForData(std::uint32_t milliseconds) override {
      if (const auto fault = Fault("receive")) return *fault;
      const bool has_ended = far_end().Has(Ending::kHangsUp) || far_end().Has(Ending::kBreaksDown);
      if (!far_end().unread.empty() || has_ended) return Readiness::kReady;
      network_.clock_.Pass(milliseconds);
      return Readiness::kTimedOut;
    }

    Outcome<std::size_t> Receive(std::span<char> buffer) override {
      if (const auto fault = Fault("receive")) return *fault;
      std::string& unread = far_end().unread;
      if (unread.empty() && far_end().Has(Ending::kBreaksDown)) return kReset;
      const std::size_t count = std::min(buffer.size(), unread.size());
      std::copy_n(unread.begin(), count, buffer.begin());
      unread.erase(0, count);
      return count;
    }

   private:
    static constexpr std::string_view kConnection = "connection";
    static constexpr Failure kReset{10054};

    [[nodiscard]] FarEnd& far_end() const { return network_.far_end_; }

    std::optional<Failure> Fault(std::string_view call) {
      // Refused, timed out, reset, no buffers.
      constexpr std::array<std::uint32_t, 4> kErrors = {10061, 10060, kReset.reason, 10055};
      if (!network_.faults_.Strike(call)) return std::nullopt;
      return Failure{network_.faults_.Choose(kErrors)};
    }

    std::size_t Take(std::string_view bytes) {
      const MemoryOfOthers others;
      heard_ += bytes;
      while (is_message_ ? HearMessage() : HearCommand()) {
      }
      return bytes.size();
    }

    bool HearCommand() {
      const std::size_t end = heard_.find("\r\n");
      if (end == std::string::npos) return false;
      const std::string command = heard_.substr(0, end);
      heard_.erase(0, end + 2);
      const std::size_t said = far_end().unread.size();
      far_end().Hear(command);
      is_message_ = command == "DATA" && far_end().unread.substr(said).starts_with('3');
      return true;
    }

    bool HearMessage() {
      constexpr std::string_view kEnd = "\r\n.\r\n";
      const std::size_t end = heard_.find(kEnd);
      if (end == std::string::npos) return false;
      heard_.erase(0, end + kEnd.size());
      is_message_ = false;
      far_end().Hear(".");
      return true;
    }

    StrainedMailNetwork& network_;
    std::string heard_;
    bool is_message_ = false;
  };

  Faults& faults_;
  FarEnd& far_end_;
  StrainedClock& clock_;
};

class StrainedMailEnvironment final : public MailEnvironment {
 public:
  explicit StrainedMailEnvironment(Faults& faults) : faults_(faults) {}

  unsigned code_page = 1252;

  std::optional<TimeZone> QueryTimeZone() override {
    if (faults_.Strike()) return std::nullopt;
    return TimeZone{};
  }
  std::optional<std::string> TimeZoneVariable() override {
    if (faults_.Strike()) return std::nullopt;
    return "a time zone with a name that takes memory";
  }
  LocalTime Now() override {
    return {.year = 2004, .month = 3, .day_of_week = 5, .day = 5, .hour = 7, .minute = 8};
  }
  unsigned CodePage() override { return code_page; }

 private:
  Faults& faults_;
};

class StrainedNameResolver final : public NameResolver {
 public:
  explicit StrainedNameResolver(Faults& faults) : faults_(faults) {}

  std::optional<Ipv4Address> Resolve(const std::string&) override {
    if (faults_.Strike()) return std::nullopt;
    return Ipv4Address{0x190200C0};
  }

 private:
  Faults& faults_;
};

}  // namespace brantel
