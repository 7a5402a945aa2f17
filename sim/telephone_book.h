#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

#include "sim/far_end.h"

namespace brantel::sim {

// What becomes of a call.
enum class CallOutcome {
  kVoice,  // answered, but not by a modem
  kModem,  // answered by a modem
  kBusy,
  kNoCarrier,
  kNoDialtone,
  kNoAnswer,
  kSilence,    // the caller's modem never says anything about it
  kGarbage,    // it says something that nobody can read
  kUnplugged,  // the caller's modem is unplugged, and its port with it
};

// A telephone number and what happens to who dials it.
struct Subscriber {
  std::string_view number;  // "n" stands for any digit
  std::string_view description;
  CallOutcome outcome = CallOutcome::kNoCarrier;
  // From the last digit of the number.
  Time delay{0};
  // So many calls find the number busy before one comes through.
  unsigned busy_calls = 0;
  // Who answers; for kVoice and kModem.
  std::function<std::unique_ptr<FarEnd>(const Surroundings&)> make_far_end{};
};

std::span<const Subscriber> TelephoneBook();

// The subscriber with this number; one who is not in service when there is none.
const Subscriber& FindSubscriber(std::string_view number);

}  // namespace brantel::sim
