#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "port/serial_device.h"
#include "system/clock.h"

namespace brantel {

class ClockWithoutTime final : public Clock {
 public:
  void Wait(std::uint32_t /*milliseconds*/) override {}
};

// Serial ports with a modem on each that sends a fuzzer's bytes: before each read the input has the
// number of bytes, and 0xFF before a read or write that fails.
class FuzzedPorts final : public SerialPorts {
 public:
  // What was written, or what a read gave.
  struct Transfer {
    bool is_written;
    std::string bytes;
  };

  // A modem that works says OK and CONNECT of its own, and the input has what comes behind that.
  FuzzedPorts(FuzzInput& input, bool modem_works) : input_(input), modem_works_(modem_works) {}

  Outcome<std::unique_ptr<SerialDevice>> Open(std::uint32_t /*port_number*/) override {
    ++opened_;
    return std::make_unique<Line>(*this);
  }

  // What went over the lines, in order.
  [[nodiscard]] const std::vector<Transfer>& transfers() const { return transfers_; }
  [[nodiscard]] int opened() const { return opened_; }
  [[nodiscard]] int closed() const { return closed_; }

 private:
  class Line final : public SerialDevice {
   public:
    explicit Line(FuzzedPorts& ports) : ports_(ports) {}
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;
    ~Line() override { ++ports_.closed_; }

    Outcome<> GetControl() override { return kDone; }
    Outcome<> SetControl(std::uint32_t, const Framing&) override { return kDone; }
    Outcome<SerialTimeouts> GetTimeouts() override { return SerialTimeouts{}; }
    Outcome<> SetTimeouts(const SerialTimeouts&) override {
      has_timeouts_ = true;
      return kDone;
    }
    void Flush() override {}

    Outcome<> Write(std::string_view bytes) override {
      ports_.transfers_.push_back({true, std::string(bytes)});
      answer_ = ports_.modem_works_ ? ModemsAnswer(bytes) : "";
      if (Fails()) return kBroken;
      return kDone;
    }

    Outcome<std::size_t> Read(std::span<char> buffer) override {
      // Without time-outs a read may wait for ever.
      Require(has_timeouts_);
      if (buffer.empty()) return 0U;
      std::string_view answer = std::exchange(answer_, "");
      if (answer.empty()) {
        if (Fails()) return kBroken;
        answer = ports_.input_.Take(std::min<std::size_t>(buffer.size(), ports_.input_.Byte()));
      }
      std::ranges::copy(answer, buffer.begin());
      ports_.transfers_.push_back({false, std::string(answer)});
      return answer.size();
    }

   private:
    static constexpr Failure kBroken{1117};

    // By a byte of its own.
    bool Fails() { return ports_.input_.NextIs(0xFF); }

    static std::string_view ModemsAnswer(std::string_view command) {
      if (command.starts_with("ATDT")) return "CONNECT";
      return command.starts_with("AT") ? "OK" : "";
    }

    FuzzedPorts& ports_;
    bool has_timeouts_ = false;
    std::string_view answer_;
  };

  FuzzInput& input_;
  const bool modem_works_;
  int opened_ = 0;
  int closed_ = 0;
  std::vector<Transfer> transfers_;
};

}  // namespace brantel
