#include "host/machine/relay_greeting_win32.h"

#include <array>

#include "smtp_mail/network/mail_socket_win32.h"
#include "system/sockets_library_win32.h"

namespace brantel::host {
namespace {

constexpr std::uint16_t kMailPort = 25;
constexpr std::uint32_t kPatience = 10'000;
constexpr std::size_t kLongestGreeting = 512;

// Sockets for the time of one conversation.
class StartedSockets {
 public:
  StartedSockets() : has_started_(win_sock.Start()) {}
  StartedSockets(const StartedSockets&) = delete;
  StartedSockets& operator=(const StartedSockets&) = delete;
  ~StartedSockets() {
    if (has_started_) win_sock.Stop();
  }

 private:
  bool has_started_;
};

std::string FirstLine(MailSocket& relay) {
  std::string line;
  while (line.find('\n') == std::string::npos && line.size() < kLongestGreeting) {
    const auto readiness = relay.WaitForData(kPatience);
    if (!readiness || *readiness != Readiness::kReady) return line;
    std::array<char, kLongestGreeting> bytes{};
    const auto size = relay.Receive(bytes);
    if (!size || *size == 0) return line;
    line.append(bytes.data(), *size);
  }
  return line.substr(0, line.find('\n'));
}

}  // namespace

std::string ReadRelayGreeting(const std::string& address) {
  const StartedSockets sockets;
  SystemMailNetwork network;
  const auto relay_address = network.ParseAddress(address);
  if (!relay_address) return "";
  const auto relay = network.CreateSocket();
  return relay && relay->Connect(*relay_address, kMailPort) ? FirstLine(*relay) : "";
}

}  // namespace brantel::host
