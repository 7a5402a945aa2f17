#include "smtp_mail/network/mail_socket_win32.h"

#include <winsock2.h>
#include <windows.h>

namespace brantel {
namespace {

Failure LastFailure() {
  return {static_cast<std::uint32_t>(WSAGetLastError())};
}

class SystemMailSocket final : public MailSocket {
 public:
  SystemMailSocket() : socket_(::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)) {}
  SystemMailSocket(const SystemMailSocket&) = delete;
  SystemMailSocket& operator=(const SystemMailSocket&) = delete;
  ~SystemMailSocket() override {
    if (IsOpen()) closesocket(socket_);
  }

  [[nodiscard]] bool IsOpen() const { return socket_ != INVALID_SOCKET; }

  bool Connect(Ipv4Address address, std::uint16_t port) override {
    // The sender goes out in three pieces. None of them may wait until the one before has been
    // acknowledged, which relays put off.
    const BOOL no_delay = TRUE;
    setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&no_delay),
               sizeof no_delay);
    sockaddr_in relay{};
    relay.sin_family = AF_INET;
    relay.sin_port = htons(port);
    relay.sin_addr.s_addr = address.network_order;
    return connect(socket_, reinterpret_cast<const sockaddr*>(&relay), sizeof relay) == 0;
  }

  Outcome<std::size_t> Send(std::string_view bytes) override {
    Sleep(0);
    const int count = send(socket_, bytes.data(), static_cast<int>(bytes.size()), 0);
    if (count < 1) return LastFailure();
    return static_cast<std::size_t>(count);
  }

  void PumpMessages() override {
    MSG message{};
    PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
  }

  Outcome<Readiness> WaitForData(std::uint32_t milliseconds) override {
    fd_set readable{};
    FD_SET(socket_, &readable);
    timeval timeout{static_cast<long>(milliseconds / 1000),
                    static_cast<long>(milliseconds % 1000 * 1000)};
    const int ready = select(0, &readable, nullptr, nullptr, &timeout);
    if (ready < 0) return LastFailure();
    return ready > 0 ? Readiness::kReady : Readiness::kTimedOut;
  }

  Outcome<std::size_t> Receive(std::span<char> buffer) override {
    const int count = recv(socket_, buffer.data(), static_cast<int>(buffer.size()), 0);
    if (count < 0) return LastFailure();
    return static_cast<std::size_t>(count);
  }

 private:
  SOCKET socket_;
};

}  // namespace

std::optional<Ipv4Address> SystemMailNetwork::ParseAddress(const std::string& text) const {
  const unsigned long address = inet_addr(text.c_str());
  if (address == INADDR_NONE) return std::nullopt;
  return Ipv4Address{address};
}

std::unique_ptr<MailSocket> SystemMailNetwork::CreateSocket() {
  auto socket = std::make_unique<SystemMailSocket>();
  if (!socket->IsOpen()) return nullptr;
  return socket;
}

}  // namespace brantel
