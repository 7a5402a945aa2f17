#include "host/machine/modem_answer_win32.h"

#include <array>

#include "port/serial_device_win32.h"

namespace brantel::host {
namespace {

constexpr Framing k8N1 = {8, Parity::kNone, std::nullopt};
constexpr Framing k7E1 = {7, Parity::kEven, true};

// A read ends when nothing has come for a moment.
constexpr SerialTimeouts kTimeouts = {
    .read_interval = 200, .read_total_constant = 2000, .write_total_constant = 2000};

constexpr std::size_t kLongestAnswer = 100;

}  // namespace

std::optional<std::string> AskModem(const LineSetup& setup) {
  const auto port = system_serial_ports.Open(setup.port);
  if (!port) return std::nullopt;
  SerialDevice& device = **port;
  if (!device.GetControl() ||
      !device.SetControl(setup.bits_per_second, setup.is_8n1 ? k8N1 : k7E1) ||
      !device.SetTimeouts(kTimeouts)) {
    return std::nullopt;
  }
  if (!device.Write("AT\r")) return "";
  device.Flush();
  std::array<char, kLongestAnswer> answer{};
  const auto size = device.Read(answer);
  return size ? std::string(answer.data(), *size) : "";
}

}  // namespace brantel::host
