#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "sim/timeline.h"

namespace brantel::sim {

// A line of the exchange, as a caller's machine meets it.
struct ExchangeLine {
  std::uint32_t negotiation_error = 0;  // 0: none
  std::uint32_t version = 0x00020000;
  std::uint32_t capabilities_error = 0;  // 0: none
  std::uint32_t capabilities_size = 0;   // as much room as they need
  std::uint32_t media_modes = 0x8;       // automated voice
};

struct ExchangeFailure {
  std::string function;
  std::uint32_t error = 0;
  unsigned times = 0;  // how often it fails; 0: always
};

// A message that the caller's machine is told.
struct ExchangeMessage {
  std::uint32_t kind = 0;
  std::uint32_t first = 0;
  std::uint32_t second = 0;
  std::uint32_t third = 0;
};

// What happens so long after a call was placed.
struct ExchangeEvent {
  Time delay{0};
  char key = '\0';  // the called person presses it; '\0': the message is told
  ExchangeMessage message{};
  std::string description{};
};

struct ExchangeScript {
  std::vector<ExchangeLine> lines = {{}};
  std::vector<ExchangeFailure> failures;
  std::vector<ExchangeEvent> events;
  // Functions that always need more room than they are given.
  std::set<std::string, std::less<>> never_enough;
  bool sends_messages = false;  // to the caller's thread, rather than to post them
  std::uint32_t wave_device = 0;
  std::string keys_file;  // its bytes are keys that the called person presses; empty: none
};

// Reads the script of an exchange, which docs/simulators.md describes. Throws std::runtime_error
// for one that cannot be understood.
ExchangeScript ParseExchangeScript(std::string_view text);

}  // namespace brantel::sim
