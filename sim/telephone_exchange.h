#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string_view>

#include "sim/exchange_script.h"
#include "sim/timeline.h"
#include "sim/transcript.h"

namespace brantel::sim {

// A telephone exchange behind the functions of the Windows Telephony API: what they answer, and
// what they tell in the course of a call. One application and one call at a time. Answers are 0 or
// errors of that API.
class TelephoneExchange {
 public:
  using Code = std::uint32_t;
  using Tell = std::function<void(const ExchangeMessage&)>;

  static constexpr std::uint32_t kApplication = 0x1001;
  static constexpr std::uint32_t kLine = 0x2001;
  static constexpr std::uint32_t kCall = 0x3001;

  // `plan` is where the events of a call are planned. It and the transcript must outlive the
  // object.
  TelephoneExchange(ExchangeScript script, Timeline& plan, Transcript& transcript, Tell tell);
  TelephoneExchange(const TelephoneExchange&) = delete;
  TelephoneExchange& operator=(const TelephoneExchange&) = delete;
  ~TelephoneExchange() { ForgetPlans(); }

  [[nodiscard]] const ExchangeScript& script() const { return script_; }

  Code Initialize(std::uint32_t& line_count);
  Code Negotiate(std::uint32_t device, std::uint32_t lowest, std::uint32_t highest,
                 std::uint32_t& version);

  // The line's abilities, when that succeeds.
  Code ReadCapabilities(std::uint32_t device, const ExchangeLine*& line);

  Code Open(std::uint32_t device, std::uint32_t media_modes, std::uint32_t privileges);

  // The number of the request, or an error. `call` is written when the request is replied to. The
  // events come so much later than the plan has it as that is behind the time of day.
  Code MakeCall(std::uint32_t line, std::string_view number, std::uint32_t& call, Time lateness);

  Code GetWaveDevice(std::uint32_t line, std::uint32_t call, std::uint32_t select,
                     std::string_view device_class);
  Code MonitorDigits(std::uint32_t call, std::uint32_t modes);
  Code Close(std::uint32_t line);
  Code Shutdown(std::uint32_t application);

  // The called person presses a key, which is told of where keys are listened for.
  void PressKey(char key);

 private:
  // The error with which the script lets a function fail this time; 0 when it does not.
  Code Fail(std::string_view function);
  void Note(const std::string& what) { transcript_.Note("module", what); }
  void Plan(Time delay, std::function<void()> action);
  void Happen(const ExchangeEvent& event);
  void ForgetPlans();

  const ExchangeScript script_;
  Timeline& plan_;
  Transcript& transcript_;
  const Tell tell_;
  std::map<std::string, unsigned, std::less<>> failed_;
  std::vector<Timeline::Ticket> planned_;
  bool is_open_ = false;
  bool has_call_ = false;
  bool listens_for_keys_ = false;
  std::uint32_t last_request_ = 0;
};

}  // namespace brantel::sim
