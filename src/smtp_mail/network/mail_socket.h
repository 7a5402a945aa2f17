#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "system/outcome.h"

namespace brantel {

// Error numbers of the sockets library that the mail session knows by name.
namespace socket_error {
inline constexpr std::uint32_t kInterrupted = 10004;  // WSAEINTR
inline constexpr std::uint32_t kWouldBlock = 10035;   // WSAEWOULDBLOCK
}  // namespace socket_error

// An IPv4 address as the sockets library keeps it, in network byte order.
struct Ipv4Address {
  std::uint32_t network_order = 0;
};

enum class Readiness { kReady, kTimedOut };

// A TCP connection to a mail relay. The object's end closes it. What fails does so for a reason of
// the sockets library.
class MailSocket {
 public:
  virtual ~MailSocket() = default;

  virtual bool Connect(Ipv4Address address, std::uint16_t port) = 0;

  // Lets other threads run, then gives the bytes to the system: the number of those that it took,
  // at least 1.
  virtual Outcome<std::size_t> Send(std::string_view bytes) = 0;

  // Called while Send would block: lets the thread's windows receive what was sent to them, and
  // leaves what is queued.
  virtual void PumpMessages() = 0;

  // Waits for data or the end of the connection.
  virtual Outcome<Readiness> WaitForData(std::uint32_t milliseconds) = 0;

  // The number of bytes received, 0 at the end of the connection.
  virtual Outcome<std::size_t> Receive(std::span<char> buffer) = 0;
};

class MailNetwork {
 public:
  virtual ~MailNetwork() = default;

  // Nothing for a text that is no IPv4 address in dotted form. Names are never looked up.
  [[nodiscard]] virtual std::optional<Ipv4Address> ParseAddress(const std::string& text) const = 0;

  // Null when there is none to be had.
  virtual std::unique_ptr<MailSocket> CreateSocket() = 0;
};

}  // namespace brantel
