#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "notifier/alert_log.h"
#include "notifier/notifier_host.h"
#include "port/modem_policy.h"
#include "port/modem_response.h"
#include "port/serial_device.h"
#include "system/clock.h"

namespace brantel {

// Not 0 while a notifier object has a port. Alerts of one object wait for each other by it; those
// of two objects do not, and the second finds that the port cannot be opened.
using PortBusyFlag = std::atomic<std::uint32_t>;

// A serial port with a modem on it, for the time of one alert. Every step is told to the host's
// log. The operations answer whether they succeeded.
class ModemPort {
 public:
  // All must outlive the object.
  ModemPort(const ModemPolicy& policy, PortBusyFlag& busy, SerialPorts& ports, Clock& clock,
            NotifierHost& host)
      : policy_(policy), busy_(busy), ports_(ports), clock_(clock), log_(&host) {}
  ModemPort(const ModemPort&) = delete;
  ModemPort& operator=(const ModemPort&) = delete;
  ~ModemPort() { ClosePort(); }

  // Waits up to 20 seconds for the port-busy flag, claims it, opens the port and sets it up. After
  // a failure the port is closed and the flag free again. No port number, from a setting without
  // one, counts as a port that does not exist. The baud selector is an index (0 to 9) into the
  // usual rates or itself a rate.
  bool OpenPort(std::optional<std::uint32_t> port_number, std::int32_t baud_selector,
                const Framing& framing);

  // Closes the port, if it is open, and frees the flag, if this object has claimed it.
  void ClosePort();

  // Logs and sends the text, and waits until it has gone out.
  bool WriteLogged(std::string_view text);

  // Reads up to 100 bytes and logs them. They are the response then, as far as their first NUL; it
  // is empty when nothing came in time (which is a success) or the read failed.
  bool ReadLogged();

  // Sends the text and reads the response to it, which stays as it was when the text could not be
  // sent.
  bool SendCommand(std::string_view text);

  // What was read last; empty before the first read.
  [[nodiscard]] const std::string& response() const { return response_; }
  // Whether a word stands anywhere in it.
  [[nodiscard]] bool Answers(std::string_view word) const { return Contains(response_, word); }

  // How long a modem needs silence around the "+++" that makes it listen again, in milliseconds.
  static constexpr std::uint32_t kEscapeGuardTime = 1000;

  // Makes the modem listen again and end the call. How it answers does not matter.
  void HangUp();

  // The steps that the logged ones are made of, for a notifier that logs in its own way. Write logs
  // a failure and nothing else; Read logs nothing.
  bool Write(std::string_view text);
  void Flush() { device_->Flush(); }
  Outcome<> Read(std::size_t limit, std::string& text);

  // The time-outs that are in force, and those of the reads and writes that follow. Both log a
  // failure.
  std::optional<SerialTimeouts> GetTimeouts();
  bool SetTimeouts(const SerialTimeouts& timeouts);

  void Wait(std::uint32_t milliseconds) { clock_.Wait(milliseconds); }

  [[nodiscard]] const AlertLog& log() const { return log_; }
  [[nodiscard]] const ModemPolicy& policy() const { return policy_; }

 private:
  bool TryClaim();
  bool WaitForPort();
  bool OpenDevice(std::optional<std::uint32_t> port_number);
  bool Configure(std::int32_t baud_selector, const Framing& framing);
  [[nodiscard]] std::uint32_t BitsPerSecond(std::int32_t baud_selector) const;

  // Logs the text with the reason of a failure. Whether it is none.
  template <typename Value>
  bool Succeeded(const Outcome<Value>& outcome, unsigned text_id) {
    if (!outcome) log_.Format(text_id, {outcome.reason()});
    return static_cast<bool>(outcome);
  }

  const ModemPolicy& policy_;
  PortBusyFlag& busy_;
  SerialPorts& ports_;
  Clock& clock_;
  AlertLog log_;
  std::string response_;
  bool claimed_ = false;
  std::unique_ptr<SerialDevice> device_;
};

}  // namespace brantel
