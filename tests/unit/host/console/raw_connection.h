#pragma once

#ifdef _WIN32
#include <winsock2.h>
#else
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace brantel::host {

// A client's connection to a server on this computer, byte by byte.
class RawConnection {
 public:
  explicit RawConnection(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
      throw std::runtime_error("no connection");
  }
  RawConnection(RawConnection&& other) noexcept : socket_(std::exchange(other.socket_, kNone)) {}
  RawConnection& operator=(RawConnection&&) = delete;
  ~RawConnection() {
    if (socket_ == kNone) return;
#ifdef _WIN32
    ::closesocket(socket_);
#else
    ::close(socket_);
#endif
  }

  // False when the other side does not take it any more.
  bool Send(std::string_view bytes) {
#ifdef _WIN32
    constexpr int kFlags = 0;
#else
    constexpr int kFlags = MSG_NOSIGNAL;
#endif
    while (!bytes.empty()) {
      const auto sent = ::send(socket_, bytes.data(), static_cast<Size>(bytes.size()), kFlags);
      if (sent <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
  }

  std::string ReadToEnd() {
    return ReadUntil("");
  }

  // What comes up to these bytes, or to the end.
  std::string ReadUntil(std::string_view end) {
    std::string read;
    std::array<char, 4096> buffer{};
    while (end.empty() || read.find(end) == std::string::npos) {
      const auto count = ::recv(socket_, buffer.data(), static_cast<Size>(buffer.size()), 0);
      if (count <= 0) break;
      read.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return read;
  }

 private:
#ifdef _WIN32
  using Socket = SOCKET;
  using Size = int;
  static constexpr Socket kNone = INVALID_SOCKET;
#else
  using Socket = int;
  using Size = std::size_t;
  static constexpr Socket kNone = -1;
#endif
  Socket socket_;
};

}  // namespace brantel::host
