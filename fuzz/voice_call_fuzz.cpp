// Telephone calls against what telephony, the line and a wave file may say: whatever that is, the
// call gives back all memory, closes every file and device that it has opened, and lets telephony
// go. None succeeds unless a key was pressed and all messages were played.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "telephone/line_constants.h"
#include "tests/unit/telephone/fake_voice_system.h"
#include "voice/voice_call.h"

namespace {

using brantel::FuzzInput;
using brantel::Require;

std::uint32_t Word(FuzzInput& input) {
  std::uint32_t word = 0;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    word |= std::uint32_t{input.Byte()} << shift;
  }
  return word;
}

// Success in most cases, so that calls get somewhere.
std::uint32_t Code(FuzzInput& input) {
  return input.NextIs(0xFF) ? Word(input) : 0;
}

void SetUpTelephony(FuzzInput& input, brantel::FakeTelephony& telephony) {
  telephony.devices.resize(input.Byte() % 4);
  for (auto& device : telephony.devices) {
    device.negotiation = Code(input);
    device.version = Word(input);
    device.capabilities = Code(input);
    device.needed_size = Word(input);
    device.media_modes = Word(input);
  }
  telephony.initialize = Code(input);
  telephony.open = Code(input);
  telephony.get_id = Code(input);
  telephony.id_needed_size = Word(input);
  telephony.id_offset = Word(input);
  telephony.monitor_digits = Code(input);
  telephony.failing_closes = input.Byte() % 7;
  telephony.failing_shutdowns = input.Byte() % 7;
}

constexpr bool IsKey(std::uint32_t sign) {
  return (sign >= '0' && sign <= '9') || sign == '*' || sign == '#';
}

// `is_key_pressed` is set once the called person has pressed one.
void QueueEvents(FuzzInput& input, brantel::FakeVoiceSystem& system, bool& is_key_pressed) {
  while (!input.AtEnd()) {
    if (input.NextIs('d')) {
      system.pump.events.emplace_back([&system] {
        if (system.wave_output.is_open()) system.wave_output.ReportDone();
      });
    } else {
      const std::uint32_t kind = input.Byte();
      const std::uint32_t first = input.NextIs('w') ? Word(input) : input.Byte();
      const std::uint32_t second = input.Byte();
      system.pump.events.emplace_back([&system, &is_key_pressed, kind, first, second] {
        if (kind == brantel::line_message::kMonitorDigits && IsKey(first & 0xFFU))
          is_key_pressed = true;
        system.telephony.Tell(kind, first, second);
      });
    }
  }
}

auto Count(const std::vector<std::string>& calls, std::string_view word) {
  return std::ranges::count_if(calls,
                               [word](const std::string& call) { return call.starts_with(word); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  brantel::FakeVoiceSystem system;
  brantel::VoiceState state;
  SetUpTelephony(input, system.telephony);
  system.wave_output.query = Code(input);
  system.wave_output.open = Code(input);
  system.wave_output.prepare = Code(input);
  system.wave_output.write = Code(input);
  const auto count = static_cast<std::int8_t>(input.Byte());
  const std::uint8_t button = input.Byte();
  const brantel::VoiceCall call = {
      .number = "5550100",
      .repeat_message = "wave",
      .first_message = "wave",
      .second_message = button < 0x80 ? "missing" : "wave",
      .count = count,
      .button = button % 0x80,
  };
  const std::size_t wave_size = Word(input) % 4096;
  system.riff_files.files["wave"] = std::string(input.Take(wave_size));
  bool is_key_pressed = false;
  QueueEvents(input, system, is_key_pressed);

  try {
    const bool succeeded = brantel::PlaceVoiceCall(system.system, state, call) == 0;
    if (succeeded) Require(is_key_pressed && Count(system.wave_output.calls, "write") >= 3);
  } catch (const brantel::EndlessWait&) {
    // The events were over before the call. Nothing else may come out of it.
  }

  Require(system.memory.in_use() == 0);
  Require(Count(system.riff_files.calls, "close") +
              Count(system.riff_files.calls, "open missing") ==
          Count(system.riff_files.calls, "open"));
  if (system.wave_output.open == 0) {
    Require(Count(system.wave_output.calls, "open") == Count(system.wave_output.calls, "close"));
  }
  if (system.telephony.initialize == 0) Require(Count(system.telephony.calls, "shutdown") > 0);
  return 0;
}
