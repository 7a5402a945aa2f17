#include "tests/unit/host/course/simulated_line.h"

#include <algorithm>

namespace brantel {

class SimulatedLine::Device final : public SerialDevice {
 public:
  explicit Device(SimulatedLine& line) : line_(line) {}
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;
  ~Device() override { line_.modem_.LoseDtr(); }

  Outcome<> GetControl() override { return kDone; }
  Outcome<> SetControl(std::uint32_t, const Framing&) override { return kDone; }
  Outcome<SerialTimeouts> GetTimeouts() override { return timeouts_; }
  Outcome<> SetTimeouts(const SerialTimeouts& timeouts) override {
    timeouts_ = timeouts;
    return kDone;
  }
  void Flush() override {}

  Outcome<> Write(std::string_view bytes) override {
    if (!line_.is_plugged_) return Failure{kOutOfOrder};
    line_.modem_.Receive(bytes);
    return kDone;
  }

  Outcome<std::size_t> Read(std::span<char> buffer) override {
    const sim::Time end = line_.now() + sim::Time(timeouts_.read_total_constant +
                                                  timeouts_.read_total_multiplier * buffer.size());
    sim::Time last_byte = line_.now();
    for (std::size_t count = line_.received_.size(); count < buffer.size();) {
      const bool waits_for_more = count > 0 && timeouts_.read_interval > 0;
      const sim::Time pause = last_byte + sim::Time(timeouts_.read_interval);
      const sim::Time limit = waits_for_more ? std::min(end, pause) : end;
      line_.timeline_.AdvanceTo(std::min(limit, line_.timeline_.NextTime().value_or(limit)));
      if (!line_.is_plugged_) return Failure{kOutOfOrder};
      const std::size_t count_before = std::exchange(count, line_.received_.size());
      if (count > count_before) {
        last_byte = line_.now();
      } else if (line_.now() >= limit) {
        break;
      }
    }
    const std::size_t taken = line_.received_.copy(buffer.data(), buffer.size());
    line_.received_.erase(0, taken);
    return taken;
  }

 private:
  SimulatedLine& line_;
  SerialTimeouts timeouts_;
};

SimulatedLine::SimulatedLine(sim::HayesModem::Options options)
    : modem_(
          timeline_, transcript_, options, [this](std::string_view bytes) { received_ += bytes; },
          [this] { is_plugged_ = false; }) {}

Outcome<std::unique_ptr<SerialDevice>> SimulatedLine::Open(std::uint32_t /*port_number*/) {
  if (!is_plugged_) return Failure{kNoSuchFile};
  return std::make_unique<Device>(*this);
}

void SimulatedLine::Wait(std::uint32_t milliseconds) {
  timeline_.AdvanceTo(timeline_.now() + sim::Time(milliseconds));
}

}  // namespace brantel
