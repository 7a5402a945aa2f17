#include "sim/telephone_exchange.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace brantel::sim {
namespace {

constexpr TelephoneExchange::Code kBadDeviceId = 0x80000002;
constexpr TelephoneExchange::Code kIncompatibleVersion = 0x8000000C;
constexpr TelephoneExchange::Code kInvalidApplicationHandle = 0x80000014;
constexpr TelephoneExchange::Code kInvalidCallHandle = 0x80000018;
constexpr TelephoneExchange::Code kInvalidDeviceClass = 0x80000023;
constexpr TelephoneExchange::Code kInvalidLineHandle = 0x8000002B;
constexpr TelephoneExchange::Code kInvalidMediaMode = 0x8000002F;

constexpr std::uint32_t kMonitorDigitsMessage = 9;
constexpr std::uint32_t kReplyMessage = 12;
constexpr std::uint32_t kDtmf = 2;
constexpr std::uint32_t kSelectCall = 4;

std::string Hexadecimal(std::uint32_t number) {
  std::ostringstream text;
  text << "0x" << std::hex << std::uppercase << number;
  return text.str();
}

}  // namespace

TelephoneExchange::TelephoneExchange(ExchangeScript script, Timeline& plan, Transcript& transcript,
                                     Tell tell)
    : script_(std::move(script)), plan_(plan), transcript_(transcript), tell_(std::move(tell)) {}

TelephoneExchange::Code TelephoneExchange::Fail(std::string_view function) {
  const auto failure = std::ranges::find(script_.failures, function, &ExchangeFailure::function);
  if (failure == script_.failures.end()) return 0;
  unsigned& failed = failed_[std::string(function)];
  if (failure->times != 0 && failed == failure->times) return 0;
  ++failed;
  transcript_.Note("line", std::string(function) + " fails with " + Hexadecimal(failure->error));
  return failure->error;
}

TelephoneExchange::Code TelephoneExchange::Initialize(std::uint32_t& line_count) {
  Note("lineInitialize");
  const Code error = Fail("lineInitialize");
  if (error == 0) line_count = static_cast<std::uint32_t>(script_.lines.size());
  return error;
}

TelephoneExchange::Code TelephoneExchange::Negotiate(std::uint32_t device, std::uint32_t lowest,
                                                     std::uint32_t highest,
                                                     std::uint32_t& version) {
  Note("lineNegotiateAPIVersion " + std::to_string(device) + " " + Hexadecimal(lowest) + " to " +
       Hexadecimal(highest));
  if (device >= script_.lines.size()) return kBadDeviceId;
  const ExchangeLine& line = script_.lines[device];
  if (line.negotiation_error != 0) return line.negotiation_error;
  if (line.version < lowest || line.version > highest) return kIncompatibleVersion;
  version = line.version;
  return 0;
}

TelephoneExchange::Code TelephoneExchange::ReadCapabilities(std::uint32_t device,
                                                            const ExchangeLine*& line) {
  Note("lineGetDevCaps " + std::to_string(device));
  if (device >= script_.lines.size()) return kBadDeviceId;
  line = &script_.lines[device];
  return line->capabilities_error;
}

TelephoneExchange::Code TelephoneExchange::Open(std::uint32_t device, std::uint32_t media_modes,
                                                std::uint32_t privileges) {
  Note("lineOpen " + std::to_string(device) + " media modes " + Hexadecimal(media_modes) +
       " privileges " + Hexadecimal(privileges));
  if (const Code error = Fail("lineOpen")) return error;
  if (device >= std::max<std::size_t>(script_.lines.size(), 1)) return kBadDeviceId;
  if (!script_.lines.empty() && (script_.lines[device].media_modes & media_modes) != media_modes) {
    return kInvalidMediaMode;
  }
  is_open_ = true;
  return 0;
}

TelephoneExchange::Code TelephoneExchange::MakeCall(std::uint32_t line, std::string_view number,
                                                    std::uint32_t& call, Time lateness) {
  Note("lineMakeCall " + std::string(number));
  if (!is_open_ || line != kLine) return kInvalidLineHandle;
  const Code error = Fail("lineMakeCall");
  if (error == 0) {
    const std::uint32_t request = ++last_request_;
    Plan(lateness, [this, request, &call] {
      call = kCall;
      has_call_ = true;
      tell_({.kind = kReplyMessage, .first = request});
    });
  }
  // Also behind a call that failed: that is what a script may want to end the wait for it.
  for (const ExchangeEvent& event : script_.events) {
    Plan(lateness + event.delay, [this, &event] { Happen(event); });
  }
  return error == 0 ? last_request_ : error;
}

void TelephoneExchange::Plan(Time delay, std::function<void()> action) {
  planned_.push_back(plan_.After(delay, std::move(action)));
}

void TelephoneExchange::Happen(const ExchangeEvent& event) {
  if (event.key != '\0') {
    PressKey(event.key);
    return;
  }
  transcript_.Note("line", event.description);
  tell_(event.message);
}

void TelephoneExchange::PressKey(char key) {
  const bool heard = has_call_ && listens_for_keys_;
  transcript_.Note("called", std::string("presses ") + key + (heard ? "" : ", which nobody hears"));
  if (heard) {
    tell_(
        {.kind = kMonitorDigitsMessage, .first = static_cast<unsigned char>(key), .second = kDtmf});
  }
}

TelephoneExchange::Code TelephoneExchange::GetWaveDevice(std::uint32_t line, std::uint32_t call,
                                                         std::uint32_t select,
                                                         std::string_view device_class) {
  Note("lineGetID select " + std::to_string(select) + " " + std::string(device_class));
  if (const Code error = Fail("lineGetID")) return error;
  if (!is_open_ || line != kLine) return kInvalidLineHandle;
  if (select == kSelectCall && (!has_call_ || call != kCall)) return kInvalidCallHandle;
  return device_class == "wave/out" ? 0 : kInvalidDeviceClass;
}

TelephoneExchange::Code TelephoneExchange::MonitorDigits(std::uint32_t call, std::uint32_t modes) {
  Note("lineMonitorDigits " + std::to_string(modes));
  if (const Code error = Fail("lineMonitorDigits")) return error;
  if (!has_call_ || call != kCall) return kInvalidCallHandle;
  listens_for_keys_ = modes == kDtmf;
  return 0;
}

TelephoneExchange::Code TelephoneExchange::Close(std::uint32_t line) {
  Note("lineClose");
  if (const Code error = Fail("lineClose")) return error;
  if (!is_open_ || line != kLine) return kInvalidLineHandle;
  if (has_call_) transcript_.Note("line", "the call ends");
  is_open_ = has_call_ = listens_for_keys_ = false;
  ForgetPlans();
  return 0;
}

void TelephoneExchange::ForgetPlans() {
  for (const Timeline::Ticket& ticket : planned_)
    plan_.Cancel(ticket);
  planned_.clear();
}

TelephoneExchange::Code TelephoneExchange::Shutdown(std::uint32_t application) {
  Note("lineShutdown");
  if (const Code error = Fail("lineShutdown")) return error;
  return application == kApplication ? 0 : kInvalidApplicationHandle;
}

}  // namespace brantel::sim
