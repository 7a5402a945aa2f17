// Whole pages by each protocol, through a modem and to a centre that send arbitrary bytes: each
// session ends, frees the port, and sends nothing but what its protocol has, no more often than it
// may.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "fuzz/fuzz_input.h"
#include "pager/ntt/ntt_session.h"
#include "pager/pager_port.h"
#include "pager/tap/tap_session.h"
#include "pager/ucp/ucp_session.h"
#include "port/modem_port.h"
#include "system/clock.h"

namespace brantel {
namespace {

class Host final : public NotifierHost {
 public:
  Result ExpandMessage(std::string&, EmptyText) override { return kOk; }
  void LogMessage(std::string_view text) override { Require(text.size() < 1024); }
  void LogMessage(std::u16string_view) override {}
  Result GetAlertTrigger(std::uint32_t&) override { return kFail; }
};

class NoTime final : public Clock {
 public:
  void Wait(std::uint32_t milliseconds) override { Require(milliseconds != 0); }
};

// How often what begins in some way may be written.
struct WriteRule {
  std::string_view start;
  int left;
};

constexpr int kWithoutLimit = 1 << 30;

class Line final : public SerialDevice {
 public:
  // A modem that works says OK and CONNECT before the input's bytes begin.
  Line(FuzzInput& input, bool modem_works) : input_(input), modem_works_(modem_works) {}

  Outcome<> GetControl() override { return kDone; }
  Outcome<> SetControl(std::uint32_t, const Framing&) override { return kDone; }
  Outcome<SerialTimeouts> GetTimeouts() override { return SerialTimeouts{}; }
  Outcome<> SetTimeouts(const SerialTimeouts&) override {
    has_timeouts_ = true;
    return kDone;
  }
  void Flush() override {}

  Outcome<> Write(std::string_view bytes) override {
    auto* const rule = std::ranges::find_if(
        rules_, [bytes](const WriteRule& row) { return bytes.starts_with(row.start); });
    Require(rule != rules_.end() && rule->left-- > 0);
    answer_ = modem_works_ ? ModemsAnswer(bytes) : "";
    if (Fails()) return kBroken;
    return kDone;
  }

  Outcome<std::size_t> Read(std::span<char> buffer) override {
    Require(has_timeouts_);
    std::string_view answer = std::exchange(answer_, "");
    if (answer.empty()) {
      if (Fails()) return kBroken;
      answer = input_.Take(std::min<std::size_t>(buffer.size(), input_.Byte()));
    }
    std::ranges::copy(answer, buffer.begin());
    return answer.size();
  }

 private:
  static constexpr Failure kBroken{1117};

  // By a byte of its own.
  bool Fails() { return input_.NextIs(0xFF); }

  static std::string_view ModemsAnswer(std::string_view command) {
    if (command.starts_with("ATDT")) return "CONNECT";
    return command.starts_with("AT") ? "OK" : "";
  }

  FuzzInput& input_;
  const bool modem_works_;
  bool has_timeouts_ = false;
  std::string_view answer_;
  std::array<WriteRule, 10> rules_ = {{
      {"ATH0\r", 1},
      {"ATDT", kWithoutLimit},
      {"ATQ0V1\r", 2},
      {"AT", 2},
      {"+++", 1},
      {"\r", 5},
      {"\x1BPG1", 2},
      {"\x02", 3},
      {"\x04\r", 1},
      {"8000C00000********,10000,", 1},
  }};
};

class Ports final : public SerialPorts {
 public:
  Ports(FuzzInput& input, bool modem_works) : input_(input), modem_works_(modem_works) {}

  Outcome<std::unique_ptr<SerialDevice>> Open(std::uint32_t) override {
    return std::make_unique<Line>(input_, modem_works_);
  }

 private:
  FuzzInput& input_;
  const bool modem_works_;
};

void Send(std::uint8_t protocol, ModemPort& port, const PagerCall& call) {
  UcpTransactionCounter counter = protocol;
  switch (protocol % 4) {
    case 0:
      SendByTap(port, call, kTap);
      break;
    case 1:
      SendByTap(port, call, kSmsTap);
      break;
    case 2:
      SendByNtt(port, call);
      break;
    default:
      SendByUcp(port, call, counter);
  }
}

}  // namespace
}  // namespace brantel

// A byte for the protocol and one for the modem, the page's parts, and what comes over the line:
// before each read its length, and 0xFF before a read or write that fails.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const std::uint8_t protocol = input.Byte();
  const bool modem_works = input.Byte() % 2 == 1;
  const PagerCall call = {.modem_string = "ATE0",
                          .pager_number = "5550200",
                          .terminal_password = input.Field(),
                          .pager_id = input.Field(),
                          .message = input.Field()};
  PortBusyFlag busy = 0;
  Ports ports(input, modem_works);
  NoTime clock;
  Host host;
  {
    ModemPort port(kPagerPolicy, busy, ports, clock, host);
    Require(port.OpenPort(1, 300, kPagerFraming7E1));
    Send(protocol, port, call);
  }
  Require(busy == 0);
  return 0;
}
