#pragma once

#include <algorithm>
#include <array>
#include <memory>
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

  SystemFailure Open(std::uint32_t port_number, std::unique_ptr<SerialDevice>& device) override {
    if (const SystemFailure failure = Fault()) return failure;
    constexpr std::uint32_t kAccessDenied = 5;
    if (open.contains(port_number)) return kAccessDenied;
    device = std::make_unique<Device>(*this, port_number);
    return std::nullopt;
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

    SystemFailure GetControl() override { return ports_.Fault(); }
    SystemFailure SetControl(std::uint32_t, const Framing&) override { return ports_.Fault(); }

    SystemFailure GetTimeouts(SerialTimeouts& timeouts) override {
      timeouts = timeouts_;
      return ports_.Fault();
    }

    SystemFailure SetTimeouts(const SerialTimeouts& timeouts) override {
      const SystemFailure failure = ports_.Fault();
      if (!failure) timeouts_ = timeouts;
      return failure;
    }

    SystemFailure Write(std::string_view bytes) override {
      if (const SystemFailure failure = ports_.Fault()) return failure;
      if (ports_.far_end_.Has(Ending::kBreaksDown)) return kNoDevice;
      ports_.far_end_.Hear(bytes);
      return std::nullopt;
    }

    // A read for which there are no time-outs would never end where nothing comes.
    SystemFailure Read(std::span<char> buffer, std::size_t& count) override {
      if (const SystemFailure failure = ports_.Fault()) return failure;
      std::string& unread = ports_.far_end_.unread;
      if (unread.empty() && ports_.far_end_.Has(Ending::kBreaksDown)) return kNoDevice;
      count = std::min(unread.size(), buffer.size());
      std::copy_n(unread.begin(), count, buffer.begin());
      unread.erase(0, count);
      if (count == buffer.size()) return std::nullopt;
      const std::uint64_t total =
          timeouts_.read_total_constant + timeouts_.read_total_multiplier * buffer.size();
      if (count == 0 && total == 0) ports_.clock_.WaitForEver();
      ports_.clock_.Pass(count == 0 ? total : timeouts_.read_interval);
      return std::nullopt;
    }

    void Flush() override {}

   private:
    static constexpr std::uint32_t kNoDevice = 1167;

    StrainedPorts& ports_;
    const std::uint32_t port_number_;
    SerialTimeouts timeouts_;
  };

  // Not there, in use, a device that has been unplugged, aborted, no memory for the driver.
  SystemFailure Fault() {
    static constexpr std::array<std::uint32_t, 5> kErrors = {2, 5, 1117, 995, 8};
    if (!faults_.Strike()) return std::nullopt;
    return faults_.Choose(kErrors);
  }

  Faults& faults_;
  FarEnd& far_end_;
  StrainedClock& clock_;
};

}  // namespace brantel
