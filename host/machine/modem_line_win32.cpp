#include "host/machine/modem_line_win32.h"

#include <windows.h>

#include <array>
#include <cstddef>
#include <memory>
#include <utility>

#include "port/serial_device_win32.h"

namespace brantel::host {
namespace {

constexpr Framing k8N1 = {8, Parity::kNone, std::nullopt};
constexpr Framing k7E1 = {7, Parity::kEven, true};

// A read ends when nothing has come for a moment.
constexpr SerialTimeouts kTimeouts = {
    .read_interval = 200, .read_total_constant = 2000, .write_total_constant = 2000};

constexpr std::size_t kLongestAnswer = 100;

// A modem takes "+++" for its escape with that much silence around it (ITU-T V.250 leaves the
// length to the maker; a second is what they have in common).
constexpr DWORD kEscapeGuardMilliseconds = 1100;

constexpr DWORD kPollMilliseconds = 100;
constexpr int kPolls = 50;

// Null when the port cannot be opened and set up.
std::unique_ptr<SerialDevice> OpenModem(const LineSetup& setup) {
  auto port = system_serial_ports.Open(setup.port);
  if (!port) return nullptr;
  SerialDevice& device = **port;
  const bool is_set_up = device.GetControl() &&
                         device.SetControl(setup.bits_per_second, setup.is_8n1 ? k8N1 : k7E1) &&
                         device.SetTimeouts(kTimeouts);
  return is_set_up ? std::move(*port) : nullptr;
}

std::string Answer(SerialDevice& device) {
  std::array<char, kLongestAnswer> answer{};
  const auto size = device.Read(answer);
  return size ? std::string(answer.data(), *size) : "";
}

void HangUp(SerialDevice& device) {
  Sleep(kEscapeGuardMilliseconds);
  if (!device.Write("+++")) return;
  device.Flush();
  Sleep(kEscapeGuardMilliseconds);
  if (!device.Write("ATH0\r")) return;
  device.Flush();
  Answer(device);
}

}  // namespace

std::optional<std::string> AskModem(const LineSetup& setup) {
  const auto device = OpenModem(setup);
  if (!device) return std::nullopt;
  if (!device->Write("AT\r")) return "";
  device->Flush();
  return Answer(*device);
}

bool HangUpModem(const LineSetup& setup) {
  for (int poll = 0; poll < kPolls; ++poll) {
    if (const auto device = OpenModem(setup)) {
      HangUp(*device);
      return true;
    }
    Sleep(kPollMilliseconds);
  }
  return false;
}

}  // namespace brantel::host
