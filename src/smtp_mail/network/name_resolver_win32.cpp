#include "smtp_mail/network/name_resolver_win32.h"

#include <winsock2.h>
#include <windows.h>

#include <cstring>

namespace brantel {
namespace {

std::optional<Ipv4Address> FirstAddressOf(const char* name) {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): WinSock keeps an answer for each thread
  const hostent* const host = gethostbyname(name);
  if (host == nullptr || host->h_addrtype != AF_INET || host->h_addr_list[0] == nullptr) {
    return std::nullopt;
  }
  Ipv4Address address;
  std::memcpy(&address.network_order, host->h_addr_list[0], sizeof address.network_order);
  return address;
}

}  // namespace

std::optional<Ipv4Address> SystemNameResolver::Resolve(const std::string& name) {
  if (!sockets_.Start()) return std::nullopt;
  const auto address = FirstAddressOf(name.c_str());
  sockets_.Stop();
  return address;
}

}  // namespace brantel
