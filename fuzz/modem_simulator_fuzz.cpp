// The modem simulator and all whom it can call, with arbitrary bytes from the caller at arbitrary
// times: whatever happened before, a modem that works obeys the next command when the port has been
// closed and opened again.
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "sim/hayes_modem.h"
#include "sim/timeline.h"
#include "sim/transcript.h"

namespace brantel::sim {
namespace {

class Caller {
 public:
  explicit Caller(HayesModem::Options options)
      : modem_(
            timeline_, transcript_, options, [this](std::string_view bytes) { received_ += bytes; },
            [this] { is_unplugged_ = true; }) {}

  void Send(std::string_view bytes) { modem_.Receive(bytes); }

  // Until something happens, if anything is planned.
  void LetTimePass() {
    if (const auto next = timeline_.NextTime()) timeline_.AdvanceTo(*next);
  }

  void ClosePort() {
    modem_.LoseDtr();
    for (int i = 0; i < 10; ++i)
      LetTimePass();
    received_.clear();
  }

  [[nodiscard]] const std::string& received() const { return received_; }
  [[nodiscard]] bool is_unplugged() const { return is_unplugged_; }

 private:
  Timeline timeline_;
  std::ostream nowhere_{nullptr};
  Transcript transcript_{nowhere_, timeline_};
  std::string received_;
  bool is_unplugged_ = false;
  HayesModem modem_;
};

}  // namespace
}  // namespace brantel::sim

// A byte for how the modem behaves, and what the caller sends: before each piece its length, and
// 0xFF where time passes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const std::uint8_t habits = input.Byte();
  const auto answering = static_cast<sim::Answering>(habits % 5);
  sim::Caller caller({.answering = answering, .echo_is_stuck = habits >= 0x80});
  while (!input.AtEnd() && !caller.is_unplugged()) {
    if (input.NextIs(0xFF)) {
      caller.LetTimePass();
    } else {
      caller.Send(input.Take(input.Byte()));
    }
  }
  caller.ClosePort();
  if (caller.is_unplugged() || answering != sim::Answering::kNormal) return 0;
  caller.Send("ATZ\r");
  Require(caller.received().ends_with("\r\nOK\r\n"));
  return 0;
}
