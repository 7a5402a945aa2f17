#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "port/serial_device.h"
#include "tests/torture/far_end.h"
#include "tests/torture/faults.h"
#include "tests/torture/strained_clock.h"

namespace brantel {

// Serial ports, with a modem on each.
class StrainedPorts final : public SerialPorts {
 public:
  StrainedPorts(Faults& faults, FarEnd& far_end, StrainedClock& clock)
      : faults_(faults), far_end_(far_end), clock_(clock) {}

  std::set<std::uint32_t> open;

  Outcome<std::unique_ptr<SerialDevice>> Open(std::uint32_t port_number) override {
    if (const auto fault = Fault()) return *fault;
    constexpr Failure kAccessDenied{5};
    if (open.contains(port_number)) return kAccessDenied;
    return std::make_unique<Device>(*this, port_number);
  }

 private:
  class Device final : public SerialDevice {
   public:
    Device(StrainedPorts& ports, std::uint32_t port_number)
        : ports_(ports), port_number_(port_number) {
      const MemoryOfOthers others;
      ports_.open.insert(port_number);
      ports_.far_end_.Begin();
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    ~Device() override { ports_.open.erase(port_number_); }

    Outcome<> GetControl() override { return ports_.Step(); }
    Outcome<> SetControl(std::uint32_t, const Framing&) override { return ports_.Step(); }

    Outcome<SerialTimeouts> GetTimeouts() override {
      if (const auto fault = ports_.Fault()) return *fault;
      return timeouts_;
    }

    Outcome<> SetTimeouts(const SerialTimeouts& timeouts) override {
      if (const auto fault = ports_.Fault()) return *fault;
      timeouts_ = timeouts;
      return kDone;
    }

    Outcome<> Write(std::string_view bytes) override {
      if (const auto fault = ports_.Fault()) return *fault;
      if (ports_.far_end_.Has(Ending::kBreaksDown)) return kNoDevice;
      ports_.far_end_.Hear(bytes);
      return kDone;
    }

    // A read for which there are no time-outs would never end where nothing comes.
    Outcome<std::size_t> Read(std::span<char> buffer) override {
      if (const auto fault = ports_.Fault()) return *fault;
      std::string& unread = ports_.far_end_.unread;
      if (unread.empty() && ports_.far_end_.Has(Ending::kBreaksDown)) return kNoDevice;
      const std::size_t count = std::min(unread.size(), buffer.size());
      std::copy_n(unread.begin(), count, buffer.begin());
      unread.erase(0, count);
      if (count == buffer.size()) return count;
      const std::uint64_t total =
          timeouts_.read_total_constant + timeouts_.read_total_multiplier * buffer.size();
      if (count == 0 && total == 0) ports_.clock_.WaitForEver();
      ports_.clock_.Pass(count == 0 ? total : timeouts_.read_interval);
      return count;
    }

    void Flush() override {}

   private:
    static constexpr Failure kNoDevice{1167};

    StrainedPorts& ports_;
    const std::uint32_t port_number_;
    SerialTimeouts timeouts_;
  };

  // Not there, in use, a device that has been unplugged, aborted, no memory for the driver.
  std::optional<Failure> Fault() {
    static constexpr std::array<std::uint32_t, 5> kErrors = {2, 5, 1117, 995, 8};
    if (!faults_.Strike()) return std::nullopt;
    return Failure{faults_.Choose(kErrors)};
  }

  Outcome<> Step() {
    if (const auto fault = Fault()) return *fault;
    return kDone;
  }

  Faults& faults_;
  FarEnd& far_end_;
  StrainedClock& clock_;
};

}  // namespace brantel
