#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <thread>

namespace brantel {

// By the process, so that benchmarks that run at the same time keep clear of each other.
inline const auto kSinkPort = static_cast<std::uint16_t>(20000 + getpid() % 10000);

// Where the benchmarks' sink listens.
inline sockaddr_in SinkAddress() {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(kSinkPort);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

inline int ConnectToSink() {
  const sockaddr_in address = SinkAddress();
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): how sockets take addresses
  if (connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
    return socket;
  }
  close(socket);
  return -1;
}

// Postfix's smtp-sink, running as long as the object lives.
class SmtpSink {
 public:
  SmtpSink() : process_(fork()) {
    if (process_ == 0) {
      const std::string port = "127.0.0.1:" + std::to_string(kSinkPort);
      execl("/usr/sbin/smtp-sink", "smtp-sink", port.c_str(), "100", nullptr);
      _exit(1);
    }
    int socket = -1;
    for (int attempt = 0; socket < 0 && attempt < 500; ++attempt) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      socket = ConnectToSink();
    }
    if (socket < 0) std::abort();
    close(socket);
  }
  SmtpSink(const SmtpSink&) = delete;
  SmtpSink& operator=(const SmtpSink&) = delete;
  ~SmtpSink() {
    kill(process_, SIGTERM);
    waitpid(process_, nullptr, 0);
  }

 private:
  pid_t process_;
};

}  // namespace brantel
