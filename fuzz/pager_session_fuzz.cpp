// Whole pages by each protocol, through a modem and to a centre that send arbitrary bytes: each
// session ends, frees the port, and sends nothing but what its protocol has, no more often than it
// may. None succeeds unless the centre has said behind the page that it has taken it.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/fuzzed_modem.h"
#include "pager/ntt/ntt_session.h"
#include "pager/pager_port.h"
#include "pager/tap/tap_session.h"
#include "pager/ucp/ucp_session.h"
#include "port/modem_port.h"
#include "text/text_end.h"

namespace brantel {
namespace {

class Host final : public NotifierHost {
 public:
  Result ExpandMessage(std::string&, EmptyText) override { return kOk; }
  void LogMessage(std::string_view text) override { Require(text.size() < 1024); }
  void LogMessage(std::u16string_view) override {}
  Result GetAlertTrigger(std::uint32_t&) override { return kFail; }
};

// How often what begins in some way may be written.
struct WriteRule {
  std::string_view start;
  int most;
};

constexpr int kWithoutLimit = 1 << 30;

// What is written is of the first kind whose start it has.
constexpr std::array kWriteRules = {
    WriteRule{"ATH0\r", 1},   WriteRule{"ATDT", kWithoutLimit},
    WriteRule{"ATQ0V1\r", 2}, WriteRule{"AT", 2},
    WriteRule{"+++", 1},      WriteRule{"\r", 5},
    WriteRule{"\x1BPG1", 2},  WriteRule{"\x02", 3},
    WriteRule{"\x04\r", 1},   WriteRule{"8000C00000********,10000,", 1}};

using Transfers = std::vector<FuzzedPorts::Transfer>;

void CheckWrites(const Transfers& transfers) {
  std::array<int, kWriteRules.size()> counts{};
  for (const auto& transfer : transfers) {
    if (!transfer.is_written) continue;
    const auto* const rule = std::ranges::find_if(
        kWriteRules, [&](const WriteRule& row) { return transfer.bytes.starts_with(row.start); });
    Require(rule != kWriteRules.end());
    const auto place = static_cast<std::size_t>(rule - kWriteRules.begin());
    Require(++counts.at(place) <= rule->most);
  }
}

// By what a protocol's pages begin, and whether a centre's answer says that it has taken one.
struct Protocol {
  std::string_view page_start;
  bool (*takes)(std::string_view answer);
  bool (*send)(ModemPort& port, const PagerCall& call);
};

bool HoldsAny(std::string_view text, std::string_view characters) {
  return text.find_first_of(characters) != std::string_view::npos;
}

constexpr std::array kProtocols = {
    Protocol{"\x02", [](std::string_view answer) { return HoldsAny(answer, "\x06\x04"); },
             [](ModemPort& port, const PagerCall& call) { return SendByTap(port, call, kTap); }},
    Protocol{"\x02", [](std::string_view answer) { return HoldsAny(answer, "\x06\x04\x1E"); },
             [](ModemPort& port, const PagerCall& call) { return SendByTap(port, call, kSmsTap); }},
    Protocol{"8000C", [](std::string_view answer) { return answer.starts_with("28"); }, SendByNtt},
    Protocol{"\x02",
             [](std::string_view answer) {
               return answer.find("/A/") != std::string_view::npos &&
                      answer.find("/N/") == std::string_view::npos;
             },
             [](ModemPort& port, const PagerCall& call) {
               UcpTransactionCounter counter = 3;
               return SendByUcp(port, call, counter);
             }}};

// Whether the page was written, and what came back says that it was taken.
bool WasTaken(const Transfers& transfers, const Protocol& protocol) {
  bool is_page_sent = false;
  for (const auto& transfer : transfers) {
    if (transfer.is_written) {
      is_page_sent = is_page_sent || transfer.bytes.starts_with(protocol.page_start);
    } else if (is_page_sent && protocol.takes(UpToNul(transfer.bytes))) {
      return true;
    }
  }
  return false;
}

}  // namespace
}  // namespace brantel

// A byte for the protocol and one for the modem, the page's parts, and what comes over the line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const Protocol& protocol = kProtocols.at(input.Byte() % kProtocols.size());
  const bool modem_works = input.Byte() % 2 == 1;
  const PagerCall call = {.modem_string = "ATE0",
                          .pager_number = "5550200",
                          .terminal_password = input.Field(),
                          .pager_id = input.Field(),
                          .message = input.Field()};
  PortBusyFlag busy = 0;
  FuzzedPorts ports(input, modem_works);
  ClockWithoutTime clock;
  Host host;
  {
    ModemPort port(kPagerPolicy, busy, ports, clock, host);
    Require(port.OpenPort(1, 300, kPagerFraming7E1));
    if (protocol.send(port, call)) Require(WasTaken(ports.transfers(), protocol));
  }
  CheckWrites(ports.transfers());
  Require(busy == 0 && ports.closed() == 1);
  return 0;
}
