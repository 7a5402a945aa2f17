// Scripts of the telephone exchange: whatever a script says, it is understood or refused with the
// line that is wrong, and what was understood keeps to what an exchange can do.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "sim/exchange_script.h"

namespace brantel::sim {
namespace {

constexpr Time kLongestDelay(1'000'000'000);

void CheckScript(const ExchangeScript& script) {
  Require(std::ranges::all_of(script.events, [](const ExchangeEvent& event) {
    return event.delay >= Time(0) && event.delay <= kLongestDelay && !event.description.empty();
  }));
  Require(std::ranges::none_of(
      script.failures, [](const ExchangeFailure& failure) { return failure.function.empty(); }));
}

}  // namespace
}  // namespace brantel::sim

// The script.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string script(data, data + size);
  try {
    sim::CheckScript(sim::ParseExchangeScript(script));
  } catch (const std::runtime_error& error) {
    Require(std::string_view(error.what()).starts_with("line "));
  }
  return 0;
}
