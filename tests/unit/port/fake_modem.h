#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "port/serial_device.h"

namespace brantel {

// A machine with a modem on each of its ports, which lets one caller at a time open a port.
class FakeModem final : public SerialPorts {
 public:
  // What goes wrong with a read or write.
  struct Fault {
    std::optional<Failure> failure;
    std::string answer;  // to a read
  };

  // What the modem answers to a read, by what was written last.
  std::function<std::string(const std::string&)> answer_to = [](const std::string&) {
    return std::string("\r\nOK\r\n");
  };
  // Asked at each read and write, with its index among these.
  std::function<std::optional<Fault>(std::size_t)> fault_at = [](std::size_t) {
    return std::nullopt;
  };

  std::size_t transfers = 0;  // reads and writes so far
  std::vector<std::string> written;
  std::vector<std::uint32_t> rates;
  std::vector<std::uint32_t> open_ports;

  Outcome<std::unique_ptr<SerialDevice>> Open(std::uint32_t port_number) override {
    constexpr Failure kAccessDenied{5};
    if (std::ranges::find(open_ports, port_number) != open_ports.end()) return kAccessDenied;
    open_ports.push_back(port_number);
    return std::make_unique<Device>(*this, port_number);
  }

 private:
  class Device final : public SerialDevice {
   public:
    Device(FakeModem& modem, std::uint32_t port_number)
        : modem_(modem), port_number_(port_number) {}
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    ~Device() override { std::erase(modem_.open_ports, port_number_); }

    Outcome<> GetControl() override { return kDone; }
    Outcome<> SetControl(std::uint32_t bits_per_second, const Framing&) override {
      modem_.rates.push_back(bits_per_second);
      return kDone;
    }
    Outcome<SerialTimeouts> GetTimeouts() override { return SerialTimeouts{}; }
    Outcome<> SetTimeouts(const SerialTimeouts&) override { return kDone; }

    Outcome<> Write(std::string_view bytes) override {
      const auto fault = modem_.fault_at(modem_.transfers++);
      if (fault && fault->failure) return *fault->failure;
      modem_.written.emplace_back(bytes);
      return kDone;
    }

    Outcome<std::size_t> Read(std::span<char> buffer) override {
      const auto fault = modem_.fault_at(modem_.transfers++);
      if (fault && fault->failure) return *fault->failure;
      const std::string last = modem_.written.empty() ? "" : modem_.written.back();
      const std::string answer = fault ? fault->answer : modem_.answer_to(last);
      const std::size_t count = std::min(answer.size(), buffer.size());
      std::copy_n(answer.begin(), count, buffer.begin());
      return count;
    }

    void Flush() override {}

   private:
    FakeModem& modem_;
    std::uint32_t port_number_;
  };
};

}  // namespace brantel
