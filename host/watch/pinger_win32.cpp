#include "host/watch/pinger_win32.h"

// clang-format off
#include <winsock2.h>
#include <ws2tcpip.h>
#include <windows.h>
#include <iphlpapi.h>
#include <icmpapi.h>
// clang-format on

#include <array>
#include <exception>
#include <memory>
#include <optional>
#include <utility>

#include "host/outcome/system_error_text_win32.h"
#include "host/watch/worker_threads_win32.h"

namespace brantel::host {
namespace {

constexpr std::array<char, 32> kPayload{};

// The system wants room for the reply, the payload, and an error message with its own data.
constexpr std::size_t kReplyBytes = sizeof(ICMP_ECHO_REPLY) + kPayload.size() + 64;

struct IcmpCloser {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { IcmpCloseHandle(handle); }
};

std::optional<IPAddr> AddressOf(const std::string& host) {
  addrinfo hints{};
  hints.ai_family = AF_INET;
  addrinfo* found = nullptr;
  if (getaddrinfo(host.c_str(), nullptr, &hints, &found) != 0) return std::nullopt;
  const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(found, freeaddrinfo);
  return reinterpret_cast<const sockaddr_in*>(found->ai_addr)->sin_addr.s_addr;
}

std::string WordsOf(ULONG status) {
  switch (status) {
    case IP_REQ_TIMED_OUT:
      return "no answer to the echo request";
    case IP_DEST_NET_UNREACHABLE:
      return "no route to the network";
    case IP_DEST_HOST_UNREACHABLE:
      return "no route to the host";
    case IP_TTL_EXPIRED_TRANSIT:
      return "the echo request goes in a circle";
    default:
      return "the echo request failed with " + SystemErrorText(status);
  }
}

ProbeResult Ping(const ProbeRequest& request) {
  const auto address = AddressOf(request.host);
  if (!address) return {false, "the name is not known"};
  const HANDLE opened = IcmpCreateFile();
  if (opened == INVALID_HANDLE_VALUE)
    return {false, "no echo request can be sent: " + SystemErrorText(GetLastError())};
  const std::unique_ptr<HANDLE, IcmpCloser> icmp(opened);
  alignas(ICMP_ECHO_REPLY) std::array<char, kReplyBytes> reply{};
  auto payload = kPayload;
  const DWORD count =
      IcmpSendEcho(icmp.get(), *address, payload.data(), payload.size(), nullptr, reply.data(),
                   reply.size(), static_cast<DWORD>(request.timeout.count()));
  if (count == 0) return {false, WordsOf(GetLastError())};
  const ULONG status = reinterpret_cast<const ICMP_ECHO_REPLY*>(reply.data())->Status;
  return status == IP_SUCCESS ? ProbeResult{true, "it answers the echo request"}
                              : ProbeResult{false, WordsOf(status)};
}

// An item of which no result came would never be looked at again.
ProbeResult ResultOf(const ProbeRequest& request) {
  try {
    return Ping(request);
  } catch (const std::exception& error) {
    return {false, error.what()};
  }
}

}  // namespace

void PingInThread(const ProbeRequest& request, NetworkLoop::ResultTaker take_result) {
  CallInThread([request, take_result = std::move(take_result)] { take_result(ResultOf(request)); });
}

}  // namespace brantel::host
