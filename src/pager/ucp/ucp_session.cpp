#include "pager/ucp/ucp_session.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "pager/ucp/ucp_error.h"
#include "pager/ucp/ucp_frame.h"
#include "port/modem_dialling.h"
#include "port/modem_handshake.h"
#include "port/serial_device.h"
#include "text/format_text.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr SerialTimeouts kUcpTimeouts = {.read_interval = 1000,
                                         .read_total_multiplier = 100,
                                         .read_total_constant = 10000,
                                         .write_total_multiplier = 20,
                                         .write_total_constant = 10000};

constexpr std::string_view kAttention = "ATQ0V1\r";

constexpr std::uint32_t kPauseBeforeSecondInitialisation = 1000;
constexpr std::uint32_t kPauseBeforeRead = 1000;
constexpr std::uint32_t kPauseWhenBusy = 5000;
constexpr int kMostReadsForConnection = 15;
constexpr int kMostReadsForResult = 30;
constexpr int kMostTries = 3;

// How a dial command can fail, in the order in which its response is searched.
struct DialFailure {
  std::string_view words;
  unsigned text_id;
};
constexpr std::array<DialFailure, 3> kDialFailures = {{
    {"NO CARRIER", text_id::kNoCarrier},
    {"NO DIAL", text_id::kNoDialtone},
    {"NO ANSWER", text_id::kNoAnswer},
}};

class UcpSession {
 public:
  UcpSession(ModemPort& port, const PagerCall& call, UcpTransactionCounter& counter)
      : port_(port), call_(call), counter_(counter) {}

  bool Run() {
    return HasArguments(port_, call_) && ChangeTimeouts() && FindModem() && BuildFrame() &&
           InitialiseLine() && Dial() && SendFrame() && EvaluateResult();
  }

 private:
  bool Send(std::string_view command) { return port_.SendCommand(command); }
  [[nodiscard]] bool Answers(std::string_view words) const { return port_.Answers(words); }

  bool ChangeTimeouts() {
    const auto timeouts = port_.GetTimeouts();
    if (!timeouts) return false;
    saved_timeouts_ = *timeouts;
    return port_.SetTimeouts(kUcpTimeouts);
  }

  void RestoreTimeouts() { port_.SetTimeouts(saved_timeouts_); }

  // The modem has two tries to say OK to a command. What it does not say is told by `failure_text`.
  bool ObtainOk(std::string_view command, unsigned failure_text,
                std::optional<std::uint32_t> pause) {
    tries_ = 1;
    if (!Send(command)) return false;
    if (Answers("OK")) return true;
    port_.log().Line(failure_text);
    port_.log().Line(text_id::kTryingAgainForOk);
    if (pause) port_.Wait(*pause);
    ++tries_;
    if (!Send(command)) return false;
    if (Answers("OK")) return true;
    port_.log().Line(failure_text);
    RestoreTimeouts();
    return false;
  }

  // Deliberately not with the configured command.
  bool FindModem() {
    port_.log().Line(text_id::kLookingForOk);
    return ObtainOk(kAttention, text_id::kNoOk, std::nullopt);
  }

  bool BuildFrame() try {
    const auto body = BuildUcpBody(call_.pager_id, call_.message);
    if (body) frame_ = BuildUcpFrame(counter_++ % 100, *body);
    if (!body) port_.log().Line(text_id::kNoMemoryForData);
    return body.has_value();
  } catch (const std::bad_alloc&) {
    port_.log().Line(text_id::kNoMemoryForData);
    return false;
  }

  bool InitialiseLine() {
    return ObtainOk(InitialisationCommand(port_.policy(), call_.modem_string),
                    text_id::kLineNotInitialized, kPauseBeforeSecondInitialisation);
  }

  // Deliberately the tries of the initialisation count as well.
  bool Dial() {
    bool dials_again = true;
    while (dials_again) {
      if (!Send(DialCommand(call_.pager_number)) || !WaitForResponse()) return false;
      dials_again = WaitIfBusy() && tries_ <= kMostTries;
      if (EndIfNotConnected()) return false;
    }
    return Answers("CONNECT") || EndWithout(text_id::kUnknownResponse);
  }

  // Deliberately the last read comes too late, whatever it brings.
  bool WaitForResponse() {
    for (int reads = 0; port_.response().empty();) {
      port_.Wait(kPauseBeforeRead);
      if (!port_.ReadLogged()) return false;
      if (++reads == kMostReadsForConnection) {
        port_.log().Line(text_id::kNoAnswer);
        return false;
      }
    }
    return true;
  }

  // Whether it was busy.
  bool WaitIfBusy() {
    if (!Answers("BUSY")) return false;
    port_.log().Line(text_id::kBusy);
    port_.Wait(kPauseWhenBusy);
    ++tries_;
    return true;
  }

  // Whether the modem told of a failure, with which the call has ended.
  bool EndIfNotConnected() {
    const auto* const failure = std::ranges::find_if(
        kDialFailures, [this](const DialFailure& row) { return Answers(row.words); });
    if (failure == kDialFailures.end()) return false;
    EndWithout(failure->text_id);
    return true;
  }

  bool SendFrame() {
    if (!Send(frame_)) return false;
    for (int reads = 0; port_.response().empty() && reads < kMostReadsForResult; ++reads) {
      if (!port_.ReadLogged()) return false;
    }
    return true;
  }

  bool EvaluateResult() {
    if (Answers(kRefused)) {
      port_.log().Line(text_id::kTransmissionFailed);
      const std::size_t code = port_.response().find(kRefused) + kRefused.size();
      port_.log().Made([&] {
        return FormatText(LoadText(text_id::kUcpError),
                          {UcpErrorText(port_.response().substr(code))});
      });
      HangUp();
      return false;
    }
    if (!Answers(kAccepted)) return EndWithout(text_id::kUnknownResponse);
    port_.log().Line(text_id::kTransmissionSucceeded);
    HangUp();
    return true;
  }

  // Tells why the call ends without a page, and ends it. Always false.
  bool EndWithout(unsigned text_id) {
    port_.log().Line(text_id);
    HangUp();
    return false;
  }

  // Deliberately without a read of the modem's answer.
  void HangUp() {
    port_.WriteLogged("+++");
    port_.Wait(ModemPort::kEscapeGuardTime);
    port_.WriteLogged("ATH0\r");
    RestoreTimeouts();
  }

  static constexpr std::string_view kRefused = "/N/";
  static constexpr std::string_view kAccepted = "/A/";

  ModemPort& port_;
  const PagerCall& call_;
  UcpTransactionCounter& counter_;
  SerialTimeouts saved_timeouts_;
  std::string frame_;
  int tries_ = 0;
};

}  // namespace

bool SendByUcp(ModemPort& port, const PagerCall& call, UcpTransactionCounter& counter) {
  return UcpSession(port, call, counter).Run();
}

}  // namespace brantel
