#pragma once

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

#include "port/serial_device.h"
#include "sim/hayes_modem.h"
#include "sim/timeline.h"
#include "sim/transcript.h"
#include "system/clock.h"

namespace brantel {

// A serial port with the simulated modem on it, whose time passes as reads and waits let it.
class SimulatedLine final : public SerialPorts, public Clock {
 public:
  explicit SimulatedLine(sim::HayesModem::Options options);

  // For a port whose modem has been unplugged, as the system has it.
  static constexpr std::uint32_t kNoSuchFile = 2;
  static constexpr std::uint32_t kOutOfOrder = 31;

  Outcome<std::unique_ptr<SerialDevice>> Open(std::uint32_t port_number) override;
  void Wait(std::uint32_t milliseconds) override;

  [[nodiscard]] sim::Time now() const { return timeline_.now(); }

 private:
  class Device;

  sim::Timeline timeline_;
  std::ostringstream notes_;
  sim::Transcript transcript_{notes_, timeline_};
  std::string received_;
  bool is_plugged_ = true;
  sim::HayesModem modem_;
};

}  // namespace brantel
