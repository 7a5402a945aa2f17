#include "host/preview/delivery_time.h"

#include "host/preview/wave_length.h"

namespace brantel::host {
namespace {

constexpr std::string_view kUsualTimeOfPage = "20 to 40 s";
constexpr std::string_view kBelowASecond = "below 1 s";

}  // namespace

DeliveryTime TimeOfPage(std::uint64_t least, std::string_view most) {
  const bool has_end = most == kMostOfUcp;
  return {.least = least,
          .beside_least = "the time to connect",
          .usual = std::string(kUsualTimeOfPage),
          .most = std::string(most) + (has_end ? "" : "; without end while the number is BUSY")};
}

DeliveryTime TimeOfBeep(std::uint64_t least) {
  // For a port in use, an OK that comes late, and a modem that does not take the hang-up.
  constexpr std::uint64_t kPort = 20'000;
  constexpr std::uint64_t kLateOk = 4'000;
  constexpr std::uint64_t kWrites = 20'000;
  return {.least = least,
          .usual = "the same",
          .most = SecondsText(least + kPort + kLateOk + kWrites) +
                  ": 20 s more for the port, 4 s for a modem that says OK late, 10 s for each "
                  "write of the hang-up that the modem does not take"};
}

DeliveryTime TimeOfMail(std::uint64_t least, std::uint32_t replies, std::uint32_t timeout) {
  return {.least = least,
          .usual = std::string(kBelowASecond),
          .most = "the system's time to connect (some 20 s), and " + SecondsText(timeout) +
                  " for each of " + std::to_string(replies) +
                  " replies; without end while the relay goes on talking or stops reading"};
}

DeliveryTime TimeOfPopup(std::uint64_t least) {
  return {.least = least,
          .usual = std::string(kBelowASecond),
          .most = "what the messenger service takes to find the name, some seconds"};
}

DeliveryTime TimeOfSound(std::uint64_t least) {
  return {.least = least, .usual = "the same", .most = "the same"};
}

DeliveryTime TimeOfProgram(std::uint64_t least) {
  return {.least = least,
          .usual = std::string(kBelowASecond),
          .most = "what the system takes to find the program, on a network drive some seconds"};
}

DeliveryTime TimeOfCall(std::uint64_t least, std::int32_t repetitions) {
  return {.least = least,
          .beside_least = "the time to answer",
          .usual = "20 s to 2 min",
          .most = "the repeat message " + std::to_string(std::int64_t{repetitions} + 1) +
                  " times, both messages, and 4 s where the line does not close; without end "
                  "while nobody answers"};
}

}  // namespace brantel::host
