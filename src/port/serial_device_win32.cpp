#include "port/serial_device_win32.h"

#include <utility>

#include "system/windows/handle_win32.h"

namespace brantel {
namespace {

constexpr std::uint32_t kFirstPlainPort = 1;
constexpr std::uint32_t kLastPlainPort = 9;

Outcome<> OutcomeOf(BOOL succeeded) {
  if (succeeded == FALSE) return Failure{GetLastError()};
  return kDone;
}

class SystemSerialDevice final : public SerialDevice {
 public:
  explicit SystemSerialDevice(Handle port) : port_(std::move(port)) {
    control_block_.DCBlength = sizeof control_block_;
  }

  Outcome<> GetControl() override { return OutcomeOf(GetCommState(port_.get(), &control_block_)); }

  Outcome<> SetControl(std::uint32_t bits_per_second, const Framing& framing) override {
    SetControlBlock(control_block_, bits_per_second, framing);
    return OutcomeOf(SetCommState(port_.get(), &control_block_));
  }

  Outcome<SerialTimeouts> GetTimeouts() override {
    COMMTIMEOUTS timeouts{};
    if (GetCommTimeouts(port_.get(), &timeouts) == FALSE) return Failure{GetLastError()};
    return FromCommTimeouts(timeouts);
  }

  Outcome<> SetTimeouts(const SerialTimeouts& timeouts) override {
    COMMTIMEOUTS system_timeouts = ToCommTimeouts(timeouts);
    return OutcomeOf(SetCommTimeouts(port_.get(), &system_timeouts));
  }

  Outcome<> Write(std::string_view bytes) override {
    DWORD written = 0;
    const BOOL succeeded =
        WriteFile(port_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    // To the system a write that its time-out has cut short is a success.
    if (succeeded != FALSE && written < bytes.size()) return Failure{ERROR_TIMEOUT};
    return OutcomeOf(succeeded);
  }

  Outcome<std::size_t> Read(std::span<char> buffer) override {
    DWORD read = 0;
    const BOOL succeeded =
        ReadFile(port_.get(), buffer.data(), static_cast<DWORD>(buffer.size()), &read, nullptr);
    if (succeeded == FALSE) return Failure{GetLastError()};
    return read;
  }

  // Not PurgeComm, which would throw away commands that are still on their way to the modem and
  // answers that are already here.
  void Flush() override { FlushFileBuffers(port_.get()); }

 private:
  Handle port_;
  DCB control_block_{};
};

}  // namespace

Outcome<std::unique_ptr<SerialDevice>> SystemSerialPorts::Open(std::uint32_t port_number) {
  const std::string path = SerialPortPath(port_number);
  Handle port(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                          nullptr));
  if (!port) return Failure{GetLastError()};
  return std::make_unique<SystemSerialDevice>(std::move(port));
}

std::string SerialPortPath(std::uint32_t port_number) {
  const bool plain = port_number >= kFirstPlainPort && port_number <= kLastPlainPort;
  return (plain ? "COM" : R"(\\.\COM)") + std::to_string(port_number);
}

void SetControlBlock(DCB& control_block, std::uint32_t bits_per_second, const Framing& framing) {
  control_block.BaudRate = bits_per_second;
  control_block.ByteSize = framing.data_bits;
  control_block.Parity = framing.parity == Parity::kEven ? EVENPARITY : NOPARITY;
  control_block.StopBits = ONESTOPBIT;
  if (framing.parity_check) {
    control_block.fBinary = 1;
    control_block.fParity = *framing.parity_check ? 1 : 0;
  }
}

COMMTIMEOUTS ToCommTimeouts(const SerialTimeouts& timeouts) {
  return {
      .ReadIntervalTimeout = timeouts.read_interval,
      .ReadTotalTimeoutMultiplier = timeouts.read_total_multiplier,
      .ReadTotalTimeoutConstant = timeouts.read_total_constant,
      .WriteTotalTimeoutMultiplier = timeouts.write_total_multiplier,
      .WriteTotalTimeoutConstant = timeouts.write_total_constant,
  };
}

SerialTimeouts FromCommTimeouts(const COMMTIMEOUTS& timeouts) {
  return {
      .read_interval = timeouts.ReadIntervalTimeout,
      .read_total_multiplier = timeouts.ReadTotalTimeoutMultiplier,
      .read_total_constant = timeouts.ReadTotalTimeoutConstant,
      .write_total_multiplier = timeouts.WriteTotalTimeoutMultiplier,
      .write_total_constant = timeouts.WriteTotalTimeoutConstant,
  };
}

}  // namespace brantel
